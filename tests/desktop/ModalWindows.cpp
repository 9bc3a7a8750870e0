// What a user does in the small windows.
#include "tests/desktop/ModalWindows.h"

#include "platform/desktop/Window.h"

#include <algorithm>
#include <iterator>

namespace tessaly {

Label& MemoryNameWindow::NameLabel() {
    CountCall();
    return label;
}

void MemoryNameWindow::SetCancelCaption(std::string_view caption) {
    CountCall();
    mCancelCaption = caption;
}

std::string MemoryNameWindow::FuncVarName() const {
    CountCall();
    return mText;
}

void MemoryNameWindow::Type(std::string_view text) {
    CheckShown();
    std::copy_if(text.begin(), text.end(), std::back_inserter(mText), [](char c) { return c != '\r' && c != '\n'; });
}

void MemoryNameWindow::EraseAll() {
    CheckShown();
    mText.clear();
}

void MemoryNameWindow::PressOk() {
    CheckShown();
    Raise(onOk);
}

void MemoryNameWindow::PressCancel() {
    CheckShown();
    Raise(onCancel);
}

void MemoryNameWindow::CloseByFrame() {
    CheckShown();
    Raise(onCancel);
    HideByUser();
}

void MemorySplashWindow::PressKey(int keyCode) {
    CheckShown();
    if (!IsModifierKey(keyCode)) {
        Raise(onKeyPress);
    }
}

void MemorySplashWindow::ClickFrame() {
    CheckShown();
    Raise(onFrameClick);
}

void MemorySplashWindow::CloseByFrame() {
    CheckShown();
    HideByUser();
}

Label& MemorySplashWindow::Counted(Label& label) {
    CountCall();
    return label;
}

} // namespace tessaly
