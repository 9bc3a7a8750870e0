// What linkers say by names alone: no line, or one in a file of somebody else. The names lead to members.
#pragma once

#include "diagnostics/BuildMap.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

class LinkerMessages {
public:
    // `map` must outlive it.
    explicit LinkerMessages(const BuildMap& map) : mMap(map) {}

    struct Message {
        std::string_view where;           // the front of the line, without the colon behind it
        std::string_view text;            // the rest
        std::optional<MemberPlace> place; // without a column; no value when it names nothing of the user's
    };

    // Looks at the next line of the output. No value when it is no such message.
    // - A name that is missing is led to its first use in the function that the linker names, or else in any member.
    // The
    //   name of an event is led to that event, unless a function of the user's calls it.
    // - A name that is there twice is led to the function or event of that name, or else to its first use.
    std::optional<Message> Next(std::string_view line);

private:
    std::optional<MemberPlace> PlaceOf(const std::string& name, std::string_view function, bool isMissing);
    std::optional<MemberPlace> Search(const std::string& name, std::string_view function, bool isMissing) const;

    const BuildMap& mMap;
    std::string mFunction; // that the lines behind are about
    std::map<std::string, std::optional<MemberPlace>, std::less<>> mKnown;
};

} // namespace tessaly
