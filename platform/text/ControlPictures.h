// Control characters as an editor shows them: by the pictures that Unicode has for them. Tabs and line breaks have
// none.
#pragma once

namespace tessaly {

inline constexpr char16_t FirstControlPicture = 0x2400;
inline constexpr char16_t LastControlPicture = 0x2421; // of the last one, DEL

constexpr bool HasControlPicture(char16_t character) {
    return (character < u' ' && character != u'\t' && character != u'\n' && character != u'\r') || character == u'\x7F';
}

// Of a character that has one.
constexpr char16_t ControlPicture(char16_t character) {
    return character == u'\x7F' ? LastControlPicture : static_cast<char16_t>(FirstControlPicture + character);
}

// The character for a picture, the unit itself for any other.
constexpr char16_t WithoutControlPicture(char16_t unit) {
    if (unit == LastControlPicture) {
        return u'\x7F';
    }
    const bool isPicture = unit >= FirstControlPicture && unit < LastControlPicture;
    const auto character = static_cast<char16_t>(isPicture ? unit - FirstControlPicture : unit);
    return isPicture && HasControlPicture(character) ? character : unit;
}

} // namespace tessaly
