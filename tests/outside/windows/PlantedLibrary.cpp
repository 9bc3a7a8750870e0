// A library that must not be loaded: leaves its own path with .ran behind it, an empty file.
#include <string>
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        wchar_t path[MAX_PATH] = L"";
        GetModuleFileNameW(library, path, MAX_PATH);
        const std::wstring mark = std::wstring(path) + L".ran";
        CloseHandle(CreateFileW(mark.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    return TRUE;
}
