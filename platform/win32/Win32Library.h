// Functions of libraries that most runs of the program never need, looked up when they are called: a program starts the
// faster the fewer libraries it has.
#pragma once

#include "platform/win32/Win32Handle.h"
#include "platform/win32/Win32Headers.h"

namespace tessaly {

// The function `name` of a library of Windows, which stays loaded. Throws std::system_error.
template <class Function>
Function LibraryFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryW(library);
    const FARPROC function = module != nullptr ? GetProcAddress(module, name) : nullptr;
    if (function == nullptr) {
        ThrowLastError(name);
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

} // namespace tessaly
