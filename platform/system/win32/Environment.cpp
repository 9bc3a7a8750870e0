// The variables of Windows are UTF-16.
#include "platform/system/Environment.h"

#include "platform/system/win32/Text.h"

#include <system_error>
#include <windows.h>

namespace tessaly {

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const std::wstring wideName = win32::ToWide(name);
    DWORD room = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    if (room == 0) {
        return GetLastError() == ERROR_ENVVAR_NOT_FOUND ? std::nullopt : std::optional<std::string>("");
    }
    std::wstring value(room, L'\0');
    room = GetEnvironmentVariableW(wideName.c_str(), value.data(), room);
    value.resize(room);
    return win32::ToUtf8(value);
}

std::string FullPath(const std::string& path) {
    try {
        const std::wstring wide = win32::ToWide(path);
        std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
        full.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
        return full.empty() ? path : win32::ToUtf8(full);
    } catch (const std::system_error&) { // of the path
        return path;
    }
}

void SetProcessEnvironment(const std::string& name, const std::optional<std::string>& value) {
    const std::wstring wide = win32::ToWide(value.value_or(""));
    SetEnvironmentVariableW(win32::ToWide(name).c_str(), value ? wide.c_str() : nullptr);
}

} // namespace tessaly
