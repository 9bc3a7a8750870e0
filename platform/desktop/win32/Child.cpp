// A control's own window procedure is replaced. The user data of windows and controls leads to the object.
#include "platform/desktop/win32/Child.h"

#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <string>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr UINT DrawAgainMessage = WM_APP;

} // namespace

// What is told of the end is nobody's any more.
Parent::~Parent() {
    if (mHandle != nullptr) {
        SetWindowLongPtrW(mHandle, GWLP_USERDATA, 0);
        DestroyWindow(mHandle);
    }
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
    DrawAgain(); // a hidden one would stay on the screen where it stood
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
        mParent.loop.Later([this, at = ScreenPlace{place->x, place->y}] { Raise(mControl.onMenu, at); });
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
        DrawAgain();
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
    if (message == DrawAgainMessage) {
        self.DrawAgain();
        return 0;
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

// The window is as if it were hidden. The message comes in the loops of message boxes, too.
void Child::HoldDrawing() {
    if (std::exchange(mIsHeld, true)) {
        return;
    }
    PostMessageW(mHandle, DrawAgainMessage, 0, 0);
    if ((GetWindowLongW(mHandle, GWL_STYLE) & WS_VISIBLE) == 0) {
        return;
    }
    RedrawWindow(mHandle, nullptr, nullptr, RDW_ERASENOW | RDW_NOCHILDREN); // the edge, where it is due
    mDrawnBars = ScrollBars();
    DefWindowProcW(mHandle, WM_SETREDRAW, FALSE, 0);
}

// Some systems would draw all of the edge because the style was changed.
void Child::DrawAgain() {
    mIsHeld = false;
    const std::optional<Bars> drawn = std::exchange(mDrawnBars, std::nullopt);
    if (!drawn) {
        return;
    }
    DefWindowProcW(mHandle, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(mHandle, nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE | RDW_NOFRAME | RDW_NOCHILDREN);
    InvalidateRect(mHandle, nullptr, TRUE);
    const Bars bars = ScrollBars();
    for (const bool isUpright : {false, true}) {
        const SCROLLBARINFO& before = drawn->at(isUpright ? 1 : 0);
        const SCROLLBARINFO& now = bars.at(isUpright ? 1 : 0);
        if (EqualRect(&before.rcScrollBar, &now.rcScrollBar) == 0 ||
            !std::equal(std::begin(before.rgstate), std::end(before.rgstate), std::begin(now.rgstate))) {
            RedrawWindow(mHandle, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
        } else if (before.xyThumbTop != now.xyThumbTop || before.xyThumbBottom != now.xyThumbBottom) {
            DrawThumb(before, isUpright);
            DrawThumb(now, isUpright);
        }
    }
}

// The thumb alone: all of a bar takes some systems longer than all items in view.
void Child::DrawThumb(const SCROLLBARINFO& bar, bool isUpright) const {
    constexpr int around = 2; // in pixels
    RECT place = bar.rcScrollBar;
    (isUpright ? place.bottom : place.right) = (isUpright ? place.top : place.left) + bar.xyThumbBottom + around;
    (isUpright ? place.top : place.left) += bar.xyThumbTop - around;
    MapWindowPoints(nullptr, mHandle, reinterpret_cast<POINT*>(&place), 2);
    RedrawWindow(mHandle, &place, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

Child::Bars Child::ScrollBars() const {
    Bars bars = {};
    for (const std::size_t bar : {0U, 1U}) {
        bars.at(bar).cbSize = sizeof(SCROLLBARINFO);
        GetScrollBarInfo(mHandle, bar == 0 ? OBJID_HSCROLL : OBJID_VSCROLL, &bars.at(bar));
    }
    return bars;
}

// An ampersand in it is one: a label has no access key here.
Label::Label(Parent& parent, int id) : Control(parent, {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0, id}) {}

void Label::SetCaption(std::string_view caption) {
    for (HWND named : {Handle(), mNamed}) {
        if (named != nullptr) {
            SetWindowTextW(named, ToWide(caption).c_str());
        }
    }
}

Size Label::PreferredSize() const {
    return {0, ToTwips(MeasureFont(ParentWindow().Font()).tmHeight, ParentWindow().Dpi())};
}

} // namespace tessaly::win32
