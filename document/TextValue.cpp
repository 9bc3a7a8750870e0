// Exact decimal rounding: digits that are read are never turned into a floating-point number.
#include "document/TextValue.h"

#include "platform/text/Ascii.h"

#include <algorithm>
#include <limits>
#include <string>

namespace tessaly {

namespace {

// No 32-bit number has more digits than this before its decimal point.
constexpr std::int64_t MostDigits = 10;

// The exponent behind "e"; a larger one than any text has digits stands for all that are larger.
std::optional<std::int64_t> TakeExponent(std::string_view& text) {
    if (!Take(text, "e") && !Take(text, "E")) {
        return 0;
    }
    const bool minus = TakeMinus(text);
    const std::string_view digits = TakeDigits(text);
    if (digits.empty()) {
        return std::nullopt;
    }
    constexpr std::int64_t huge = std::int64_t{1} << 50;
    std::int64_t exponent = 0;
    for (const char digit : digits) {
        exponent = std::min(exponent * 10 + (digit - '0'), huge);
    }
    return minus ? -exponent : exponent;
}

// The value of `digits` with the decimal point behind the first `point` of them, rounded half to even.
// `digits` does not begin with 0. No value when it is far too large.
std::optional<std::int64_t> Round(std::string_view digits, std::int64_t point) {
    if (point > MostDigits) {
        return std::nullopt;
    }
    if (digits.empty() || point < 0) {
        return 0;
    }
    std::int64_t value = 0;
    for (std::int64_t i = 0; i < point; ++i) {
        const auto index = static_cast<std::size_t>(i);
        value = value * 10 + (index < digits.size() ? digits[index] - '0' : 0);
    }
    const std::string_view fraction = digits.substr(std::min(static_cast<std::size_t>(point), digits.size()));
    if (fraction.empty() || fraction[0] < '5') {
        return value;
    }
    const bool half = fraction[0] == '5' && fraction.find_first_not_of('0', 1) == std::string_view::npos;
    return value + (half ? value % 2 : 1);
}

} // namespace

std::optional<std::int32_t> ToInteger(std::string_view text) {
    text = Trim(text);
    const bool minus = TakeMinus(text);
    std::string digits(TakeDigits(text));
    auto point = static_cast<std::int64_t>(digits.size());
    if (Take(text, ".")) {
        digits += TakeDigits(text);
    }
    const bool hasDigits = !digits.empty();
    const std::optional<std::int64_t> exponent = TakeExponent(text);
    if (!hasDigits || !exponent || !text.empty()) {
        return std::nullopt;
    }
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    digits.erase(0, zeros);
    point += *exponent - static_cast<std::int64_t>(zeros);
    const std::optional<std::int64_t> magnitude = digits.empty() ? 0 : Round(digits, point);
    if (!magnitude) {
        return std::nullopt;
    }
    const std::int64_t value = minus ? -*magnitude : *magnitude;
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

} // namespace tessaly
