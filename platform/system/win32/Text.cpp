// Done by hand, because MultiByteToWideChar neither takes texts of 2 GB nor treats broken ones alike on every Windows.
#include "platform/system/win32/Text.h"

#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace tessaly::win32 {

namespace {

static_assert(sizeof(wchar_t) == 2, "UTF-16 is what Windows takes");

// Reads the character at `position` and moves `position` behind it.
char32_t ReadUtf16(std::wstring_view wide, std::size_t& position) {
    const wchar_t unit = wide[position++];
    if (IsHighSurrogate(unit) && position < wide.size() && IsLowSurrogate(wide[position])) {
        return JoinSurrogates(unit, wide[position++]);
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? ReplacementCharacter : static_cast<char32_t>(unit);
}

} // namespace

std::wstring ToWide(std::string_view text) {
    std::wstring wide(text.size(), L'\0'); // no character has more units than bytes
    wchar_t* to = wide.data();
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t ascii = AsciiPrefix(text.substr(position));
        to = std::copy_n(text.data() + position, ascii, to);
        position += ascii;
        if (position == text.size()) {
            break;
        }
        const char32_t read = ReadUtf8(text, position);
        const char32_t character = read == NotACharacter ? ReplacementCharacter : read;
        if (character < FirstOfTwoUnits) {
            *to++ = static_cast<wchar_t>(character);
        } else {
            *to++ = static_cast<wchar_t>(HighSurrogate(character));
            *to++ = static_cast<wchar_t>(LowSurrogate(character));
        }
    }
    wide.resize(static_cast<std::size_t>(to - wide.data()));
    return wide;
}

std::string ToUtf8(std::wstring_view wide) {
    std::string text;
    text.reserve(wide.size());
    for (std::size_t position = 0; position < wide.size();) {
        if (wide[position] < 0x80) {
            text += static_cast<char>(wide[position++]);
        } else {
            AppendUtf8(ReadUtf16(wide, position), text);
        }
    }
    return text;
}

} // namespace tessaly::win32
