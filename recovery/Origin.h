// Where a copy comes from: a small text that lies beside it, lines of KEY=VALUE with a checksum at the end.
// It is read strictly: whatever WriteOrigin would not write is damage.
#pragma once

#include "recovery/FileMark.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// Why there is a copy.
enum class Reason {
    NotSaved,      // there is more than in the file; all others are of kept documents
    AnsweredNo,    // No at the question whether to save
    Cancelled,     // Cancel at that question
    SaveFailed,    // a close behind a Save that failed
    NewFile,       // New over a document that did not count as changed
    FileOpened,    // Open, likewise
    TextReplaced,  // something took the place of what was typed and not stored
    MemberDeleted, // Delete
    NotRecovered,  // No at the question whether to go on with a copy
    OlderCopy,     // a newer copy was asked for
};

// The name of a reason, in English: letters and blanks only, so that it fits into a file name.
std::string_view ReasonName(Reason reason);

enum class Zone { Local, Utc };

// A time in milliseconds since 1970 as strftime writes it, "" when it has no date.
std::string TimeText(std::int64_t milliseconds, const char* format, Zone zone);

// A program that runs, or ran.
struct ProcessMark {
    std::uint64_t id = 0;
    std::string start; // PrivateFiles::ProcessStart

    bool operator==(const ProcessMark&) const = default;
};

struct Origin {
    Reason reason = Reason::NotSaved;
    std::string path;             // of the document's file; "" for a document without a name
    std::optional<FileMark> file; // that file when it was loaded or saved; none when it was not there
    std::int64_t time = 0;        // in milliseconds since 1970, UTC
    std::uint64_t number = 0;     // of the copies of one process, from 1; the highest is the newest
    std::string codePage;         // as MakeCodePage takes it; "" for the system's
    std::int32_t language = 0;    // of the window
    std::string item;             // the selected member's name; "" for none
    std::uint64_t caret = 0;      // position in the pane
    ProcessMark process;          // that made the copy
    FileMark copy;                // the copy itself

    bool operator==(const Origin&) const = default;
};

std::string WriteOrigin(const Origin& origin);

// No value unless `bytes` are exactly what WriteOrigin makes of the origin that is returned.
std::optional<Origin> ReadOrigin(std::string_view bytes);

} // namespace tessaly
