// Libraries of Windows, out of the system's folder alone: one beside the program or in the current folder may be
// anybody's. Those that most runs never need are loaded when they are called: a program starts the faster the fewer it
// has.
#pragma once

#include "platform/system/win32/Handle.h"

namespace tessaly::win32 {

// The first thing that a program does: from then on Windows, too, takes what it loads by name from the system's folder.
inline void KeepToSystemLibraries() noexcept {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

// Loads the library `name`, which stays loaded. Null, with the last error set, when there is none.
inline HMODULE LoadSystemLibrary(const wchar_t* name) noexcept {
    return LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

// The function `name` of `library`, which stays loaded. Throws std::system_error.
template <class Function>
Function LibraryFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadSystemLibrary(library);
    const FARPROC function = module != nullptr ? GetProcAddress(module, name) : nullptr;
    if (function == nullptr) {
        ThrowLastError(name);
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

} // namespace tessaly::win32
