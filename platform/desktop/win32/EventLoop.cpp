// Postponed actions are done between two messages.
#include "platform/desktop/win32/EventLoop.h"

#include "platform/desktop/Raise.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <utility>

namespace tessaly::win32 {

int EventLoop::Run() {
    MSG message = {};
    while (Next(message)) {
        const Filter filter = mainFilter; // what is handled may put another one in its place
        Handle(message, filter);
    }
    return static_cast<int>(message.wParam);
}

void EventLoop::RunWhile(const std::function<bool()>& goesOn, const Filter& filter) {
    MSG message = {};
    while (goesOn()) {
        if (!Next(message)) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Handle(message, filter);
    }
}

// Waits for the next message. False when that is the end of the program.
bool EventLoop::Next(MSG& message) {
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        return message.message != WM_QUIT;
    }
    Raise(onIdle);
    return Wait(message);
}

// A change of a file comes as a message of nobody's. What another program sends is handled on the way and is no message
// here, so the wait goes on behind it.
bool EventLoop::Wait(MSG& message) {
    while (mWatched != nullptr) {
        const DWORD come = MsgWaitForMultipleObjectsEx(1, &mWatched, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (come == WAIT_OBJECT_0 && FindNextChangeNotification(mWatched) != 0) {
            message = {};
            Raise(mOnChange);
            return true;
        }
        if (come != WAIT_OBJECT_0 + 1) {
            EndWatch(); // the folder has gone, and would wake the loop for ever
        } else if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            return message.message != WM_QUIT;
        }
    }
    return GetMessageW(&message, nullptr, 0, 0) > 0;
}

void EventLoop::Watch(const std::string& folder, std::function<void()> onChange) {
    EndWatch();
    if (folder.empty()) {
        return;
    }
    HANDLE watched = FindFirstChangeNotificationW(WidePath(folder).c_str(), FALSE,
                                                  FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE |
                                                      FILE_NOTIFY_CHANGE_LAST_WRITE);
    if (watched == INVALID_HANDLE_VALUE) {
        ThrowLastError("FindFirstChangeNotification");
    }
    mWatched = watched;
    mOnChange = std::move(onChange);
}

void EventLoop::EndWatch() {
    if (HANDLE watched = std::exchange(mWatched, nullptr)) {
        FindCloseChangeNotification(watched);
    }
}

void EventLoop::Later(std::function<void()> action) {
    mLater.push_back(std::move(action));
    // Where the message came from another program nothing else would wake the loop.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void EventLoop::Handle(MSG& message, const Filter& filter) {
    if (!filter || !filter(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    while (!mLater.empty()) {
        const std::function<void()> action = std::move(mLater.front());
        mLater.pop_front();
        Raise(action);
    }
}

} // namespace tessaly::win32
