// The user of a desktop in memory.
#include "tests/contract/MemoryDriver.h"

#include "platform/text/ControlPictures.h"
#include "platform/text/Utf16.h"

#include <algorithm>
#include <iterator>
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
    std::string Label() const override { return mWindow.NameLabel(); }
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
    std::vector<std::string> Labels() const override {
        const SplashLabels& labels = mWindow.labels;
        return {labels.LblVersion,   labels.LblPlatform,       labels.LblCompany,
                labels.LblCopyright, labels.LblCompanyProduct, labels.LblProductName};
    }

private:
    memory::SplashWindow& mWindow;
    memory::Application& mApplication;
};

} // namespace

MemoryDriver::MemoryDriver(const Launch& launch) {
    mDesktop.app.commandLine = launch.commandLine;
}

Extent MemoryDriver::Shown(Control& control) const {
    std::vector<std::pair<const Control*, Extent>> places;
    const auto add = [&places](const auto&... controls) { (places.emplace_back(&controls, controls.Place()), ...); };
    add(mDesktop.treeLabel, mDesktop.tree, mDesktop.paneLabel, mDesktop.pane, mDesktop.toolBar, mDesktop.status);
    const memory::PaneBar& bar = mDesktop.bar;
    add(bar.wantedLabel, bar.wanted, bar.count, bar.matchCase, bar.wholeWord, bar.previous, bar.next, bar.close,
        bar.replacementLabel, bar.replacement, bar.replaceOne, bar.replaceAll);
    return std::find_if(places.begin(), places.end(), [&control](const auto& place) { return place.first == &control; })
        ->second;
}

std::vector<std::string> MemoryDriver::NamesSuggested() {
    std::vector<std::string> rows;
    for (const SuggestedName& name : mDesktop.suggestions.Names()) {
        const bool isSelected = rows.size() == mDesktop.suggestions.SelectedName();
        rows.push_back(name.name + "|" + name.declaration + (isSelected ? "*" : ""));
    }
    return rows;
}

SeenMessages MemoryDriver::Messages() const {
    const memory::MessagesWindow& window = mDesktop.messages;
    const MessageTexts& texts = window.Texts();
    SeenMessages seen;
    seen.isVisible = window.IsVisible();
    seen.caption = texts.caption;
    seen.pages = {texts.messagesPage + (window.IsPrintedInFront() ? "" : "*"),
                  texts.printedPage + (window.IsPrintedInFront() ? "*" : "")};
    seen.heads.assign(texts.heads.begin(), texts.heads.end());
    for (const MessageRow& row : window.Rows()) {
        const bool isSelected = seen.rows.size() == window.SelectedRow();
        seen.rows.push_back(row.cells[0] + "|" + row.cells[1] + "|" + row.cells[2] + "|" + row.cells[3] +
                            (isSelected ? "*" : ""));
    }
    seen.isSelectedInView = true; // all are
    seen.printed = window.Printed();
    seen.hasKeyboard = window.HasKeyboard();
    return seen;
}

bool MemoryDriver::IsCovered(Control& control) const {
    const Extent over = mDesktop.messages.Place();
    const Extent client = mDesktop.window.ClientPlace();
    const Extent shown = Shown(control);
    const float left = client.left + shown.left;
    const float top = client.top + shown.top;
    return mDesktop.messages.IsVisible() && over.left < left + shown.width && left < over.left + over.width &&
           over.top < top + shown.height && top < over.top + over.height;
}

std::string MemoryDriver::PaneShown() const {
    std::u16string units = ToUtf16(mDesktop.pane.Shown());
    for (char16_t& unit : units) {
        unit = HasControlPicture(unit) ? ControlPicture(unit) : unit;
    }
    return ToUtf8(units);
}

void MemoryDriver::UseMenu(std::optional<std::size_t> row) {
    mMenuSeen.clear();
    memory::PopupMenu& menu = mDesktop.popup;
    if (!menu.IsOpen()) {
        return;
    }
    for (const PopupRow& each : menu.Rows()) {
        mMenuSeen.push_back(each.text.empty() ? "-" : RowShown(each.text, each.keys, each.isEnabled));
    }
    if (row) {
        menu.Choose(*row);
    } else {
        menu.Leave();
    }
}

void MemoryDriver::Click(Control& control) {
    if (auto* const button = dynamic_cast<memory::Button*>(&control)) {
        button->Press();
    } else {
        dynamic_cast<memory::TextBox&>(control).Click();
    }
}

std::string MemoryDriver::WordsOn(Control& control) const {
    if (const auto* const button = dynamic_cast<memory::Button*>(&control)) {
        return button->Caption();
    }
    if (const auto* const label = dynamic_cast<memory::Label*>(&control)) {
        return label->Caption();
    }
    return dynamic_cast<memory::TextBox&>(control).Text();
}

std::vector<std::string> MemoryDriver::MenusIn(MenuItem* menu) const {
    return menu == nullptr ? mDesktop.menus.Bar() : static_cast<memory::MenuItem*>(menu)->dropDown;
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
        seen.push_back({record.isSave, record.settings.title, record.settings.fileName, record.filters, record.pattern,
                        record.hasReadOnlyBox});
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

bool MemoryDriver::HasStarted(const std::string& commandLine, std::int32_t windowStyle) const {
    return mDesktop.app.starts == std::vector<memory::Application::Start>{{commandLine, windowStyle}};
}

} // namespace tessaly
