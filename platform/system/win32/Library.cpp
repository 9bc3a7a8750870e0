#include "platform/system/win32/Library.h"

namespace tessaly::win32 {

void KeepToSystemLibraries() noexcept {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

HMODULE LoadSystemLibrary(const wchar_t* name) noexcept {
    return LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

} // namespace tessaly::win32
