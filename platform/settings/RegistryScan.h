// Scans a registry export file line by line. Reading and changing the file both use it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::string_view RegistryFirstLine = "Windows Registry Editor Version 5.00";

struct RegistryRoot {
    std::uint32_t number;
    std::string_view name;
    std::string_view shortName;
};

extern const std::array<RegistryRoot, 5> RegistryRoots;

// A key or a value, with all lines that it takes, or a line that is neither. Positions are bytes of the text.
struct RegistryEntry {
    std::string error;      // why it cannot be read; "" when it is right
    std::size_t number = 0; // of its line, from 1; of a value of several lines the one that was looked at last
    std::size_t end = 0;    // behind its last line, in front of the line's end
    bool isKey = false;     // it begins with a bracket
    bool deletes = false;   // the key or the value

    std::uint32_t root = 0; // of a right key
    std::string_view path;

    std::optional<std::string> name; // of a value, and of one that is wrong behind its "="
    std::uint32_t type = 0;
    std::string bytes;
    std::size_t valueStart = 0; // where the value stands, without the blanks and the comment around it
    std::size_t valueEnd = 0;
};

// Every character is looked at a fixed number of times, whatever the text holds.
class RegistryScanner {
public:
    // `text` is the file without its mark, as UTF-8; it must outlive the scanner. Any bytes will do.
    explicit RegistryScanner(std::string_view text) : mText(text) {}

    // Goes on to the next entry; blank lines, comments and a right first line are none. False at the end.
    bool Next();

    const RegistryEntry& Entry() const { return mEntry; }

private:
    bool ReadFirstLine();
    bool NextLine();
    void ReadEntry();
    void ReadKey();
    void ReadValueLine(bool isText);
    void ReadValue(std::string_view value);
    std::uint32_t TakeType(std::string_view& value) const;
    void ReadBytes(std::string_view list);
    std::size_t PositionOf(std::string_view part) const;
    std::size_t ValueEnd() const;

    std::string_view mText;
    std::size_t mPosition = 0; // of the next line
    std::string_view mLine;    // without its end and the blanks around it
    std::size_t mLineEnd = 0;
    std::size_t mNumber = 0;
    bool mIsLinePending = false; // it was reported as a wrong first line and is still to be read
    bool mIsBelowKey = false;
    RegistryEntry mEntry;
};

} // namespace tessaly
