// The two small windows in memory. The test prepares a script of the user's actions for each.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/Raise.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/TestFailure.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tessaly::memory {

class NameWindow;
class SplashWindow;

// The user's actions in the windows that are shown: one script for each showing, in order. A script must leave its
// window hidden.
class ModalScripts {
public:
    void WillUseName(std::function<void(NameWindow&)> script) { nameWindow.push_back(std::move(script)); }
    void WillUseSplash(std::function<void(SplashWindow&)> script) { splashWindow.push_back(std::move(script)); }

    // How many prepared scripts were not run.
    std::size_t ScriptsLeft() const { return nameWindow.size() + splashWindow.size(); }

    std::deque<std::function<void(NameWindow&)>> nameWindow;
    std::deque<std::function<void(SplashWindow&)>> splashWindow;
};

// What both windows have in common.
template <class Interface, class Self>
class ModalWindow : public Interface {
public:
    using Scripts = std::deque<std::function<void(Self&)>>;

    ModalWindow(Faults& faults, Focus& ownerFocus, Scripts& scripts)
        : mFaults(faults),
          mOwnerFocus(ownerFocus),
          mScripts(scripts) {}
    ModalWindow(const ModalWindow&) = delete;
    ModalWindow& operator=(const ModalWindow&) = delete;
    ~ModalWindow() override = default;

    void ShowModal() override {
        CountCall();
        if (mScripts.empty()) {
            throw UnexpectedDialog("a modal window without a prepared script: \"" + mCaption + "\"");
        }
        const auto script = std::move(mScripts.front());
        mScripts.pop_front();
        const Block block(mOwnerFocus);
        mIsShown = true;
        try {
            script(static_cast<Self&>(*this));
        } catch (...) {
            mIsShown = false;
            throw;
        }
        if (std::exchange(mIsShown, false)) {
            throw UnexpectedDialog("a modal window that its script left open: \"" + mCaption + "\"");
        }
    }

    void Hide() override {
        CountCall();
        mIsShown = false;
    }

    bool IsShown() const { return mIsShown; }
    const std::string& ShownCaption() const { return mCaption; }

protected:
    void CountCall() const { mFaults.Count(); }

    // To be called first in everything that a user does.
    void CheckShown() const {
        if (!mIsShown) {
            throw ImpossibleAction("an action in a modal window that is not shown: \"" + mCaption + "\"");
        }
    }

    void HideByUser() { mIsShown = false; }

    std::string mCaption;

private:
    Faults& mFaults;
    Focus& mOwnerFocus;
    Scripts& mScripts;
    bool mIsShown = false;
};

class NameWindow final : public ModalWindow<tessaly::NameWindow, NameWindow> {
public:
    using ModalWindow::ModalWindow;

    void SetTexts(const NameTexts& texts) override;
    std::string FuncVarName() const override;

    // The user types into the box, at the end; line breaks are lost there. All of these throw ImpossibleAction while
    // the window is not shown.
    void Type(std::string_view text);
    void EraseAll();
    void PressOk();
    void PressCancel();
    void PressEnter() { PressOk(); }
    void PressEscape() { PressCancel(); }
    void CloseByFrame(); // Cancel, and the window is hidden whatever that does

    const std::string& NameLabel() const { return mNameLabel; }
    const std::string& CancelCaption() const { return mCancelCaption; }

private:
    std::string mNameLabel;
    std::string mText;
    std::string mCancelCaption;
};

class SplashWindow final : public ModalWindow<tessaly::SplashWindow, SplashWindow> {
public:
    using ModalWindow::ModalWindow;

    void SetLabels(const SplashLabels& shown) override;

    SplashLabels labels;

    // All of these throw ImpossibleAction while the window is not shown.
    void PressKey(int keyCode = 'A');
    void ClickFrame(); // or what is in it
    void CloseByFrame();
};

} // namespace tessaly::memory
