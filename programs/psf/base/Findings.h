// What psf check finds out about a file, in the order of its lines, whichever section finds it.
#pragma once

#include "document/PsfReadObserver.h"
#include "platform/text/CodePage.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The names of what a load loses or changes. Like those of Lint, none ever changes.
namespace tessaly::rule {
inline constexpr std::string_view FilePrefix = "file-";                  // of all of these
inline constexpr std::string_view FileIgnored = "file-ignored";          // lines that count for nothing
inline constexpr std::string_view FileEndsEarly = "file-ends-early";     // a line ends a text that goes on behind it
inline constexpr std::string_view FileBehindEnd = "file-behind-end";     // text behind the end tag
inline constexpr std::string_view FileNoTag = "file-no-tag";             // a tag is missing
inline constexpr std::string_view FileNotEnded = "file-not-ended";       // a text that is lost without its end
inline constexpr std::string_view FileNotStored = "file-not-stored";     // an event without a text
inline constexpr std::string_view FileCount = "file-count";              // NumFuncs= is no number
inline constexpr std::string_view FileNames = "file-names";              // FuncNames= and NumFuncs= do not agree
inline constexpr std::string_view FileSections = "file-sections";        // the sections and NumFuncs= do not agree
inline constexpr std::string_view FileCollision = "file-collision";      // a function is dropped for its name
inline constexpr std::string_view FileNoPrototype = "file-no-prototype"; // none can be cut from the code, or all is one
inline constexpr std::string_view FilePrototype = "file-prototype";      // the stored prototype is not used
inline constexpr std::string_view FileMore = "file-more";                // there are more warnings
inline constexpr std::string_view FileIncomplete = "file-incomplete";    // it does not load
inline constexpr std::string_view FileUnreadable = "file-unreadable";    // it, its folder or a list cannot be read
} // namespace tessaly::rule

namespace tessaly::psf {

struct PsfWarning {
    std::uint64_t offset; // in the file, in bytes
    std::string member;   // "" for the file as a whole
    std::string text;
    std::string_view rule; // its stable name
};

inline constexpr std::string_view BlanksAndBreaks = " \t\r\n";

// `text`, cut short when it is endless.
std::string Shown(std::string_view text);
std::string Quoted(std::string_view text);

class Findings {
public:
    // At most 10,000 are kept; the last one then says so.
    void Warn(std::uint64_t offset, const std::string& member, const std::string& text, std::string_view rule);

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

    // Warns of the bytes of members that a save changes.
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
    std::deque<Stretch> mStretches;        // as a vector grows it leaves holes in the memory
    std::optional<std::uint64_t> mIgnored; // the first line that was ignored since the last that counted
    bool mIgnoredIsTold = false;
    std::optional<Ending> mEnding; // the last end of a text since then
};

} // namespace tessaly::psf
