// The variables of Windows are UTF-16.
#include "platform/system/Environment.h"

#include "platform/system/win32/Text.h"

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

} // namespace tessaly
