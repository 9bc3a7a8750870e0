// Messages of the main window are led to the controls and events that they concern.
#include "platform/desktop/win32/Window.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <exception>
#include <stdexcept>
#include <vector>

namespace tessaly::win32 {

namespace {

constexpr DWORD Style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD ExtendedStyle = WS_EX_ACCEPTFILES;

// To itself: what a menu has sent is done with, the choice of an item among it.
constexpr UINT MenuHasEnded = WM_APP;

SIZE FirstPixels(const RECT& room, int dpi) {
    const Size first = FirstSize({ToTwips(room.right - room.left, dpi), ToTwips(room.bottom - room.top, dpi)});
    return {ToPixels(first.width, dpi), ToPixels(first.height, dpi)};
}

std::vector<std::string> DroppedFiles(HDROP drop) {
    std::vector<std::string> paths;
    constexpr const wchar_t* library = L"shell32.dll";
    const auto query = LibraryFunction<decltype(&DragQueryFileW)>(library, "DragQueryFileW");
    const UINT count = query(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT number = 0; number < count; ++number) {
        std::wstring path(query(drop, number, nullptr, 0) + 1, L'\0');
        path.resize(query(drop, number, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(ToUtf8(path));
    }
    LibraryFunction<decltype(&DragFinish)>(library, "DragFinish")(drop);
    return paths;
}

} // namespace

int ShiftState() {
    const auto isDown = [](int key) { return GetKeyState(key) < 0; };
    return (isDown(VK_SHIFT) ? 1 : 0) + (isDown(VK_CONTROL) ? 2 : 0) + (isDown(VK_MENU) ? 4 : 0);
}

void NoteTakenKey(HWND window, UINT message, WPARAM key, LPARAM state) {
    if (message == WM_SYSKEYDOWN && (HIWORD(state) & KF_ALTDOWN) != 0) {
        DefWindowProcW(window, message, key, state);
    }
}

Window::Window(EventLoop& theLoop, tessaly::Application& application)
    : tessaly::Window(application),
      Parent(theLoop, controls) {
    RECT screen = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    Create(L"VornMainFrm", Style, ExtendedStyle, FirstPixels(screen, SystemDpi()), nullptr);
    PutOnScreen(screen);
    loop.mainFilter = std::bind_front(&Window::TakeKey, this);
    loop.onIdle = std::bind_front(&Window::TellIdle, this);
}

Window::~Window() {
    loop.mainFilter = nullptr;
    loop.onIdle = nullptr;
}

// As a rule it has come to `expected`, the area that its size was made for, and stands well there.
void Window::PutOnScreen(const RECT& expected) {
    RECT rect = {};
    GetWindowRect(Handle(), &rect);
    RECT seen = {};
    IntersectRect(&seen, &rect, &expected);
    if (Dpi() != SystemDpi() || EqualRect(&seen, &rect) == 0) {
        const RECT work = WorkArea(Handle());
        const SIZE size = FirstPixels(work, Dpi());
        const int left = std::clamp(rect.left, work.left, work.right - size.cx);
        const int top = std::clamp(rect.top, work.top, work.bottom - size.cy);
        SetWindowPos(Handle(), nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    SizeChanged(SIZE_RESTORED);
}

void Window::ShowFrame() {
    Raise(onShow);
    mIsShown = true;
    ShowWindow(Handle(), SW_SHOWDEFAULT);
}

void Window::SetCaption(std::string_view caption) {
    SetWindowTextW(Handle(), ToWide(caption).c_str());
}

Window::Sizes Window::CurrentSizes() const {
    const SIZE frame = FrameSize({}, Style, ExtendedStyle, true, Dpi());
    return {mSize, {mSize.width - ToTwips(frame.cx, Dpi()), mSize.height - ToTwips(frame.cy, Dpi())}};
}

void Window::LimitSize(MINMAXINFO& limits) const {
    POINT& least = limits.ptMinTrackSize;
    least = {std::max<LONG>(least.x, ToPixels(mMinimum.width, Dpi())),
             std::max<LONG>(least.y, ToPixels(mMinimum.height, Dpi()))};
}

void Window::SetIcon(const std::string& path) {
    IconOwner large = LoadIconFile(path, GetSystemMetrics(SM_CXICON) * Dpi() / SystemDpi());
    IconOwner small = LoadIconFile(path, GetSystemMetrics(SM_CXSMICON) * Dpi() / SystemDpi());
    if (!large || !small) {
        throw std::runtime_error("the icon cannot be loaded");
    }
    SendMessageW(Handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.get()));
    SendMessageW(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
    mLargeIcon = std::move(large);
    mSmallIcon = std::move(small);
}

// Every key in the window is told before the control gets it, and goes to the control that has the focus then.
bool Window::TakeKey(MSG& message) {
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    if (!isKey || (message.hwnd != Handle() && IsChild(Handle(), message.hwnd) == 0)) {
        return false;
    }
    const auto key = static_cast<int>(message.wParam);
    if (TellKey(key, ShiftState())) {
        NoteTakenKey(message.hwnd, message.message, message.wParam, message.lParam);
        return true;
    }
    HWND target = GetFocus();
    if (target != nullptr && (target == Handle() || IsChild(Handle(), target) != 0)) {
        message.hwnd = target;
    }
    const Child* const child = ChildOf(message.hwnd);
    const bool isTab = key == VK_TAB && message.message == WM_KEYDOWN && GetKeyState(VK_CONTROL) >= 0;
    if (!isTab || (child != nullptr && child->TakesTabKey())) {
        return false;
    }
    if (tessaly::Control* const next = controls.NextStop(GetKeyState(VK_SHIFT) < 0)) {
        next->TakeKeyboard();
    }
    return true;
}

LRESULT Window::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        NMHDR& header = *std::bit_cast<NMHDR*>(lParam);
        Child* const child = ChildOf(header.hwndFrom);
        return child != nullptr ? child->Notify(header) : 0;
    }
    if (message == WM_COMMAND) {
        Child* const child = lParam != 0 ? ChildOf(std::bit_cast<HWND>(lParam)) : nullptr;
        if (child != nullptr) {
            child->Command(LOWORD(wParam), HIWORD(wParam));
        } else if (lParam == 0) {
            onMenu(std::size_t{LOWORD(wParam)} - std::size_t{ControlId::FirstMenu});
        }
        return 0;
    }
    if (const std::optional<LRESULT> answer = EndMessage(message, wParam)) {
        return *answer;
    }
    return FrameMessage(message, wParam, lParam) ? 0 : DefWindowProcW(Handle(), message, wParam, lParam);
}

// What the window's end comes by, or may come after. Nothing for what Windows is to do by itself.
std::optional<LRESULT> Window::EndMessage(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_ACTIVATEAPP:
        if (wParam == FALSE) {
            Suspend();
        }
        return std::nullopt;
    case WM_QUERYENDSESSION:
        Suspend();        // the session may end whatever the answer is
        if (HasEnded()) { // a question is open, and to be answered first
            return FALSE;
        }
        Unload();
        return TRUE;
    case WM_ENDSESSION: // the process may be gone when this returns
        if (wParam != 0) {
            Suspend();
            Raise(onLastWord);
            Unload();
        }
        return 0;
    case WM_CLOSE:
        Unload();
        return 0;
    case WM_DESTROY: // where somebody else does it, nobody has asked the program yet
        Leave();
        PostQuitMessage(0);
        return 0;
    default:
        return std::nullopt;
    }
}

// False for what Windows is to do by itself.
bool Window::FrameMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SizeChanged(wParam);
        return true;
    case WM_MOVE:
        Raise(onMoved);
        return false;
    case WM_ENABLE:
        Raise(onEnabled, wParam != 0);
        return false;
    case WM_GETMINMAXINFO:
        LimitSize(*std::bit_cast<MINMAXINFO*>(lParam));
        return true;
    case WM_DPICHANGED:
        DpiChanged(HIWORD(wParam), *std::bit_cast<const RECT*>(lParam));
        return true;
    case WM_ACTIVATE: // as a rule the focus goes where it belongs at once, and not to the window first
        return LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0 && ReturnFocus();
    case WM_SETFOCUS:
        ReturnFocus();
        return true;
    case WM_ENTERMENULOOP: // Windows leaves the focus where it is
        controls.focus.Taken();
        return false;
    case WM_EXITMENULOOP: // the menu sends more before it returns
        loop.Later([this] { PostMessageW(Handle(), MenuHasEnded, 0, 0); });
        return false;
    case MenuHasEnded:
        KeyboardIsBack();
        return true;
    case WM_DROPFILES:
        Dropped(std::bit_cast<HDROP>(wParam));
        return true;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
        for (Child* const child : Children()) {
            child->ColoursChanged();
        }
        return false;
    default:
        return false;
    }
}

