// The user of the Windows desktop. Keys and clicks are the messages that Windows sends for them; dialogs are answered
// in their own windows.
#pragma once

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Desktop.h"
#include "tests/contract/DialogDriver.h"
#include "tests/contract/win32/DialogUser.h"
#include "tests/contract/win32/SpokenService.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <memory>

namespace tessaly {

class Win32Driver final : public DialogDriver<DialogUser> {
public:
    explicit Win32Driver(const Launch& launch);
    Win32Driver(const Win32Driver&) = delete;
    Win32Driver& operator=(const Win32Driver&) = delete;
    ~Win32Driver() override;

    Desktop& TheDesktop() override { return *mDesktop; }
    void Settle() override;

    void PressKey(int keyCode, int shift) override;
    void Resize(float width, float height) override;
    void CloseByUser() override;
    void DestroyFromOutside() override;
    void EndSession(bool mayAsk) override;
    void GoToAnotherWindow() override;
    void ComeBack() override;
    void GoToAnotherProgram() override;
    void DropFile(const std::string& path) override;
    bool IsShown() const override;
    bool HasEnded() const override;
    bool TakesInput() const override;
    std::string Caption() const override;
    std::string Icon() const override;

    Extent Shown(tessaly::Control& control) const override;
    std::string LabelText(Label& label) const override;

    void ClickItem(TreeItem item) override;
    void MoveSelectionDown() override { PressKey(VK_DOWN, 0); }
    void CollapseItem(TreeItem item) override;
    bool IsExpanded(TreeItem item) const override;
    std::vector<std::string> TreeShown() const override;

    std::string MarkShown(TreeItem item) override;

    void ClickPane() override;
    void SetCaret(std::size_t position) override;
    void SelectAll() override { PressKey('A', 2); }
    void Type(std::string_view text) override;
    void PressEnter() override { PressKey(VK_RETURN, 0); }
    void Backspace() override { PressKey(VK_BACK, 0); }
    void Paste(std::string_view text) override;
    void Undo() override { PressKey('Z', 2); }
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
    bool IsCovered(tessaly::Control& control) const override;
    void FillScreen() override;

    void Click(tessaly::Control& control) override;
    std::string WordsOn(tessaly::Control& control) const override;
    bool IsSeen(tessaly::Control& control) const override { return IsWindowVisible(HandleOf(control)) != 0; }

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
    std::string FolderPath() const override;
    std::string PicturePath() override;
    RegistryPlace WritablePlace() const override;
    std::vector<std::string> HelpOpened(std::size_t /*count*/) const override { return mHelpOpened; }
    std::string StartableCommand() const override;
    std::string UnstartableCommand() override;
    bool HasStarted(const std::string& commandLine, std::int32_t windowStyle) const override;
    bool HasStartedNothing() const override;

    // A window of the desktop, or one of its controls.
    HWND Frame() const { return mFrame; }
    HWND Control(int id) const { return GetDlgItem(mFrame, id); }

private:
    // A menu: its drop-down or the one that it is in, which menu of the bar opens that, and where it stands.
    struct MenuPlace {
        int inBar = 0;
        HMENU drop = nullptr;
        HMENU in = nullptr;
        int number = 0;
    };

    static constexpr LPARAM Released = static_cast<LPARAM>(0xC0000001); // of a key that comes up

    static HWND HandleOf(tessaly::Control& control);
    HWND Tree() const { return Control(win32::ControlId::CodeTree); }
    HTREEITEM Node(TreeItem item) const;
    bool IsItalic(TreeItem item) const;
    void ForEachNode(const std::function<void(const TVITEMW& node, int level)>& look) const;
    MenuPlace PlaceOf(const MenuItem& item) const;
    static std::string MenuText(HMENU menu, int number);
    void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    void Click(HWND window, POINT point);
    RECT PlaceOfItem(TreeItem item);
    void UseMenu(std::optional<std::size_t> row, const std::function<void()>& ask);
    POINT PlaceInPane(std::size_t position) const;
    void PostOpening(std::ptrdiff_t menu);
    void PostMenuKey(WPARAM key, std::ptrdiff_t times = 1);
    std::wstring Shown() const;
    RECT MarginPlace() const;
    std::string TipNow();
    HWND MessagesFrame() const { return Owned(L"Messages"); }
    HWND Owned(const wchar_t* className) const;
    HWND NameList() const;
    HWND InMessages(int id) const { return GetDlgItem(MessagesFrame(), id); }
    void GoToMessages();
    POINT PlaceOfMessage(std::size_t row) const;

    TestFolder mFolder;
    std::vector<std::string> mHelpOpened;
    std::unique_ptr<win32::Desktop> mDesktop;
    HWND mFrame = nullptr;
    HWND mOtherWindow = nullptr;
    std::unique_ptr<SpokenService> mSpoken; // once something was asked for
};

// Puts a text into the clipboard.
void SetClipboard(std::string_view text);

} // namespace tessaly
