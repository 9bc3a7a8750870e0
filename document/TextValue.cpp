// Numbers as texts.
#include "document/TextValue.h"

#include <charconv>

namespace tessaly {

TextValue::TextValue(double number) {
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 15);
    mText.assign(digits, result.ptr);
}

} // namespace tessaly
