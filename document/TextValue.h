// Numbers and texts: the argument of operations that take both, and a number read from a text.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tessaly {

class TextValue {
public:
    TextValue(std::string text) : mText(std::move(text)) {}
    TextValue(std::string_view text) : mText(text) {}
    TextValue(const char* text) : mText(text) {}

    // A whole number: its decimal digits, with "-" when negative and no blank in front.
    template <std::integral Number>
    requires(!std::same_as<Number, bool> && !std::same_as<Number, char>) TextValue(Number number)
        : mText(std::to_string(number)) {}

    // A floating-point number: at most 15 significant digits, "." as the decimal point. Inline, so that only who calls
    // it links the tables of std::to_chars, 190 KB.
    TextValue(double number) {
        char digits[32];
        const auto result = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 15);
        mText.assign(digits, result.ptr);
    }

    const std::string& Text() const { return mText; }

private:
    std::string mText;
};

// `text` as a 32-bit integer, as NumFuncs= wants it: blanks and tabs around it, a sign, digits with a "." and a
// fraction, and an exponent are taken; a fraction is rounded, half to even. No value for anything else (hexadecimal,
// grouping, text after the number, nothing at all) and for a number beyond 32 bits.
std::optional<std::int32_t> ToInteger(std::string_view text);

} // namespace tessaly
