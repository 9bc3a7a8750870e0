// Giving a new file its name.
#pragma once

#include "platform/system/win32/Handle.h"

#include <string>

namespace tessaly::win32 {

// MoveFileExW, tried a while when another program, such as a virus scanner, holds one of the two. Returns its error.
inline std::error_code Move(const std::wstring& from, const std::wstring& to, DWORD flags) {
    constexpr int mostMoves = 20;
    constexpr DWORD pauseInMilliseconds = 50;
    std::error_code error;
    for (int i = 0; i < mostMoves; ++i) {
        error = MoveFileExW(from.c_str(), to.c_str(), flags) != 0 ? std::error_code() : LastError();
        if (error.value() != ERROR_ACCESS_DENIED && error.value() != ERROR_SHARING_VIOLATION) {
            break;
        }
        Sleep(pauseInMilliseconds);
    }
    return error;
}

} // namespace tessaly::win32
