// What tools print, with the positions in the C file led back to what the user wrote.
#pragma once

#include "diagnostics/CompilerHabits.h"
#include "diagnostics/LinkerMessages.h"
#include "diagnostics/MessageForms.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// Leads positions in the C file back in what tools print, line by line; everything else stays byte by byte. A position
// is "psfPath:member:line", with `psfPath` as it stands and the line in the member's text, counted from 1; that of a
// prototype is the line of the function it was cut from.
//
// FILE:LINE below is the C file in one of its spellings, with a position in any form of MessageForms.h.
// - A line that begins with "FILE:LINE:" or "FILE:LINE :" begins with the new position and ends with the old one in
//   parentheses: "x.PSF:events/OnKey:3: error: what (gen.c:45:9)".
// - Inside a line the old position in parentheses follows the new one: "In file included from x.PSF:references:1
//   (gen.c:14):".
// - A message of a linker that names no line of the C file, but something of the user's, is led to that. What stands in
//   front of it goes to the end: "x.PSF:events/OnKey:1: undefined reference to `OnKey' (loop.c:90)".
class MessageRewriter {
public:
    // Of a compiler's own messages those inside a line are led back in "In file included from FILE:LINE:" and "from
    // FILE:LINE,"; behind the name of a linker as in "/usr/bin/ld: FILE:LINE: what"; in front of ": first defined
    // here"; and in lld's lines ">>> referenced by FILE:LINE (FILE:LINE)". Other lines may quote the source.
    enum class Inside : std::uint8_t { OfCompilers, Anywhere };

    // `map` must outlive it.
    MessageRewriter(const BuildMap& map, std::string psfPath, Inside inside);

    // How the lines are counted from here on. Without it that is decided line by line, with what is known until then.
    void SetCounting(LineCounting counting) { mCounting = counting; }

    // Appends the next line of the output, which is without its end, to `result`.
    void Rewrite(std::string_view line, std::string& result);

private:
    bool RewriteFront(std::string_view line, std::string& result) const;
    void RewriteInside(std::string_view line, std::string& result) const;
    std::optional<std::string> MapPosition(const FilePosition& position) const;
    std::string Place(const MemberPlace& place) const;

    const BuildMap& mMap;
    std::string mPsfPath;
    Inside mInside;
    LinkerMessages mLinker;
    CountingVotes mVotes;
    std::optional<LineCounting> mCounting;
    LineCounting mCurrent = LineCounting::LoneCrEndsLine;
};

// The whole output of a compiler and its linker, with one counting of lines: see CountingOf.
std::string RewriteMessages(const BuildMap& map, std::string_view psfPath, std::string_view output);

} // namespace tessaly
