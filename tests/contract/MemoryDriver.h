// The user of a desktop in memory.
#pragma once

#include "tests/contract/DesktopDriver.h"
#include "tests/desktop/Desktop.h"

#include <optional>

namespace tessaly {

class MemoryDriver final : public DesktopDriver {
public:
    explicit MemoryDriver(const Launch& launch);

    Desktop& TheDesktop() override { return mDesktop; }
    PrivateFiles& OwnFiles() override { return mDesktop.own; }
    void Settle() override {
        mDesktop.window.DeliverSentKeys();
        mDesktop.app.DeliverChanges();
        mDesktop.window.BeIdle();
    }

    void PressKey(int keyCode, int shift) override { mDesktop.window.PressKey(keyCode, shift); }
    void Resize(float width, float height) override { mDesktop.window.Resize(width, height); }
    void CloseByUser() override { mDesktop.window.CloseByUser(); }
    void DestroyFromOutside() override { mDesktop.window.DestroyFromOutside(); }
    void EndSession(bool mayAsk) override {
        if (!mayAsk) {
            mDesktop.msgBox.AskNoMore();
        }
        mDesktop.window.DestroyFromOutside();
    }
    void GoToAnotherWindow() override { mOtherWindow.emplace(mDesktop.focus); }
    void ComeBack() override { mOtherWindow.reset(); }
    void GoToAnotherProgram() override { mDesktop.window.GoToAnotherProgram(); }
    void DropFile(const std::string& path) override { mDesktop.window.DropFile(path); }
    bool IsShown() const override { return mDesktop.window.IsShown(); }
    bool HasEnded() const override { return mDesktop.window.HasEnded(); }
    bool TakesInput() const override { return !mDesktop.focus.IsBlocked(); }
    std::string Caption() const override { return mDesktop.window.Caption(); }
    std::string Icon() const override { return mDesktop.window.Icon(); }

    Extent Shown(Control& control) const override;
    std::string LabelText(Label& label) const override { return static_cast<memory::Label&>(label).Caption(); }

    void ClickItem(TreeItem item) override { mDesktop.tree.Click(item); }
    void MoveSelectionDown() override { mDesktop.tree.MoveDown(); }
    void CollapseItem(TreeItem item) override { mDesktop.tree.Collapse(item); }
    bool IsExpanded(TreeItem item) const override { return mDesktop.tree.IsExpanded(item); }
    std::vector<std::string> TreeShown() const override { return mDesktop.tree.AllShown(); }

    std::string MarkShown(TreeItem item) override {
        return LookShown(mDesktop.tree.MarkOf(item), mDesktop.tree.IsItalic(item), mDesktop.tree.DescriptionOf(item));
    }

    void ClickPane() override {
        mDesktop.suggestions.ClickElsewhere();
        mDesktop.pane.Click();
    }
    void SetCaret(std::size_t position) override { mDesktop.pane.SetCaret(position); }
    void SelectAll() override { mDesktop.pane.SelectAll(); }
    void Type(std::string_view text) override {
        if (mDesktop.tree.HasFocus()) {
            mDesktop.tree.Type(text);
        } else if (!mDesktop.bar.wanted.Type(text) && !mDesktop.bar.replacement.Type(text)) {
            mDesktop.pane.Type(text);
        }
    }
    void PressEnter() override { mDesktop.pane.PressEnter(); }
    void Backspace() override { mDesktop.pane.Backspace(); }
    void Paste(std::string_view text) override { mDesktop.pane.Paste(text); }
    void Undo() override { mDesktop.window.PressKey('Z', 2); }
    std::string PaneShown() const override;
    std::vector<std::string> MarginShown() override { return mDesktop.pane.MarginShown(); }
    std::vector<std::string> Underlined() override { return mDesktop.pane.Underlined(); }
    void ClickMargin() override { mDesktop.pane.Click(); }
    void UseMenuOfItem(TreeItem item, std::optional<std::size_t> row) override {
        mDesktop.tree.RightClick(item);
        UseMenu(row);
    }
    void UseMenuOfPane(std::size_t position, std::optional<std::size_t> row) override {
        mDesktop.pane.RightClick(position);
        UseMenu(row);
    }
    void UseMenuByKey(int keyCode, int shift, std::optional<std::size_t> row) override {
        mDesktop.window.PressKey(keyCode, shift);
        UseMenu(row);
    }
    std::vector<std::string> MenuSeen() const override { return mMenuSeen; }
    void CtrlClickPane(std::size_t position) override { mDesktop.pane.CtrlClick(position); }
    void TurnCtrlWheel(int delta) override { mDesktop.pane.CtrlWheel(delta); }
    float LeftOf(std::size_t position) override { return mDesktop.pane.LeftOf(position); }
    std::vector<std::string> NamesSuggested() override;
    bool IsSuggestionInView(std::size_t row) override { return row == mDesktop.suggestions.SelectedName(); }
    void ClickSuggestion(std::size_t row) override { mDesktop.suggestions.Click(row); }
    std::string TipShown(Place place) override { return mDesktop.suggestions.TipAt(place, false); }
    std::string MarginTipShown(std::size_t line) override { return mDesktop.suggestions.TipAt({line, 0}, true); }
    std::string HintShown() override { return mDesktop.suggestions.Hint().text; }
    std::string PaneSaid() override { return mDesktop.pane.Said(); }
    std::uint32_t ColourBehind(std::size_t position) override { return mDesktop.pane.ColourBehind(position); }

