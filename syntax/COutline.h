// What a C text defines and what it leaves open, found without a compiler. Macros and included files are not looked
// into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

enum class OpenEndKind : std::uint8_t {
    Comment,     // does not end in the text
    Literal,     // a string or character that does not end on its line
    Conditional, // an "#if" without its "#endif"
    Brace,       // a "{" without its "}"
    StrayBrace,  // a "}" without its "{"
    Declaration  // the last one has no ";" and no body
};

struct OpenEnd {
    OpenEndKind kind = OpenEndKind::Comment;
    std::size_t line = 0; // where it begins; of a declaration, where its last code stands

    bool operator==(const OpenEnd&) const = default;
};

// A function with a body.
struct CDefinition {
    std::string name;
    std::size_t line = 0;       // of the name
    bool hasType = false;       // without one it may be the use of a macro
    bool isConditional = false; // stands between "#if" and "#endif"
};

// Lines are counted from 1; LF, CR LF and CR each end one. Positions are bytes of the text.
struct COutline {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    // In their order. What one mistake may have caused in the rest of the text is left out: behind an open comment or
    // literal no braces are given, and a declaration only where nothing else is open.
    std::vector<OpenEnd> openEnds;

    std::vector<CDefinition> definitions; // those of all branches of "#if", but for "#if 0"

    // The first "{" that is code, or None, and its line. `isBody` when a ")" or ";" or a word that belongs to neither a
    // type nor a value stands in front of it: a function's body and nothing else.
    std::size_t brace = None;
    std::size_t braceLine = 0;
    bool isBody = false;

    // Where the comment begins that stands between the last code and that brace, or None. Of several, the last.
    std::size_t lastComment = None;
    std::size_t lastCommentLine = 0;
    bool lastCommentIsLine = false;

    // A macro of the text has more braces of one kind than of the other, so braces cannot be counted where it is used.
    bool hasBraceMacro = false;

    // A macro, or a file that is no system header, may define what is not seen here.
    bool mayDefineMore = false;

    // The first "{" in a comment, or None.
    std::size_t commentBrace = None;
};

// Takes any bytes, in any encoding that has ASCII in its lower half.
COutline OutlineC(std::string_view text);

// The number of the line at `position`, from 1.
std::size_t CLineAt(std::string_view text, std::size_t position);

} // namespace tessaly
