// The window counts as closed before onUnload is raised, so that closing it again in there raises nothing.
#include "platform/desktop/Window.h"

#include "platform/desktop/Raise.h"

#include <utility>

namespace tessaly {

void Window::Show() {
    if (!std::exchange(mIsLoaded, true)) {
        Raise(onLoad);
    }
    if (!mIsClosed) {
        ShowFrame();
    }
}

void Window::Unload() {
    if (Leave()) {
        CloseFrame();
    }
}

bool Window::Leave() {
    if (std::exchange(mIsClosed, true)) {
        return false;
    }
    controls.focus.End();
    Raise(onUnload);
    mIsUnloaded = true;
    return true;
}

void Window::Suspend() {
    if (!mIsUnloaded) {
        Raise(onSuspend);
    }
}

void Window::TellIdle() {
    if (!mIsClosed) {
        Raise(onIdle);
    }
}

void Window::SetFooter(float height) {
    mFooter = height;
    controls.LayOut(mClient, mFooter + mRoom);
}

void Window::MakeRoom(float height) {
    if (height != mRoom) {
        mRoom = height;
        controls.LayOut(mClient, mFooter + mRoom);
    }
}

void Window::LayOut(const Size& client) {
    mClient = client;
    controls.LayOut(client, mFooter + mRoom);
    Raise(onMoved);
}

bool Window::TellKey(int keyCode, int shift) {
    bool isOwn = false;
    if (!mIsClosed) {
        const FocusEvents::Command command(controls.focus, FocusEvents::Keyboard::Stays);
        Raise(onKeyDown, keyCode, shift);
        isOwn = !mIsClosed && Raise(onOwnKey, keyCode, shift);
    }
    if (keyCode == KeyF1 && !mIsClosed) {
        mApplication.OpenHelp();
    }
    return isOwn || mIsClosed;
}

void Window::TellDrop(const std::string& path) {
    const FocusEvents::Command command(controls.focus, FocusEvents::Keyboard::IsTaken);
    Raise(onFileDropped, path);
}

} // namespace tessaly
