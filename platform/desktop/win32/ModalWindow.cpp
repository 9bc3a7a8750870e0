#include "platform/desktop/win32/ModalWindow.h"

#include "platform/desktop/win32/Raise.h"
#include "platform/desktop/win32/WindowClass.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>

namespace tessaly::win32 {

namespace {

// Children are not clipped: a frame around others leaves its inside to the window.
constexpr DWORD ModalStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD ExtendedModalStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

} // namespace

ModalWindow::ModalWindow(EventLoop& loop, HWND owner, const wchar_t* className, float clientWidth, float clientHeight)
    : mLoop(loop),
      mOwner(owner),
      mClientWidth(clientWidth),
      mClientHeight(clientHeight) {
    RegisterWindowClass(className, Procedure);
    CreateWindowExW(ExtendedModalStyle, className, L"", ModalStyle, 0, 0, 0, 0, owner, nullptr,
                    GetModuleHandleW(nullptr), this);
    if (mHandle == nullptr) {
        ThrowLastError("CreateWindowEx");
    }
    mDpi = WindowDpi(owner);
    mFont = MakeMessageFont(mDpi);
}

ModalWindow::~ModalWindow() {
    if (mHandle != nullptr) {
        SetWindowLongPtrW(mHandle, GWLP_USERDATA, 0);
        DestroyWindow(mHandle);
    }
}

void ModalWindow::SetTitle(std::string_view caption) {
    SetWindowTextW(mHandle, ToWide(caption).c_str());
}

void ModalWindow::Run() {
    Resize(WindowDpi(mOwner));
    PutInTheMiddle();
    mIsShown = true;
    const bool ownerWasEnabled = EnableWindow(mOwner, FALSE) == 0;
    ShowWindow(mHandle, SW_SHOW);
    SetFocus(FirstFocus() != nullptr ? FirstFocus() : mHandle);
    mLoop.RunWhile([this] { return mIsShown; }, [this](MSG& message) { return Take(message); });
    // Enabled first: Windows gives the activity of a window that goes to one that can have it.
    EnableWindow(mOwner, ownerWasEnabled ? TRUE : FALSE);
    if (mHandle != nullptr) {
        ShowWindow(mHandle, SW_HIDE);
    }
    SetActiveWindow(mOwner);
}

bool ModalWindow::Take(MSG& message) {
    const bool isTaken = TakeMessage(message);
    if (message.message == WM_KEYDOWN && message.wParam == VK_F1) {
        Raise(mLoop.onHelp);
    }
    return isTaken || (mHandle != nullptr && IsDialogMessageW(mHandle, &message) != 0);
}

void ModalWindow::End() {
    mIsShown = false;
    PostMessageW(mHandle, WM_NULL, 0, 0); // the loop looks again
}

void ModalWindow::Resize(int dpi) {
    const bool isOther = dpi != mDpi;
    mDpi = dpi;
    if (isOther) {
        FontOwner font = MakeMessageFont(dpi);
        std::swap(mFont, font); // the controls use the old one until they are told
        for (Child* const child : mChildren) {
            child->Rescale();
        }
        Rescaled();
    }
    const SIZE client = {ToPixels(mClientWidth, dpi), ToPixels(mClientHeight, dpi)};
    const SIZE size = FrameSize(client, ModalStyle, ExtendedModalStyle, false, dpi);
    SetWindowPos(mHandle, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModalWindow::PutInTheMiddle() {
    RECT owner = {};
    GetWindowRect(mOwner, &owner);
    RECT own = {};
    GetWindowRect(mHandle, &own);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(mOwner, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& screen = monitor.rcWork;
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const LONG left =
        std::clamp((owner.left + owner.right - width) / 2, screen.left, std::max(screen.left, screen.right - width));
    const LONG top =
        std::clamp((owner.top + owner.bottom - height) / 2, screen.top, std::max(screen.top, screen.bottom - height));
    SetWindowPos(mHandle, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK ModalWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto* const create = std::bit_cast<const CREATESTRUCTW*>(lParam);
        static_cast<ModalWindow*>(create->lpCreateParams)->mHandle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const self = std::bit_cast<ModalWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr ? self->Message(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT ModalWindow::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        Closed();
        End();
        return 0;
    case WM_COMMAND:
        Commanded(LOWORD(wParam));
        return 0;
    case DM_GETDEFID: // so that Enter is OK wherever the focus is
        return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_SETFOCUS: // also when the window becomes active again
        if (focus.Owner() != nullptr) {
            SetFocus(static_cast<const Child*>(focus.Owner())->Handle());
        }
        return 0;
    case WM_DPICHANGED:
        Resize(HIWORD(wParam));
        return 0;
    case WM_NCDESTROY: { // its owner is gone
        HWND window = mHandle;
        mHandle = nullptr;
        mIsShown = false;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    default:
        return OwnMessage(message, lParam) ? 0 : DefWindowProcW(mHandle, message, wParam, lParam);
    }
}

} // namespace tessaly::win32
