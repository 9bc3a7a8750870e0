// The user of the Qt desktop: real windows on Qt's offscreen platform, real key and mouse events, real dialogs.
#pragma once

#include "platform/desktop/qt/Desktop.h"
#include "platform/settings/SettingsRegistry.h"
#include "tests/contract/DialogDriver.h"
#include "tests/contract/qt/QtDialogUser.h"

#include <QTemporaryDir>
#include <QWindow>
#include <memory>

namespace tessaly {

class QtDriver final : public DialogDriver<QtDialogUser> {
public:
    explicit QtDriver(const Launch& launch);
    ~QtDriver() override;

    Desktop& TheDesktop() override { return *mDesktop; }
    void Settle() override;

    void PressKey(int keyCode, int shift) override;
    void Resize(float width, float height) override;
    void CloseByUser() override;
    void DestroyFromOutside() override;
    void EndSession(bool mayAsk) override { mDesktop->EndSession(mayAsk); }
    void GoToAnotherWindow() override;
    void ComeBack() override;
    void GoToAnotherProgram() override;
    void DropFile(const std::string& path) override;
    bool IsShown() const override { return mDesktop->window.isVisible(); }
    bool HasEnded() const override { return mDesktop->window.HasEnded() && !mDesktop->window.isVisible(); }
    bool TakesInput() const override;
    std::string Caption() const override { return qt::FromQt(mDesktop->window.windowTitle()); }
    std::string Icon() const override;

    Extent Shown(Control& control) const override;
    std::string LabelText(Label& label) const override;

    void ClickItem(TreeItem item) override;
    void MoveSelectionDown() override;
    void CollapseItem(TreeItem item) override;
    bool IsExpanded(TreeItem item) const override;
    std::vector<std::string> TreeShown() const override;

    std::string MarkShown(TreeItem item) override;

    void ClickPane() override;
    void SetCaret(std::size_t position) override;
    void SelectAll() override;
    void Type(std::string_view text) override;
    void PressEnter() override;
    void Backspace() override;
    void Paste(std::string_view text) override;
    void Undo() override;
    std::string PaneShown() const override;
    std::vector<std::string> MarginShown() override;
    std::vector<std::string> Underlined() override;
    void ClickMargin() override;
    void UseMenuOfItem(TreeItem item, std::optional<std::size_t> row) override;
    void UseMenuOfPane(std::size_t position, std::optional<std::size_t> row) override;
    void UseMenuByKey(int keyCode, int shift, std::optional<std::size_t> row) override;
    void CtrlClickPane(std::size_t position) override;
    void TurnCtrlWheel(int delta) override;
    float LeftOf(std::size_t position) override;
    std::vector<std::string> NamesSuggested() override;
    bool IsSuggestionInView(std::size_t row) override;
    void ClickSuggestion(std::size_t row) override;
    std::string HintShown() override;
    std::string PaneSaid() override;
    std::uint32_t ColourBehind(std::size_t position) override;

    std::string TipShown(Place place) override;
    std::string MarginTipShown(std::size_t line) override;

    SeenMessages Messages() const override;
    void ClickMessage(std::size_t row) override;
    void DoubleClickMessage(std::size_t row) override;
    void PressKeyInMessages(int keyCode, int shift) override;
    void CloseMessages() override;
    Size SizeOfMessages() const override;
    void ResizeMessages(const Size& size) override;
    bool IsCovered(Control& control) const override;
    void FillScreen() override;

    void Click(Control& control) override;
    std::string WordsOn(Control& control) const override;
    bool IsSeen(Control& control) const override { return WidgetOf(control).isVisible(); }

    float PanelWidth(std::int32_t number) const override;
    std::string PanelToolTip(std::int32_t number) const override;
    std::string ButtonTip(std::int32_t number) const override;
    void PressButton(std::int32_t number) override;
    void ChooseMenu(MenuItem& item) override;
    void OpenMenuAndLeave(MenuItem& menu) override;
    std::string MenuCaption(MenuItem& item) const override;
    bool IsChecked(MenuItem& item) const override;
    std::vector<std::string> MenusIn(MenuItem* menu) const override;

    std::string FilePath(std::string_view name) const override;
    std::string FolderPath() const override { return qt::FromQt(mFolder.path()); }
    std::string PicturePath() override;
    RegistryPlace WritablePlace() const override { return {Registry::CurrentUser, "SOFTWARE\\Tessaly contract"}; }
    std::vector<std::string> HelpOpened(std::size_t count) const override;
    std::string StartableCommand() const override;
    std::string UnstartableCommand() override { return FilePath("no-program"); }
    bool HasStarted(const std::string& commandLine, std::int32_t windowStyle) const override;
    bool HasStartedNothing() const override { return Lines("started").empty(); }

    // The desktop itself, for what only this one has.
    qt::Desktop& Qt() { return *mDesktop; }
    QTreeWidgetItem& NodeOf(TreeItem item) const;
    QWidget& ButtonOf(std::int32_t number) const;

private:
    std::optional<std::string> Variable(const std::string& name) const;
    void PlaceControls();
    QRect MarginPlace() const; // in the pane
    std::string TipOver(QWidget& view, const QPoint& screen);
    Mark MarkOf(const QImage& picture) const;
    QWidget& WidgetOf(Control& control) const;
    std::vector<std::pair<Control*, QWidget*>> Widgets() const;
    void Open(QAction& menu); // one in the menu bar
    void MakeProgram(const std::string& path, const std::string& whatToWhere) const;
    std::vector<std::string> Lines(std::string_view name) const; // of a file in the folder
    const QLabel& PanelOf(std::int32_t number) const;
    QWindow* MainHandle() const { return mDesktop->window.windowHandle(); }
    void Click(const QWidget& widget, const QPoint& place, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QRect CaretAt(std::size_t position) const; // in the pane's viewport
    QPoint PlaceOfItem(TreeItem item);         // in the tree's viewport
    void UseMenu(std::optional<std::size_t> row);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {});
    void PressKeyAt(QWindow* window, int keyCode, int shift);
    void GoToMessages();
    QPoint PlaceOfMessage(std::size_t row) const; // in its window

    QTemporaryDir mFolder;
    QByteArray mPath; // of this process, as it was
    SystemFiles mFiles;
    std::optional<SettingsRegistry> mSettings;
    std::unique_ptr<qt::Desktop> mDesktop;
    std::unique_ptr<QWidget> mOtherWindow;
    bool mIsInMessages = false; // the user has gone there
};

} // namespace tessaly
