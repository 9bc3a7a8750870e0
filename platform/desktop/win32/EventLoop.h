// The message loop of the program and of its modal windows.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <deque>
#include <functional>
#include <string>

namespace tessaly::win32 {

class EventLoop {
public:
    // Looks at a message before it goes its way, and may change where it goes. True when that was all.
    using Filter = std::function<bool(MSG& message)>;

    // F1 was pressed in a window of the program.
    std::function<void()> onHelp;

    // No message waits any more, and all is painted. Raised once before each wait, also in a modal window's loop.
    std::function<void()> onIdle;

    // Of the main window; not asked in the loops of modal windows.
    Filter mainFilter;

    // Runs until the program ends; returns its exit code.
    int Run();

    // Runs a modal window's loop while `goesOn`. An end of the program in it ends the outer loops, too.
    void RunWhile(const std::function<bool()>& goesOn, const Filter& filter);

    // Does `action` after the present message. An event's handler may remove the very control that still handles the
    // message.
    void Later(std::function<void()> action);

    // From now on calls `onChange` between two messages when a file in `folder` has come, gone or changed; "" ends it.
    // While Windows runs a loop of its own, as in a menu, that waits. Throws std::system_error.
    void Watch(const std::string& folder, std::function<void()> onChange);

    ~EventLoop() { EndWatch(); }
    EventLoop() = default;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

private:
    void EndWatch();
    bool Wait(MSG& message);
    bool Next(MSG& message);
    void Handle(MSG& message, const Filter& filter);

    std::deque<std::function<void()>> mLater;
    HANDLE mWatched = nullptr;
    std::function<void()> mOnChange;
};

} // namespace tessaly::win32
