// A text or a number, as its text: the argument of operations that take both.
#pragma once

#include <concepts>
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

    // A floating-point number: at most 15 significant digits, "." as the decimal point.
    TextValue(double number);

    const std::string& Text() const { return mText; }

private:
    std::string mText;
};

} // namespace tessaly
