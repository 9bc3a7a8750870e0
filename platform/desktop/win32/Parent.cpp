#include "platform/desktop/win32/Parent.h"

#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/Picture.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Handle.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tessaly::win32 {

// What is told of the end is nobody's any more.
Parent::~Parent() {
    if (mHandle != nullptr) {
        SetWindowLongPtrW(mHandle, GWLP_USERDATA, 0);
        DestroyWindow(mHandle);
    }
}

void Parent::Later(std::function<void()> action) {
    loop.Later(mHandle, std::move(action));
}

// A class that is registered already stays as it is.
void Parent::Create(const wchar_t* className, DWORD style, DWORD extendedStyle, SIZE size, HWND owner) {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(ProgramIcon));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = std::bit_cast<HBRUSH>(INT_PTR{COLOR_BTNFACE + 1});
    windowClass.lpszClassName = className;
    RegisterClassExW(&windowClass);
    CreateWindowExW(extendedStyle, className, L"", style, CW_USEDEFAULT, CW_USEDEFAULT, size.cx, size.cy, owner,
                    nullptr, windowClass.hInstance, this);
    if (mHandle == nullptr) {
        ThrowLastError("CreateWindowEx");
    }
    SetDpi(WindowDpi(owner != nullptr ? owner : mHandle));
}

void Parent::SetDpi(int dpi) {
    if (mFont && dpi == mDpi) {
        return;
    }
    mDpi = dpi;
    FontOwner font = MakeMessageFont(dpi);
    std::swap(mFont, font); // the controls use the old one until they are told
    for (Child* const child : mChildren) {
        child->Rescale();
    }
}

Child* Parent::ChildOf(HWND window) const {
    const auto found = std::find_if(mChildren.begin(), mChildren.end(),
                                    [window](const Child* child) { return child->Handle() == window; });
    return found != mChildren.end() ? *found : nullptr;
}

LRESULT CALLBACK Parent::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto* const create = std::bit_cast<const CREATESTRUCTW*>(lParam);
        static_cast<Parent*>(create->lpCreateParams)->mHandle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const self = std::bit_cast<Parent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        self->mHandle = nullptr;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return self->Message(message, wParam, lParam);
}

} // namespace tessaly::win32
