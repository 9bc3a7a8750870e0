// What the probe and its library share.
#pragma once

#include <string>
#include <string_view>
#include <windows.h>

namespace tessaly::probe {

inline constexpr int MenuProbeSize = 64 * 1024;

inline std::string Utf8(std::wstring_view text) {
    const int count = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), count, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), count, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

inline std::wstring Wide(std::string_view utf8) {
    const int count = static_cast<int>(utf8.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), count, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), count, text.data(), size);
    return text;
}

} // namespace tessaly::probe
