// The two small windows in memory. What the user does while one is shown is a script that the test prepares.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/Label.h"
#include "tests/desktop/TestFailure.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tessaly {

class MemoryNameWindow;
class MemorySplashWindow;

// What the user does with the windows that are shown: one script for each showing, in order. A script must leave its
// window hidden.
class MemoryModalScripts {
public:
    void WillUseName(std::function<void(MemoryNameWindow&)> script) { nameWindow.push_back(std::move(script)); }
    void WillUseSplash(std::function<void(MemorySplashWindow&)> script) { splashWindow.push_back(std::move(script)); }

    // How many prepared scripts were not run.
    std::size_t ScriptsLeft() const { return nameWindow.size() + splashWindow.size(); }

    std::deque<std::function<void(MemoryNameWindow&)>> nameWindow;
    std::deque<std::function<void(MemorySplashWindow&)>> splashWindow;
};

// What both windows have in common.
template <class Interface, class Self>
class MemoryModalWindow : public Interface {
public:
    using Scripts = std::deque<std::function<void(Self&)>>;

    MemoryModalWindow(MemoryFaults& faults, MemoryFocus& ownerFocus, Scripts& scripts)
        : mFaults(faults),
          mOwnerFocus(ownerFocus),
          mScripts(scripts) {}
    MemoryModalWindow(const MemoryModalWindow&) = delete;
    MemoryModalWindow& operator=(const MemoryModalWindow&) = delete;
    ~MemoryModalWindow() override = default;

    void SetCaption(std::string_view caption) override {
        CountCall();
        mCaption = caption;
    }

    void ShowModal() override {
        CountCall();
        if (mScripts.empty()) {
            throw UnexpectedDialog("a modal window without a prepared script: \"" + mCaption + "\"");
        }
        const auto script = std::move(mScripts.front());
        mScripts.pop_front();
        const MemoryBlock block(mOwnerFocus);
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

    MemoryFaults& Faults() { return mFaults; }
    MemoryFocus& OwnFocus() { return mFocus; }

    static void Raise(const std::function<void()>& event) {
        if (event) {
            event();
        }
    }

private:
    MemoryFaults& mFaults;
    MemoryFocus& mOwnerFocus;
    Scripts& mScripts;
    MemoryFocus mFocus;
    std::string mCaption = "as it was designed";
    bool mIsShown = false;
};

class MemoryNameWindow final : public MemoryModalWindow<NameWindow, MemoryNameWindow> {
public:
    using MemoryModalWindow::MemoryModalWindow;

    Label& NameLabel() override;
    void SetCancelCaption(std::string_view caption) override;
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

    const std::string& CancelCaption() const { return mCancelCaption; }

    MemoryLabel label{Faults(), OwnFocus()};

private:
    std::string mText;
    std::string mCancelCaption;
};

class MemorySplashWindow final : public MemoryModalWindow<SplashWindow, MemorySplashWindow> {
public:
    using MemoryModalWindow::MemoryModalWindow;

    Label& LblVersion() override { return Counted(version); }
    Label& LblPlatform() override { return Counted(platform); }
    Label& LblCompany() override { return Counted(company); }
    Label& LblCopyright() override { return Counted(copyright); }
    Label& LblCompanyProduct() override { return Counted(companyProduct); }
    Label& LblProductName() override { return Counted(productName); }

    // All of these throw ImpossibleAction while the window is not shown.
    void PressKey(int keyCode = 'A');
    void ClickFrame(); // or what is in it
    void CloseByFrame();

    MemoryLabel version{Faults(), OwnFocus()};
    MemoryLabel platform{Faults(), OwnFocus()};
    MemoryLabel company{Faults(), OwnFocus()};
    MemoryLabel copyright{Faults(), OwnFocus()};
    MemoryLabel companyProduct{Faults(), OwnFocus()};
    MemoryLabel productName{Faults(), OwnFocus()};

private:
    Label& Counted(Label& label);
};

} // namespace tessaly
