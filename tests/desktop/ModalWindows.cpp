// What a user does in the small windows.
#include "tests/desktop/ModalWindows.h"

#include "platform/desktop/Window.h"

#include <algorithm>
#include <iterator>

namespace tessaly::memory {

void NameWindow::SetTexts(const NameTexts& texts) {
    CountCall();
    mCaption = texts.caption;
    mNameLabel = texts.label;
    mCancelCaption = texts.cancel;
}

std::string NameWindow::FuncVarName() const {
    CountCall();
    return mText;
}

void NameWindow::Type(std::string_view text) {
    CheckShown();
    std::copy_if(text.begin(), text.end(), std::back_inserter(mText), [](char c) { return c != '\r' && c != '\n'; });
}

void NameWindow::EraseAll() {
    CheckShown();
    mText.clear();
}

void NameWindow::PressOk() {
    CheckShown();
    Raise(onOk);
}

void NameWindow::PressCancel() {
    CheckShown();
    Raise(onCancel);
}

void NameWindow::CloseByFrame() {
    CheckShown();
    Raise(onCancel);
    HideByUser();
}

void SplashWindow::PressKey(int keyCode) {
    CheckShown();
    if (!IsModifierKey(keyCode)) {
        Raise(onKeyPress);
    }
}

void SplashWindow::ClickFrame() {
    CheckShown();
    Raise(onFrameClick);
}

void SplashWindow::CloseByFrame() {
    CheckShown();
    HideByUser();
}

void SplashWindow::SetLabels(const SplashLabels& shown) {
    CountCall();
    labels = shown;
}

} // namespace tessaly::memory