// A window that is being minimised keeps its size, and so does one whose resolution alone has changed.
void Window::SizeChanged(WPARAM kind) {
    if (kind == SIZE_MINIMIZED) {
        return;
    }
    RECT client = {};
    GetClientRect(Handle(), &client);
    if (EqualRect(&client, &mClient) == 0) { // the first show tells the same size again
        mClient = client;
        LayOut({ToTwips(client.right, Dpi()), ToTwips(client.bottom, Dpi())});
    }
    RECT rect = {};
    GetWindowRect(Handle(), &rect);
    const Size size = {ToTwips(rect.right - rect.left, Dpi()), ToTwips(rect.bottom - rect.top, Dpi())};
    const float onePixel = mIsRescaling ? ToTwips(2, std::min(Dpi(), SystemDpi())) : 0;
    if (std::abs(size.width - mSize.width) <= onePixel && std::abs(size.height - mSize.height) <= onePixel) {
        return;
    }
    mSize = size;
    if (mIsShown) {
        Raise(onResize);
    }
}

void Window::DpiChanged(int dpi, const RECT& suggested) {
    SetDpi(dpi);
    mIsRescaling = true;
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    mIsRescaling = false;
    LayOut({ToTwips(mClient.right, dpi), ToTwips(mClient.bottom, dpi)});
}

// The window is active again. False where no control can have the keyboard.
bool Window::ReturnFocus() {
    tessaly::Control* const control = controls.ToReturnTo();
    if (control != nullptr) {
        control->TakeKeyboard();
    }
    return control != nullptr;
}

// Unless the next menu is open already, or another window is in front.
void Window::KeyboardIsBack() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    Child* const child = ChildOf(info.hwndFocus);
    if ((info.flags & GUI_INMENUMODE) == 0 && child != nullptr) {
        controls.focus.MovedTo(child->AsControl());
    }
}

// Told when the drop is over: the program that the files come from waits until then.
void Window::Dropped(HDROP drop) {
    try {
        for (const std::string& path : DroppedFiles(drop)) {
            loop.Later([this, path] {
                if (IsWindowEnabled(Handle()) != 0) {
                    TellDrop(path);
                }
            });
        }
    } catch (const std::exception&) {
        return; // nothing throws through the frames of the system
    }
}

} // namespace tessaly::win32
