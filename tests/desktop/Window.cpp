// The main window in memory.
#include "tests/desktop/Window.h"

#include "platform/desktop/Raise.h"
#include "tests/desktop/Control.h"
#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly::memory {

namespace {

// Around the client area: the frame, the caption and the menus.
constexpr float FrameWidth = 120;
constexpr float FrameHeight = 810;

} // namespace

Window::Window(Faults& faults, Application& application, const SequentialFiles& files)
    : tessaly::Window(application),
      mFaults(faults),
      mMemoryApplication(application),
      mFiles(files) {
    SetSize({9600, 7200});
}

void Window::ShowFrame() {
    SetSize(mSize); // for the controls that have come
    mIsShown = true;
    if (tessaly::Control* const first = controls.ToReturnTo(); first != nullptr && controls.Owner() == nullptr) {
        controls.focus.MovedTo(*first);
    }
}

void Window::SetCaption(std::string_view caption) {
    mFaults.Count();
    mCaption = caption;
}

Window::Sizes Window::CurrentSizes() const {
    mFaults.Count();
    return {mSize, {mSize.width - FrameWidth, mSize.height - FrameHeight}};
}

void Window::SetMinimumSize(float width, float height) {
    mFaults.Count();
    mMinimum = {width, height};
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
    focus.LeaveMessages(); // it is there that the user presses it
    if (TellKey(keyCode, shift)) {
        return;
    }
    auto* const target = dynamic_cast<KeyTarget*>(controls.Owner());
    const bool isTaken = target != nullptr && target->TakeKey(keyCode, shift);
    tessaly::Control* const next = controls.NextStop(false);
    if (!isTaken && keyCode == KeyTab && !HasEnded() && next != nullptr) {
        controls.focus.MovedTo(*next);
    }
}

void Window::DeliverSentKeys() {
    while (mMemoryApplication.f1Waiting > 0) {
        --mMemoryApplication.f1Waiting;
        PressKey(KeyF1);
    }
}

Extent Window::ClientPlace() const {
    return {FrameWidth / 2, FrameHeight - FrameWidth / 2, mSize.width - FrameWidth, mSize.height - FrameHeight};
}

void Window::Resize(float width, float height) {
    CheckUsable("a change of the window's size");
    const Size size = {std::max(width, mMinimum.width), std::max(height, mMinimum.height)};
    if (size != mSize) {
        SetSize(size);
        Raise(onResize);
    }
}

void Window::CloseByUser() {
    CheckUsable("the closing of the window");
    Unload();
}

void Window::DropFile(const std::string& path) {
    CheckUsable("a file dropped on the window");
    TellDrop(path);
}

void Window::SetInitialSize(float width, float height) {
    SetSize({width, height});
}

void Window::CheckUsable(std::string_view action) const {
    focus.CheckReachable(action);
    if (!IsShown()) {
        throw ImpossibleAction(std::string(action) + ", which is not shown");
    }
}

void Window::SetSize(const Size& size) {
    mSize = size;
    LayOut({mSize.width - FrameWidth, mSize.height - FrameHeight});
}

} // namespace tessaly::memory
