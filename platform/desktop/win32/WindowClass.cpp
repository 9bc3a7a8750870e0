#include "platform/desktop/win32/WindowClass.h"

#include "platform/desktop/win32/Picture.h"

#include <bit>

namespace tessaly::win32 {

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(ProgramIcon));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = std::bit_cast<HBRUSH>(INT_PTR{COLOR_BTNFACE + 1});
    windowClass.lpszClassName = name;
    RegisterClassExW(&windowClass);
}

} // namespace tessaly::win32
