// Done by hand, because MultiByteToWideChar neither takes texts of 2 GB nor treats broken ones alike on every Windows.
#include "platform/system/win32/Text.h"

#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <system_error>
#include <windows.h>

namespace tessaly::win32 {

namespace {

// Longer paths are given in their full form behind a prefix. Windows itself wants that from 260 on, and earlier for
// folders; files beside this one may have longer names.
constexpr std::size_t LongestPlainPath = 200;

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
        const char32_t character = ReadUtf8OrReplacement(text, position);
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

std::wstring WidePath(const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        throw std::system_error(ERROR_INVALID_NAME, std::system_category(), "open");
    }
    std::wstring wide = ToWide(path);
    if (wide.size() <= LongestPlainPath || wide.starts_with(L"\\\\?\\") || wide.starts_with(L"\\\\.\\")) {
        return wide;
    }
    const DWORD room = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    const DWORD length = GetFullPathNameW(wide.c_str(), room, full.data(), nullptr);
    if (length == 0 || length >= room) {
        return wide; // the call that is to take it says what is wrong
    }
    full.resize(length);
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

} // namespace tessaly::win32
