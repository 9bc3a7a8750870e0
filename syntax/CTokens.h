// C as tokens, for whoever looks for names in it. Comments are gone; directives stand beside the tokens.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

struct CCodeToken {
    std::string_view text; // a word, one sign, or a literal
    std::size_t position = 0;
    bool hasBlankBefore = false;
};

struct CDirective {
    std::string text; // lines joined, without comments
    std::size_t position = 0;

    std::string_view Name() const; // "if"

    // What stands behind its name, without blanks around it; "" for one of another name.
    std::string_view RestBehind(std::string_view name) const;
};

struct CCode {
    std::vector<CCodeToken> tokens;
    std::vector<CDirective> directives;
};

// Takes any bytes. The tokens refer to `text`.
CCode TokenizeC(std::string_view text);

// Of the branches of an "#if" the first one that may be taken opens and closes blocks: from the others the braces are
// removed that have no partner in their branch.
CCode WithBracesOfOneBranch(CCode code);

// Letters, digits and "_", and whatever is not ASCII.
constexpr bool IsCWordByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

constexpr bool IsCBlankByte(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace tessaly
