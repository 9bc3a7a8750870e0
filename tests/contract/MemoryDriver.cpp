// The user of a desktop in memory.
#include "tests/contract/MemoryDriver.h"

#include <utility>

namespace tessaly {

namespace {

class MemoryNameWindowUser final : public NameWindowUser {
public:
    MemoryNameWindowUser(memory::NameWindow& window, memory::Application& application)
        : mWindow(window),
          mApplication(application) {}

    void Type(std::string_view text) override { mWindow.Type(text); }
    void PressOk() override { mWindow.PressOk(); }
    void PressCancel() override { mWindow.PressCancel(); }
    void PressEnter() override { mWindow.PressEnter(); }
    void PressEscape() override { mWindow.PressEscape(); }
    void PressF1() override { mApplication.OpenHelp(); }
    void CloseByFrame() override { mWindow.CloseByFrame(); }
    bool IsShown() const override { return mWindow.IsShown(); }
    std::string Caption() const override { return mWindow.ShownCaption(); }
    std::string CancelCaption() const override { return mWindow.CancelCaption(); }

private:
    memory::NameWindow& mWindow;
    memory::Application& mApplication;
};

class MemorySplashWindowUser final : public SplashWindowUser {
public:
    MemorySplashWindowUser(memory::SplashWindow& window, memory::Application& application)
        : mWindow(window),
          mApplication(application) {}

    void PressKey(int keyCode) override {
        mWindow.PressKey(keyCode);
        if (keyCode == KeyF1) {
            mApplication.OpenHelp();
        }
    }
    void RepeatKey(int /*keyCode*/) override {} // nothing comes before
    void ClickFrame() override { mWindow.ClickFrame(); }
    void ClickLabel() override { mWindow.ClickFrame(); }
    void ClickFrameWithTheRightButton() override {}
    void CloseByFrame() override { mWindow.CloseByFrame(); }
    bool IsShown() const override { return mWindow.IsShown(); }
    Distance FromTheMiddleOfItsOwner() const override { return {}; } // there is no screen

private:
    memory::SplashWindow& mWindow;
    memory::Application& mApplication;
};

} // namespace

MemoryDriver::MemoryDriver(const Launch& launch) {
    mDesktop.app.commandLine = launch.commandLine;
}

// The bars stand at the edges unless they were given a place.
Extent MemoryDriver::Shown(Control& control) const {
    const memory::Window& window = mDesktop.window;
    const float width = window.ClientWidth();
    const float height = window.ClientHeight();
    const float toolBar = mDesktop.toolBar.PreferredHeight();
    const float status = mDesktop.status.PreferredHeight();
    const Extent extent = control.GetExtent();
    if (&control == &mDesktop.toolBar && extent == Extent{}) {
        return {0, 0, width, toolBar};
    }
    if (&control == &mDesktop.status && extent == Extent{}) {
        return {0, height - status, width, status};
    }
    return ShownAbove(height - window.Footer(), extent);
}

std::vector<std::string> MemoryDriver::MenuNames(MenuItem* menu) const {
    return menu == nullptr ? mDesktop.menus.Bar() : static_cast<memory::MenuItem*>(menu)->DropDown();
}

void MemoryDriver::WillUseName(std::function<void(NameWindowUser&)> script) {
    mDesktop.modal.WillUseName([this, script = std::move(script)](memory::NameWindow& window) {
        MemoryNameWindowUser windowUser(window, mDesktop.app);
        script(windowUser);
    });
}

void MemoryDriver::WillUseSplash(std::function<void(SplashWindowUser&)> script) {
    mDesktop.modal.WillUseSplash([this, script = std::move(script)](memory::SplashWindow& window) {
        MemorySplashWindowUser windowUser(window, mDesktop.app);
        script(windowUser);
    });
}

std::vector<SeenMessageBox> MemoryDriver::MessageBoxes() const {
    std::vector<SeenMessageBox> seen;
    for (const memory::MsgBox::Record& record : mDesktop.msgBox.records) {
        seen.push_back({record.text, record.caption, record.buttons, record.icon});
    }
    return seen;
}

std::vector<SeenFileDialog> MemoryDriver::FileDialogs() const {
    std::vector<SeenFileDialog> seen;
    for (const memory::FileDialog::Record& record : mDesktop.fileDialog.records) {
        seen.push_back({record.kind == memory::FileDialog::Kind::Save, record.settings.title, record.settings.fileName,
                        record.filters, record.pattern, record.hasReadOnlyBox});
    }
    return seen;
}

std::string MemoryDriver::PicturePath() {
    mDesktop.files.contents["folder/icon"] = "a picture";
    return "folder/icon";
}

std::string MemoryDriver::UnstartableCommand() {
    mDesktop.app.startsFail = true;
    return "no-program";
}

std::vector<SeenProcessStart> MemoryDriver::Starts() const {
    std::vector<SeenProcessStart> seen;
    for (const memory::Application::Start& start : mDesktop.app.starts) {
        seen.push_back({start.commandLine, start.windowStyle});
    }
    return seen;
}

} // namespace tessaly