    SeenMessages Messages() const override;
    void ClickMessage(std::size_t row) override { mDesktop.messages.Click(row); }
    void DoubleClickMessage(std::size_t row) override { mDesktop.messages.DoubleClick(row); }
    void PressKeyInMessages(int keyCode, int shift) override { mDesktop.messages.PressKey(keyCode, shift); }
    void CloseMessages() override { mDesktop.messages.CloseByUser(); }
    Size SizeOfMessages() const override {
        const Extent place = mDesktop.messages.Place();
        return {place.width, place.height};
    }
    void ResizeMessages(const Size& size) override { mDesktop.messages.Resize(size); }
    bool IsCovered(Control& control) const override;
    void FillScreen() override { Resize(mDesktop.messages.work.width, mDesktop.messages.work.height); }

    void Click(Control& control) override;
    std::string WordsOn(Control& control) const override;
    bool IsSeen(Control& control) const override { return control.IsVisible(); }

    float PanelWidth(std::int32_t number) const override { return mDesktop.status.PanelWidth(number); }
    std::string PanelToolTip(std::int32_t number) const override { return mDesktop.status.PanelText(number); }
    std::string ButtonTip(std::int32_t number) const override { return mDesktop.toolBar.ButtonTip(number); }
    void PressButton(std::int32_t number) override { mDesktop.toolBar.Press(number); }
    void ChooseMenu(MenuItem& item) override { static_cast<memory::MenuItem&>(item).Choose(); }
    void OpenMenuAndLeave(MenuItem& /*menu*/) override { const memory::Block open(mDesktop.focus); }
    std::string MenuCaption(MenuItem& item) const override { return item.Caption(); }
    bool IsChecked(MenuItem& item) const override { return static_cast<memory::MenuItem&>(item).IsChecked(); }
    std::vector<std::string> MenusIn(MenuItem* menu) const override;

    void WillPress(MsgResult button) override { mDesktop.msgBox.WillPress(button); }
    void WillCloseMessageBox() override { mDesktop.msgBox.WillClose(); }
    void WillChooseFile(std::string path) override { mDesktop.fileDialog.WillChoose(std::move(path)); }
    void WillCancelFileDialog() override { mDesktop.fileDialog.WillCancel(); }
    void WillUseName(std::function<void(NameWindowUser&)> script) override;
    void WillUseSplash(std::function<void(SplashWindowUser&)> script) override;
    std::vector<SeenMessageBox> MessageBoxes() const override;
    std::vector<SeenFileDialog> FileDialogs() const override;

    std::string FilePath(std::string_view name) const override { return "folder/" + std::string(name); }
    std::string FolderPath() const override { return "folder"; }
    std::string PicturePath() override;
    RegistryPlace WritablePlace() const override { return {Registry::CurrentUser, "SOFTWARE\\Tessaly contract"}; }
    std::vector<std::string> HelpOpened(std::size_t /*count*/) const override { return mDesktop.app.helpOpened; }
    std::string StartableCommand() const override { return "\"a program\"  with  arguments "; }
    std::string UnstartableCommand() override;
    bool HasStarted(const std::string& commandLine, std::int32_t windowStyle) const override;
    bool HasStartedNothing() const override { return mDesktop.app.starts.empty(); }

private:
    void UseMenu(std::optional<std::size_t> row);

    memory::Desktop mDesktop;
    std::vector<std::string> mMenuSeen;
    std::optional<memory::Block> mOtherWindow;
};

} // namespace tessaly
