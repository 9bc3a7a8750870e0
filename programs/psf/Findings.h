// What psf check finds out about a file, in the order of its lines, whichever section finds it.
#pragma once

#include "document/PsfReadObserver.h"
#include "platform/text/CodePage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::psf {

struct PsfWarning {
    std::uint64_t offset;  // in the file, in bytes
    std::string text;      // "MEMBER: ..."
    std::string_view rule; // its stable name; "" for what a load loses or changes
};

inline constexpr std::string_view BlanksAndBreaks = " \t\r\n";

// `text`, cut short when it is endless.
std::string Shown(std::string_view text);
std::string Quoted(std::string_view text);

class Findings {
public:
    // At most 10,000 are kept; the last one then says so.
    void Warn(std::uint64_t offset, const std::string& member, const std::string& text, std::string_view rule = {});

    // From `offset` on the bytes of the file belong to `member`; "" for what is not kept.
    void BeginMember(std::uint64_t offset, const std::string& member) { mStretches.push_back({offset, member}); }

    // A tag line ended the text of `member`. Lines that are ignored behind it are the rest of that text.
    void TextEnded(PsfLine line, const std::string& member);

    // A line that counts for nothing.
    void Ignored(PsfLine line);

    // The lines that are ignored from here on have their warning already.
    void LossIsTold() { mIgnoredIsTold = true; }

    // `beforeWhat` counts again: warns when lines before it were ignored.
    void TellIgnored(const std::string& beforeWhat, const std::string& member);

    // Warns of the bytes of members that are no characters.
    void CheckCharacters(const std::string& bytes, const CodePage& codePage);

    // Warns once for each member whose bytes are UTF-8, unless that is the code page.
    void CheckUtf8(const std::string& bytes, const CodePage& codePage);

    // All warnings in the order of their places.
    std::vector<PsfWarning> Take();

private:
    struct Stretch {
        std::uint64_t offset;
        std::string member;
    };
    struct Ending {
        std::uint64_t offset;
        std::string line;
        std::string member;
    };

    std::vector<PsfWarning> mWarnings;
    std::vector<Stretch> mStretches;
    std::optional<std::uint64_t> mIgnored; // the first line that was ignored since the last that counted
    bool mIgnoredIsTold = false;
    std::optional<Ending> mEnding; // the last end of a text since then
};

} // namespace tessaly::psf
