// Done by hand, because MultiByteToWideChar neither takes texts of 2 GB nor treats broken ones alike on every Windows.
#include "platform/system/win32/Text.h"

#include "platform/text/Utf16.h"

#include <cstddef>
#include <system_error>
#include <windows.h>

namespace tessaly::win32 {

namespace {

// Longer paths are given in their full form behind a prefix. Windows itself wants that from 260 on, and earlier for
// folders; files beside this one may have longer names.
constexpr std::size_t LongestPlainPath = 200;

static_assert(sizeof(wchar_t) == 2, "UTF-16 is what Windows takes");

} // namespace

std::wstring ToWide(std::string_view text) {
    return ToUnits<wchar_t>(text);
}

std::string ToUtf8(std::wstring_view wide) {
    return FromUnits(wide);
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
