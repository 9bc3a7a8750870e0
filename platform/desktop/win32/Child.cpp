#include "platform/desktop/win32/Child.h"

#include "platform/system/win32/Handle.h"

#include <bit>
#include <stdexcept>
#include <string>

namespace tessaly::win32 {

Child::Child(Parent& parent, const Kind& kind) : mParent(parent) {
    const std::wstring text(kind.text);
    mHandle = CreateWindowExW(kind.extendedStyle, kind.windowClass, text.c_str(), WS_CHILD | WS_VISIBLE | kind.style, 0,
                              0, 0, 0, parent.Handle(), std::bit_cast<HMENU>(static_cast<INT_PTR>(kind.id)),
                              GetModuleHandleW(nullptr), nullptr);
    if (mHandle == nullptr) {
        ThrowLastError("CreateWindowEx");
    }
    SetWindowLongPtrW(mHandle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    mBase = std::bit_cast<WNDPROC>(SetWindowLongPtrW(mHandle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    SendMessageW(mHandle, WM_SETFONT, reinterpret_cast<WPARAM>(parent.Font()), FALSE);
    mParent.Add(*this);
}

Child::~Child() {
    mParent.Remove(*this);
    mParent.focus.End(); // controls go with their window
    if (mHandle != nullptr) {
        SetWindowLongPtrW(mHandle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(mBase));
        DestroyWindow(mHandle);
    }
}

Extent Child::Place() const {
    if (mExtent) {
        return *mExtent;
    }
    RECT rect = {};
    GetWindowRect(mHandle, &rect);
    MapWindowPoints(nullptr, mParent.Handle(), reinterpret_cast<POINT*>(&rect), 2);
    const int dpi = mParent.Dpi();
    return {ToTwips(rect.left, dpi), ToTwips(rect.top, dpi), ToTwips(rect.right - rect.left, dpi),
            ToTwips(rect.bottom - rect.top, dpi)};
}

void Child::SetPlace(const Extent& extent) {
    mExtent = extent;
    Move();
}

// Each edge is rounded for itself, so that controls that touch in twips touch on the screen.
void Child::Move() {
    if (!mExtent) {
        return;
    }
    const Extent shown = ShownAbove(mParent.FooterTop(), *mExtent);
    const int dpi = mParent.Dpi();
    const int left = ToPixels(shown.left, dpi);
    const int top = ToPixels(shown.top, dpi);
    const int width = ToPixels(shown.left + shown.width, dpi) - left;
    const int height = ToPixels(shown.top + shown.height, dpi) - top;
    SetWindowPos(mHandle, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void Child::TakeFocus() {
    if (!CanHaveFocus()) {
        throw std::runtime_error("the control cannot have the focus");
    }
    ::SetFocus(mHandle);
    mParent.focus.MovedByProgram(*this);
}

void Child::Rescale() {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(mParent.Font()), TRUE);
    Move();
}

LRESULT Child::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    return Default(message, wParam, lParam);
}

LRESULT Child::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(mBase, mHandle, message, wParam, lParam);
}

// The edge of a control that has the keyboard has the colour of selections.
void Child::ShowFocus(UINT message) {
    if ((GetWindowLongW(mHandle, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) == 0) {
        return;
    }
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        mHasKeyboard = message == WM_SETFOCUS;
        RedrawWindow(mHandle, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    } else if (message == WM_NCPAINT && mHasKeyboard) {
        RECT edge = {};
        GetWindowRect(mHandle, &edge);
        OffsetRect(&edge, -edge.left, -edge.top);
        HDC target = GetWindowDC(mHandle);
        for (int width = GetSystemMetrics(SM_CXEDGE); width > 0; --width) {
            FrameRect(target, &edge, GetSysColorBrush(COLOR_HIGHLIGHT));
            InflateRect(&edge, -1, -1);
        }
        ReleaseDC(mHandle, target);
    }
}

LRESULT CALLBACK Child::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Child& self = *std::bit_cast<Child*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(self.mBase));
        self.mHandle = nullptr;
        return CallWindowProcW(self.mBase, window, message, wParam, lParam);
    }
    const LRESULT result = self.Message(message, wParam, lParam);
    self.ShowFocus(message);
    if (message == WM_SETFOCUS) {
        self.mParent.focus.MovedTo(self);
    } else if (message == WM_KILLFOCUS && IsChild(self.mParent.Handle(), std::bit_cast<HWND>(wParam)) == 0) {
        self.mParent.focus.Taken(); // else the other control tells
    }
    return result;
}

} // namespace tessaly::win32
