#include "platform/desktop/win32/EventLoop.h"

#include "platform/desktop/win32/Raise.h"

#include <utility>

namespace tessaly {

int Win32EventLoop::Run() {
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        Handle(message, mainFilter);
    }
    return static_cast<int>(message.wParam);
}

void Win32EventLoop::RunWhile(const std::function<bool()>& goesOn, const Filter& filter) {
    MSG message = {};
    while (goesOn()) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Handle(message, filter);
    }
}

bool Win32EventLoop::RunWaiting() {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            return false;
        }
        Handle(message, mainFilter);
    }
    return true;
}

void Win32EventLoop::Later(HWND window, std::function<void()> action) {
    mLater.push_back(std::move(action));
    // Where the message came from another program nothing else would wake the loop.
    PostMessageW(window, WM_NULL, 0, 0);
}

void Win32EventLoop::Handle(MSG& message, const Filter& filter) {
    if (!filter || !filter(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    DoLater();
}

void Win32EventLoop::DoLater() {
    while (!mLater.empty()) {
        const std::function<void()> action = std::move(mLater.front());
        mLater.pop_front();
        Raise(action);
    }
}

} // namespace tessaly
