// The main window in memory.
#include "tests/desktop/Window.h"

#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tessaly::memory {

namespace {

// Around the client area: the frame, the caption and the menus.
constexpr float FrameWidth = 120;
constexpr float FrameHeight = 810;

} // namespace

void Window::Show() {
    mFaults.Count();
    if (!std::exchange(mIsLoaded, true) && onLoad) {
        onLoad();
    }
    mIsShown = true;
    if (mFocus.Owner() == nullptr) {
        mFocus.MoveToFirst();
    }
}

void Window::Unload() {
    mFaults.Count();
    Close();
}

std::string Window::Caption() const {
    mFaults.Count();
    return mCaption;
}

void Window::SetCaption(std::string_view caption) {
    mFaults.Count();
    mCaption = caption;
}

float Window::Width() const {
    mFaults.Count();
    return mWidth;
}

float Window::Height() const {
    mFaults.Count();
    return mHeight;
}

float Window::ClientWidth() const {
    mFaults.Count();
    return mWidth - FrameWidth;
}

float Window::ClientHeight() const {
    mFaults.Count();
    return mHeight - FrameHeight;
}

void Window::SetMinimumSize(float width, float height) {
    mFaults.Count();
    mMinimumWidth = width;
    mMinimumHeight = height;
}

void Window::SetFooter(float height) {
    mFaults.Count();
    mFooter = height;
}

void Window::SetIcon(const std::string& path) {
    mFaults.Count();
    const auto file = mFiles.contents.find(path);
    if (file == mFiles.contents.end() || file->second.empty()) {
        throw std::runtime_error("the icon cannot be loaded");
    }
    mIcon = path;
}

void Window::PressKey(int keyCode, int shift) {
    CheckUsable("a key in the window");
    {
        const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::Stays);
        if (onKeyDown) {
            onKeyDown(keyCode, shift);
        }
    }
    if (keyCode == KeyF1) {
        mApplication.OpenHelp();
    }
    FocusTarget* const owner = mFocus.Owner();
    const bool isTaken = !mIsClosed && owner != nullptr && owner->TakeKey(keyCode, shift);
    if (!mIsClosed && !isTaken && keyCode == KeyTab) {
        mFocus.MoveToNextStop();
    }
}

void Window::DeliverSentKeys() {
    while (mApplication.f1Waiting > 0) {
        --mApplication.f1Waiting;
        PressKey(KeyF1);
    }
}

void Window::Resize(float width, float height) {
    CheckUsable("a change of the window's size");
    width = std::max(width, mMinimumWidth);
    height = std::max(height, mMinimumHeight);
    const bool isChanged = width != mWidth || height != mHeight;
    mWidth = width;
    mHeight = height;
    if (isChanged && onResize) {
        onResize();
    }
}

void Window::CloseByUser() {
    CheckUsable("the closing of the window");
    Close();
}

void Window::DropFile(const std::string& path) {
    CheckUsable("a file dropped on the window");
    const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::IsTaken);
    if (onFileDropped) {
        onFileDropped(path);
    }
}

void Window::SetInitialSize(float width, float height) {
    mWidth = width;
    mHeight = height;
}

void Window::CheckUsable(std::string_view action) const {
    mFocus.CheckReachable(action);
    if (!IsShown()) {
        throw ImpossibleAction(std::string(action) + ", which is not shown");
    }
}

// The window is gone before the event, so that closing it again in there raises nothing.
void Window::Close() {
    if (std::exchange(mIsClosed, true)) {
        return;
    }
    mFocus.events.End();
    if (onUnload) {
        onUnload();
    }
}

} // namespace tessaly::memory
