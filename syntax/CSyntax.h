// What stands where in a line of C, for colouring it. An editor scans one line at a time. After a keystroke it goes on
// only while the state after a line differs from the one before the change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

enum class CTokenKind : std::uint8_t { Keyword, Type, String, Comment, Number, Preprocessor };

// Counts UTF-16 code units from the beginning of the line. What stands between two tokens has no colour of its own.
struct CToken {
    std::size_t start = 0;
    std::size_t length = 0;
    CTokenKind kind = CTokenKind::Keyword;

    bool operator==(const CToken&) const = default;
};

// What a line goes on with. An unfinished line comment, literal or preprocessor line goes on only behind a line that
// ends with a backslash.
enum class CLineState : std::uint8_t {
    Code,
    BlockComment,
    LineComment,
    String,
    Character,
    Preprocessor,
    PreprocessorBlockComment, // the line behind the comment's end still belongs to the preprocessor
    PreprocessorString,
    PreprocessorCharacter,
};

// Puts the tokens of one line, which holds no line break, into `tokens` (emptied first), in order and without overlap.
// `before` is what the line in front of it returned, `Code` for the first line. Returns the state behind the line.
// Takes any text, also if it is not C. No token ends beyond the line.
// Keywords are those of C11 (ISO/IEC 9899:2011, 6.4.1). Names of types, also those of <stddef.h> and <stdint.h>, are of
// the kind Type.
CLineState ScanCLine(std::u16string_view line, CLineState before, std::vector<CToken>& tokens);

// The keywords of C11, those of types among them.
std::vector<std::string> CKeywords();

} // namespace tessaly
