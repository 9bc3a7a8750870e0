#include "platform/desktop/win32/Window.h"

#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Picture.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/desktop/win32/WindowClass.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

namespace tessaly::win32 {

namespace {

constexpr const wchar_t* ClassName = L"VornMainFrm";

constexpr DWORD Style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD ExtendedStyle = WS_EX_ACCEPTFILES;

// To itself: what a menu has sent is done with, the choice of an item among it.
constexpr UINT MenuHasEnded = WM_APP;

SIZE FirstSize(const RECT& room, int dpi) {
    const Extent first =
        FirstExtent({0, 0, ToTwips(room.right - room.left, dpi), ToTwips(room.bottom - room.top, dpi)});
    return {ToPixels(first.width, dpi), ToPixels(first.height, dpi)};
}

int ShiftState() {
    const auto isDown = [](int key) { return GetKeyState(key) < 0; };
    return (isDown(VK_SHIFT) ? 1 : 0) + (isDown(VK_CONTROL) ? 2 : 0) + (isDown(VK_MENU) ? 4 : 0);
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

Window::Window(EventLoop& loop) : mLoop(loop) {
    RegisterWindowClass(ClassName, Procedure);
    RECT screen = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    const SIZE size = FirstSize(screen, SystemDpi());
    // The procedure finds this object from the first message on.
    CreateWindowExW(ExtendedStyle, ClassName, L"", Style, CW_USEDEFAULT, CW_USEDEFAULT, size.cx, size.cy, nullptr,
                    nullptr, GetModuleHandleW(nullptr), this);
    if (mHandle == nullptr) {
        ThrowLastError("CreateWindowEx");
    }
    mDpi = WindowDpi(mHandle);
    mFont = MakeMessageFont(mDpi);
    PutOnScreen(screen);
    mLoop.mainFilter = [this](MSG& message) { return TakeKey(message); };
}

Window::~Window() {
    mIsClosed = true;
    mLoop.mainFilter = nullptr;
    if (mHandle != nullptr) {
        DestroyWindow(mHandle);
    }
}

// As a rule it has come to `expected`, the area that its size was made for, and stands well there.
void Window::PutOnScreen(const RECT& expected) {
    RECT rect = {};
    GetWindowRect(mHandle, &rect);
    RECT seen = {};
    IntersectRect(&seen, &rect, &expected);
    if (mDpi != SystemDpi() || EqualRect(&seen, &rect) == 0) {
        MONITORINFO monitor = {};
        monitor.cbSize = sizeof monitor;
        GetMonitorInfoW(MonitorFromWindow(mHandle, MONITOR_DEFAULTTONEAREST), &monitor);
        const SIZE size = FirstSize(monitor.rcWork, mDpi);
        const int left = std::clamp(rect.left, monitor.rcWork.left, monitor.rcWork.right - size.cx);
        const int top = std::clamp(rect.top, monitor.rcWork.top, monitor.rcWork.bottom - size.cy);
        SetWindowPos(mHandle, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    SizeChanged(SIZE_RESTORED);
}

void Window::Show() {
    if (!std::exchange(mIsLoaded, true)) {
        Raise(onLoad);
    }
    if (mIsClosed) {
        return;
    }
    Raise(onShow);
    mIsShown = true;
    ShowWindow(mHandle, SW_SHOWDEFAULT);
}

void Window::Unload() {
    Close();
}

void Window::SetCaption(std::string_view caption) {
    mCaption = caption;
    SetWindowTextW(mHandle, ToWide(caption).c_str());
}

float Window::ClientWidth() const {
    return mWidth - ToTwips(FrameSize({}, Style, ExtendedStyle, true, mDpi).cx, mDpi);
}

float Window::ClientHeight() const {
    return mHeight - ToTwips(FrameSize({}, Style, ExtendedStyle, true, mDpi).cy, mDpi);
}

void Window::SetMinimumSize(float width, float height) {
    mMinimumWidth = width;
    mMinimumHeight = height;
}

void Window::SetFooter(float height) {
    mFooter = height;
    LayOut();
}

void Window::LayOut() {
    Raise(onLayOut);
    for (win32::Child* const child : mChildren) {
        child->Move();
    }
}

void Window::LimitSize(MINMAXINFO& limits) const {
    POINT& least = limits.ptMinTrackSize;
    least = {std::max<LONG>(least.x, ToPixels(mMinimumWidth, mDpi)),
             std::max<LONG>(least.y, ToPixels(mMinimumHeight, mDpi))};
}

void Window::SetIcon(const std::string& path) {
    IconOwner large = LoadIconFile(path, GetSystemMetrics(SM_CXICON) * mDpi / SystemDpi());
    IconOwner small = LoadIconFile(path, GetSystemMetrics(SM_CXSMICON) * mDpi / SystemDpi());
    if (!large || !small) {
        throw std::runtime_error("the icon cannot be loaded");
    }
    SendMessageW(mHandle, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.get()));
    SendMessageW(mHandle, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
    mLargeIcon = std::move(large);
    mSmallIcon = std::move(small);
}

void Window::Add(win32::Child& child) {
    mChildren.push_back(&child);
    mFocus.Add(child);
}

void Window::Remove(win32::Child& child) {
    std::erase(mChildren, &child);
    mFocus.Remove(child);
}

win32::Child* Window::Child(HWND window) const {
    const auto found = std::find_if(mChildren.begin(), mChildren.end(),
                                    [window](const win32::Child* child) { return child->Handle() == window; });
    return found != mChildren.end() ? *found : nullptr;
}

// Every key in the window is told before the control gets it, and goes to the control that has the focus then.
bool Window::TakeKey(MSG& message) {
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    if (!isKey || (message.hwnd != mHandle && IsChild(mHandle, message.hwnd) == 0)) {
        return false;
    }
    const auto key = static_cast<int>(message.wParam);
    {
        const FocusEvents::Command command(focus, FocusEvents::Keyboard::Stays);
        Raise(onKeyDown, key, ShiftState());
    }
    if (mIsClosed) {
        return true;
    }
    if (key == VK_F1) {
        Raise(mLoop.onHelp);
    }
    HWND target = GetFocus();
    if (target != nullptr && (target == mHandle || IsChild(mHandle, target) != 0)) {
        message.hwnd = target;
    }
    const win32::Child* const child = Child(message.hwnd);
    const bool isTab = key == VK_TAB && message.message == WM_KEYDOWN && GetKeyState(VK_CONTROL) >= 0;
    if (!isTab || (child != nullptr && child->TakesTabKey())) {
        return false;
    }
    mFocus.MoveToNextStop(GetKeyState(VK_SHIFT) < 0);
    return true;
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto* const create = std::bit_cast<const CREATESTRUCTW*>(lParam);
        static_cast<Window*>(create->lpCreateParams)->mHandle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const self = std::bit_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
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

LRESULT Window::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        NMHDR& header = *std::bit_cast<NMHDR*>(lParam);
        win32::Child* const child = Child(header.hwndFrom);
        return child != nullptr ? child->Notify(header) : 0;
    }
    if (message == WM_COMMAND) {
        win32::Child* const child = lParam != 0 ? Child(std::bit_cast<HWND>(lParam)) : nullptr;
        if (child != nullptr) {
            child->Command(LOWORD(wParam), HIWORD(wParam));
        } else if (lParam == 0) {
            const FocusEvents::Command command(focus, FocusEvents::Keyboard::IsTaken);
            Raise(onMenu, static_cast<int>(LOWORD(wParam)));
        }
        return 0;
    }
    if (message == WM_QUERYENDSESSION) {
        if (mIsClosed) { // a question is open, and to be answered first
            return FALSE;
        }
        Close();
        return TRUE;
    }
    return FrameMessage(message, wParam, lParam) ? 0 : DefWindowProcW(mHandle, message, wParam, lParam);
}

// False for what Windows is to do by itself.
bool Window::FrameMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SizeChanged(wParam);
        return true;
    case WM_GETMINMAXINFO:
        LimitSize(*std::bit_cast<MINMAXINFO*>(lParam));
        return true;
    case WM_DPICHANGED:
        DpiChanged(HIWORD(wParam), *std::bit_cast<const RECT*>(lParam));
        return true;
    case WM_ACTIVATE: // as a rule the focus goes where it belongs at once, and not to the window first
        return LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0 && mFocus.Return();
    case WM_SETFOCUS:
        mFocus.Return();
        return true;
    case WM_ENTERMENULOOP: // Windows leaves the focus where it is
        focus.Taken();
        return false;
    case WM_EXITMENULOOP: // the menu sends more before it returns
        Later([this] { PostMessageW(mHandle, MenuHasEnded, 0, 0); });
        return false;
    case MenuHasEnded:
        KeyboardIsBack();
        return true;
    case WM_DROPFILES:
        Raise(std::function<void()>([this, wParam] { Dropped(std::bit_cast<HDROP>(wParam)); }));
        return true;
    case WM_ENDSESSION: // the process may be gone when this returns
        if (wParam != 0) {
            Raise(onLastWord);
            Close();
        }
        return true;
    case WM_CLOSE:
        Close();
        return true;
    case WM_DESTROY: // where somebody else does it, nobody has asked the program yet
        Leave();
        PostQuitMessage(0);
        return true;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
        ColoursChanged();
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
    GetClientRect(mHandle, &client);
    if (EqualRect(&client, &mClient) == 0) { // the first show tells the same size again
        mClient = client;
        LayOut();
    }
    RECT rect = {};
    GetWindowRect(mHandle, &rect);
    const float width = ToTwips(rect.right - rect.left, mDpi);
    const float height = ToTwips(rect.bottom - rect.top, mDpi);
    const float onePixel = mIsRescaling ? ToTwips(2, std::min(mDpi, SystemDpi())) : 0;
    if (std::abs(width - mWidth) <= onePixel && std::abs(height - mHeight) <= onePixel) {
        return;
    }
    mWidth = width;
    mHeight = height;
    if (mIsShown) {
        Raise(onResize);
    }
}

void Window::DpiChanged(int dpi, const RECT& suggested) {
    mDpi = dpi;
    FontOwner font = MakeMessageFont(dpi);
    std::swap(mFont, font); // the controls use the old one until they are told
    for (win32::Child* const child : mChildren) {
        child->Rescale();
    }
    mIsRescaling = true;
    SetWindowPos(mHandle, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    mIsRescaling = false;
    LayOut();
}

void Window::ColoursChanged() {
    for (win32::Child* const child : mChildren) {
        child->ColoursChanged();
    }
}

// Unless the next menu is open already, or another window is in front.
void Window::KeyboardIsBack() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    win32::Child* const child = Child(info.hwndFocus);
    if ((info.flags & GUI_INMENUMODE) == 0 && child != nullptr) {
        focus.MovedTo(*child);
    }
}

// Told when the drop is over: the program that the files come from waits until then.
void Window::Dropped(HDROP drop) {
    for (const std::string& path : DroppedFiles(drop)) {
        Later([this, path] {
            if (IsWindowEnabled(mHandle) != 0) {
                const FocusEvents::Command command(focus, FocusEvents::Keyboard::IsTaken);
                Raise(onFileDropped, path);
            }
        });
    }
}

void Window::Close() {
    if (!mIsClosed) {
        Leave();
        DestroyWindow(mHandle);
    }
}

// The window is closed before the event, so that closing it again in there raises nothing.
void Window::Leave() {
    if (!std::exchange(mIsClosed, true)) {
        focus.End();
        Raise(onUnload);
    }
}

} // namespace tessaly::win32
