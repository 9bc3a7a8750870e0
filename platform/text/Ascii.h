// Letters, digits and prefixes in ASCII, whatever the locale. Bytes above it are never touched.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace tessaly {

constexpr bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// A capital letter's small one; every other character is returned as it is.
constexpr char SmallLetter(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

// A small letter's capital; every other character is returned as it is.
constexpr char CapitalLetter(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

inline std::string SmallLetters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), SmallLetter);
    return small;
}

inline std::string CapitalLetters(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), CapitalLetter);
    return capitals;
}

inline bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return SmallLetter(x) == SmallLetter(y); });
}

// `text` without the `blanks` at its front, at its back, at both.
constexpr std::string_view TrimFront(std::string_view text, std::string_view blanks = " \t") {
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

constexpr std::string_view TrimBack(std::string_view text, std::string_view blanks = " \t") {
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

constexpr std::string_view Trim(std::string_view text, std::string_view blanks = " \t") {
    return TrimFront(TrimBack(text, blanks), blanks);
}

// An order for sorted containers in which capital and small letters are the same.
struct LessIgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](char x, char y) { return SmallLetter(x) < SmallLetter(y); });
    }
};

// Takes `prefix` off the front of `text`. False when it is not there.
constexpr bool Take(std::string_view& text, std::string_view prefix) {
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
}

// Takes a sign, if there is one. True for a minus.
constexpr bool TakeMinus(std::string_view& text) {
    const bool minus = Take(text, "-");
    if (!minus) {
        Take(text, "+");
    }
    return minus;
}

// Takes the digits at the front off `text` and returns them.
constexpr std::string_view TakeDigits(std::string_view& text) {
    const std::string_view digits = text.substr(0, std::min(text.find_first_not_of("0123456789"), text.size()));
    text.remove_prefix(digits.size());
    return digits;
}

// Takes what stands in front of the first `end` off `text`, all of it without one, and then that; returns the former.
constexpr std::string_view TakeLine(std::string_view& text, char end = '\n') {
    const std::string_view line = text.substr(0, text.find(end));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

// How much of the text stands in front of its first CR or LF; all of it without one. Quicker than find_first_of.
constexpr std::size_t LineLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && text[length] != '\n' && text[length] != '\r') {
        ++length;
    }
    return length;
}

} // namespace tessaly
