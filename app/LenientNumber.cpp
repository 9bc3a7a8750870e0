// A number is first cut out of the text and then converted, so that the conversion never meets anything strange.
#include "app/LenientNumber.h"

#include "document/TextValue.h"
#include "platform/text/Ascii.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessaly {

namespace {

constexpr std::string_view Skipped = " \t\n";
constexpr std::string_view HexadecimalDigits = "0123456789abcdef";

// `text` without what is skipped, in small letters.
std::string Condense(std::string_view text) {
    std::string condensed;
    for (const char character : text) {
        if (Skipped.find(character) == std::string_view::npos) {
            condensed += SmallLetter(character);
        }
    }
    return condensed;
}

// The number of `base` at the front of `text`; `base` is at most 16.
double ReadDigits(std::string_view text, int base) {
    const std::string_view digits = HexadecimalDigits.substr(0, static_cast<std::size_t>(base));
    double value = 0;
    for (const char character : text) {
        const std::size_t digit = digits.find(character);
        if (digit == std::string_view::npos) {
            break;
        }
        value = value * base + static_cast<double>(digit);
    }
    return std::min(value, std::numeric_limits<double>::max());
}

// The decimal number at the front of `text`, as a C++ program would write it. Without a digit it is none.
std::string TakeDecimal(std::string_view text) {
    std::string number(TakeDigits(text));
    if (Take(text, ".")) {
        number += '.';
        number += TakeDigits(text);
    }
    if (Take(text, "e") || Take(text, "d")) {
        const std::string_view sign = TakeMinus(text) ? "-" : "";
        const std::string_view exponent = TakeDigits(text);
        if (!exponent.empty()) {
            number += 'e';
            number += sign;
            number += exponent;
        }
    }
    return number;
}

// Whether a decimal number that does not fit is too small for it, and not too large.
bool IsTiny(std::string_view number) {
    const std::size_t end = std::min(number.find('e'), number.size());
    const auto point = static_cast<std::int64_t>(std::min(number.find('.'), end));
    const auto first = static_cast<std::int64_t>(std::min(number.find_first_of("123456789"), end));
    const std::string_view digits = number.substr(std::min(end + 1, number.size()));
    std::int64_t exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec == std::errc::result_out_of_range) {
        return digits.starts_with('-');
    }
    return point - first + exponent < 0;
}

// 0 when it is no number.
double ReadDecimal(std::string_view text) {
    const std::string number = TakeDecimal(text);
    double value = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    const bool isHuge = read.ec == std::errc::result_out_of_range && !IsTiny(number);
    return isHuge ? std::numeric_limits<double>::max() : value;
}

} // namespace

double LenientValue(std::string_view text) {
    const std::string condensed = Condense(text);
    std::string_view rest = condensed;
    const bool minus = TakeMinus(rest);
    double value = 0;
    if (Take(rest, "&h")) {
        value = ReadDigits(rest, 16);
    } else if (Take(rest, "&o")) {
        value = ReadDigits(rest, 8);
    } else {
        value = ReadDecimal(rest);
    }
    return minus ? -value : value;
}

std::int32_t RoundToInteger(double number) {
    // The remainder of a division whose quotient is rounded half to even, whatever the rounding mode is.
    const double rounded = number - std::remainder(number, 1.0);
    const bool fits =
        rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max();
    if (!fits) {
        throw std::range_error("no 32-bit number");
    }
    return static_cast<std::int32_t>(rounded);
}

std::uint8_t ToByte(std::string_view text) {
    const std::optional<std::int32_t> number = ToInteger(text);
    if (!number) {
        throw std::invalid_argument("no number");
    }
    if (*number < 0 || *number > std::numeric_limits<std::uint8_t>::max()) {
        throw std::range_error("no byte");
    }
    return static_cast<std::uint8_t>(*number);
}

} // namespace tessaly
