// Every linker has its own words for two things: a name is missing, or it is there twice.
#include "diagnostics/LinkerMessages.h"

#include "diagnostics/MessageForms.h"
#include "document/Members.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

struct Phrase {
    std::string_view words;
    bool isMissing;
    bool isBehindName;
};

constexpr std::array Phrases = std::to_array<Phrase>({
    {"undefined reference to ", true, false},
    {"undefined references to ", true, false},
    {"undefined symbol: ", true, false},
    {"unresolved external symbol ", true, false}, // link.exe
    {"undefinierter Verweis auf ", true, false},
    {"externes Symbol ", true, false},
    {"multiple definition of ", false, false},
    {"duplicate symbol: ", false, false},
    {" already defined in ", false, true},
    {"Mehrfachdefinition von ", false, false},
    {" ist bereits in ", false, true},
});

// What stands in front of the function that a message is about.
constexpr std::array FunctionPhrases = std::to_array<std::string_view>(
    {": in function ", ": in Funktion ", " in function ", " in Funktion ", ":function "});

// Different names of one output are looked for in all texts so many times.
constexpr std::size_t MostSearches = 200;

// A name is looked for in this much of a line.
constexpr std::size_t LongestLinkerLine = 4096;

// The first name in `text`, without what surrounds it.
std::string_view FirstName(std::string_view text) {
    const auto begin = std::find_if(text.begin(), text.end(), IsNameCharacter);
    return {begin, std::find_if_not(begin, text.end(), IsNameCharacter)};
}

// The last name in `text`.
std::string_view LastName(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && !IsNameCharacter(text[end - 1])) {
        --end;
    }
    std::size_t begin = end;
    while (begin > 0 && IsNameCharacter(text[begin - 1])) {
        --begin;
    }
    return text.substr(begin, end - begin);
}

// The name in C of a name in an object file.
std::string_view CName(std::string_view name) {
    constexpr std::string_view imported = "__imp_";
    name.remove_prefix(name.starts_with(imported) ? imported.size() : 0);
    return name;
}

std::string_view FunctionOf(std::string_view line) {
    for (const std::string_view phrase : FunctionPhrases) {
        if (const std::size_t at = line.find(phrase); at != std::string_view::npos) {
            return FirstName(line.substr(at + phrase.size()));
        }
    }
    return {};
}

} // namespace

std::optional<LinkerMessages::Message> LinkerMessages::Next(std::string_view line) {
    const std::string_view front = line.substr(0, LongestLinkerLine);
    if (front.empty() || front.front() == ' ' || front.front() == '>') {
        return std::nullopt;
    }
    if (front.ends_with(':')) { // "/tmp/a.o: in function `F':"
        mFunction = FunctionOf(front);
        return std::nullopt;
    }
    for (const Phrase& phrase : Phrases) {
        const std::size_t at = front.find(phrase.words);
        const std::size_t colon = at == std::string_view::npos ? at : front.substr(0, at + 1).find(": ");
        if (colon == std::string_view::npos) {
            continue;
        }
        const std::string_view own = FunctionOf(front.substr(at));
        const std::string_view gold = FunctionOf(front.substr(0, at));
        const std::string_view function = !own.empty() ? own : !gold.empty() ? gold : mFunction;
        const std::string name(phrase.isBehindName ? LastName(front.substr(0, at))
                                                   : FirstName(front.substr(at + phrase.words.size())));
        return Message{line.substr(0, colon), line.substr(colon + 2), PlaceOf(name, function, phrase.isMissing)};
    }
    return std::nullopt;
}

std::optional<MemberPlace> LinkerMessages::PlaceOf(const std::string& name, std::string_view function, bool isMissing) {
    const std::string key = (isMissing ? "-" : "+") + name + "@" + std::string(function);
    const auto known = mKnown.find(key);
    if (known != mKnown.end() || name.empty() || mKnown.size() >= MostSearches) {
        return known == mKnown.end() ? std::nullopt : known->second;
    }
    std::optional<MemberPlace> place = Search(std::string(CName(name)), CName(function), isMissing);
    if (!place && (name.starts_with('_') || function.starts_with('_'))) { // so C names begin in 32 bits on Windows
        const auto plain = [](std::string_view each) { return each.substr(each.starts_with('_') ? 1 : 0); };
        place = Search(std::string(plain(CName(name))), plain(CName(function)), isMissing);
    }
    return mKnown.emplace(key, place).first->second;
}

std::optional<MemberPlace> LinkerMessages::Search(const std::string& name, std::string_view function,
                                                  bool isMissing) const {
    const auto member = [this](std::string_view prefix, std::string_view end) {
        const std::string wanted = std::string(prefix) + std::string(end);
        const auto found = std::find(mMap.Members().begin(), mMap.Members().end(), wanted);
        return found == mMap.Members().end() ? std::string_view() : std::string_view(*found);
    };
    for (const std::string_view prefix : {FunctionPrefix, EventPrefix}) {
        if (const std::string_view user = member(prefix, function); isMissing && !user.empty()) {
            return mMap.FirstUse(name, user).value_or(MemberPlace{user, 1, 0});
        }
    }
    for (const std::string_view prefix : {FunctionPrefix, EventPrefix}) {
        const std::string_view own = member(prefix, name);
        if (!own.empty() && (!isMissing || prefix == EventPrefix)) {
            const std::optional<MemberPlace> use = isMissing ? std::nullopt : mMap.FirstUse(name, own);
            return use.value_or(MemberPlace{own, 1, 0});
        }
    }
    return mMap.FirstUse(name);
}

} // namespace tessaly
