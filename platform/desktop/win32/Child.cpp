// The control's own window procedure is replaced, and its user data leads to the object.
#include "platform/desktop/win32/Child.h"

#include "platform/system/win32/Handle.h"

#include <algorithm>
#include <bit>
#include <string>

namespace tessaly::win32 {

Child::Child(Parent& parent, const Kind& kind, tessaly::Control& control) : mParent(parent), mControl(control) {
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
    mParent.order.focus.End(); // controls go with their window
    if (mHandle != nullptr) {
        SetWindowLongPtrW(mHandle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(mBase));
        DestroyWindow(mHandle);
    }
}

// Each edge is rounded for itself, so that controls that touch in twips touch on the screen.
void Child::Place(const Extent& place) {
    const int dpi = mParent.Dpi();
    const int left = ToPixels(place.left, dpi);
    const int top = ToPixels(place.top, dpi);
    const int width = ToPixels(place.left + place.width, dpi) - left;
    const int height = ToPixels(place.top + place.height, dpi) - top;
    SetWindowPos(mHandle, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

float Child::ShownHeight() const {
    RECT rect = {};
    GetWindowRect(mHandle, &rect);
    return ToTwips(rect.bottom - rect.top, mParent.Dpi());
}

POINT Child::NearestPlace(POINT wanted) const {
    RECT seen = {};
    GetClientRect(mHandle, &seen);
    POINT place = {std::clamp(wanted.x, 0L, seen.right), std::clamp(wanted.y, 0L, seen.bottom)};
    ClientToScreen(mHandle, &place);
    return place;
}

void Child::Rescale() {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(mParent.Font()), TRUE);
    mControl.Move();
}

LRESULT Child::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    return Default(message, wParam, lParam);
}

LRESULT Child::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(mBase, mHandle, message, wParam, lParam);
}

// By the messages that Windows makes WM_CONTEXTMENU of: not all controls leave that to it. True for those that are
// nobody else's then.
bool Child::TakesMenuMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isMouse = message == WM_RBUTTONUP;
    const bool isKey = (message == WM_KEYUP && wParam == VK_APPS) ||
                       (message == WM_SYSKEYDOWN && wParam == VK_F10 && GetKeyState(VK_SHIFT) < 0);
    if (!HasMenu() || (!isMouse && !isKey)) {
        return HasMenu() && message == WM_CONTEXTMENU;
    }
    std::optional<POINT> place = MenuPlace();
    if (place && isMouse) {
        place = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        ClientToScreen(mHandle, &*place);
    }
    if (place) {
        mParent.Later([this, at = ScreenPlace{place->x, place->y}] { Raise(mControl.onMenu, at); });
    }
    return true;
}

// The edge of a control that has the keyboard has the colour of selections. A theme may paint over more than the edge.
void Child::ShowFocus(UINT message) {
    if ((GetWindowLongW(mHandle, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) == 0) {
        return;
    }
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        mHasKeyboard = message == WM_SETFOCUS;
        RedrawWindow(mHandle, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
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
    if (self.TakesMenuMessage(message, wParam, lParam)) {
        return 0;
    }
    const LRESULT result = self.Message(message, wParam, lParam);
    self.ShowFocus(message);
    if (message == WM_SETFOCUS) {
        self.mParent.order.focus.MovedTo(self.mControl);
    } else if (message == WM_KILLFOCUS && IsChild(self.mParent.Handle(), std::bit_cast<HWND>(wParam)) == 0) {
        self.mParent.order.focus.Taken(); // else the other control tells
    }
    return result;
}

} // namespace tessaly::win32
