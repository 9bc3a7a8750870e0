// The lines of a generated C file and what the user wrote in them, recorded while the file is written.
// Compilers do not agree on what a line is: to gcc and clang a lone CR ends one, to others it is a blank.
#pragma once

#include "document/CCodeGenerator.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Which characters end a line: LF and CR LF always do.
enum class LineCounting { LoneCrEndsLine, LoneCrIsBlank };

// A line of a member's text, counted from 1 as a text editor counts: LF, CR LF and CR each end a line.
struct MemberLine {
    CCodeOrigin origin; // never the frame
    std::size_t line = 0;
};

// What is not written to it does not stand in the file. When Write throws, that piece and all behind it count as the
// frame's or as not there.
class CFileLines final : public CCodeSink {
public:
    void Write(std::string_view text, CCodeOrigin origin) override;

    // What stands in line `line` of the C file, counted from 1. No value for a line of the frame and for one that
    // does not exist. A line that holds several lines of a member gives the first of them.
    std::optional<MemberLine> Find(std::size_t line, LineCounting counting) const;

    // The text of a line with its end, in UTF-8; "" for one that does not exist.
    std::string_view Text(std::size_t line, LineCounting counting) const;

    // The number that a text editor gives to the front of a line; 0 for a line that does not exist.
    std::size_t EditorLine(std::size_t line, LineCounting counting) const;

    // The number that it gives to the line at `position` of the whole file.
    std::size_t EditorLineAt(std::size_t position) const;

    // The whole file, in UTF-8. Good until the next Write.
    const std::string& Whole() const { return mText; }

    // The text of a member as it was written; "" for one that was not. Good until the next Write.
    std::string_view MemberText(CCodeOrigin member) const;

private:
    struct Piece {
        std::size_t begin = 0;
        std::size_t end = 0;
        CCodeOrigin origin;
    };

    void FindLineStarts();
    const std::vector<std::size_t>& Starts(LineCounting counting) const;

    std::string mText;
    std::vector<Piece> mMembers;                     // in their order in the file
    std::size_t mSearched = 0;                       // as far as line ends are known
    std::vector<std::size_t> mStarts = {0};          // where lines begin when a lone CR ends one
    std::vector<std::size_t> mStartsWithoutCr = {0}; // and when it does not
};

} // namespace tessaly
