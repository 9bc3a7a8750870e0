// The user of a desktop, for the contract tests. It acts by keys and mouse and looks at the screen, and can do nothing
// else. Each desktop has its own; everything else the tests do through the interfaces.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/system/PrivateFiles.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// How the program is started.
struct Launch {
    std::string commandLine;
};

struct SeenMessageBox {
    std::string text;
    std::string caption;
    MsgButtons buttons = MsgButtons::Ok;
    MsgIcon icon = MsgIcon::None;

    bool operator==(const SeenMessageBox&) const = default;
};

struct SeenFileDialog {
    bool isSave = false;
    std::string title;
    std::string fileName;             // in the box for the name
    std::vector<std::string> filters; // the descriptions
    std::string pattern;              // of the filter shown
    bool hasReadOnlyBox = false;
};

// The messages window as the user sees it.
struct SeenMessages {
    bool isVisible = false;
    std::string caption;
    std::vector<std::string> pages; // their names, that of the one in front with "*" behind it
    std::vector<std::string> heads;
    std::vector<std::string> rows; // cells with "|" between, and "*" behind the selected one
    bool isSelectedInView = false;
    std::string printed;
    bool hasKeyboard = false;
};

// Where a test may write in the registry. The key is not there at first.
struct RegistryPlace {
    std::uint32_t root = 0;
    std::string path;
};

// What a user can do in the name window while it is shown.
class NameWindowUser {
public:
    virtual ~NameWindowUser() = default;
    virtual void Type(std::string_view text) = 0;
    virtual void PressOk() = 0;
    virtual void PressCancel() = 0;
    virtual void PressEnter() = 0;
    virtual void PressEscape() = 0;
    virtual void PressF1() = 0;
    virtual void CloseByFrame() = 0;
    virtual bool IsShown() const = 0;
    virtual std::string Caption() const = 0;
    virtual std::string Label() const = 0;
    virtual std::string CancelCaption() const = 0;
};

// In pixels.
struct Distance {
    int right = 0;
    int down = 0;
};

// What a user can do in the splash window while it is shown.
class SplashWindowUser {
public:
    virtual ~SplashWindowUser() = default;
    virtual void PressKey(int keyCode) = 0;
    virtual void RepeatKey(int keyCode) = 0; // a key that was pressed before the window came
    virtual void ClickFrame() = 0;
    virtual void ClickLabel() = 0; // one of those in the frame
    virtual void ClickFrameWithTheRightButton() = 0;
    virtual void CloseByFrame() = 0;
    virtual bool IsShown() const = 0;
    virtual Distance FromTheMiddleOfItsOwner() const = 0; // on the screen, of its own middle
    virtual std::vector<std::string> Labels() const = 0;  // their texts, in any order
};

// What the drivers call a mark.
inline std::string NameOf(Mark mark) {
    return mark == Mark::Error ? "error" : mark == Mark::Warning ? "warning" : "";
}

// What MarkShown gives.
inline std::string LookShown(Mark mark, bool isItalic, const std::string& description) {
    const std::string kind = NameOf(mark) + (mark != Mark::None && isItalic ? " " : "") + (isItalic ? "italic" : "");
    return kind.empty() ? description : kind + ": " + description;
}

// What MenuSeen gives for a row.
inline std::string RowShown(const std::string& text, const std::string& keys, bool isEnabled) {
    const std::string row = text + "|" + keys;
    return isEnabled ? row : "(" + row + ")";
}

class DesktopDriver {
public:
    virtual ~DesktopDriver() = default;

    virtual Desktop& TheDesktop() = 0;

    // Where the program may keep what is the user's own.
    virtual PrivateFiles& OwnFiles() { return *mOwnFiles; }

    // Lets everything happen that is under way, such as keys that were sent. What a user does is done when the
    // operation returns.
    virtual void Settle() = 0;

    // Lets things happen until something has that the system tells in its own time. False when it does not.
    virtual bool SettleUntil(const std::function<bool()>& hasHappened) {
        const auto start = std::chrono::steady_clock::now();
        while (!hasHappened() && std::chrono::steady_clock::now() - start < std::chrono::seconds(20)) {
            Settle();
        }
        return hasHappened();
    }

    // The main window.
    virtual void PressKey(int keyCode, int shift) = 0;
    virtual void Resize(float width, float height) = 0;
    virtual void CloseByUser() = 0;
    virtual void DestroyFromOutside() = 0;    // somebody else takes the window away
    virtual void EndSession(bool mayAsk) = 0; // asked whether it may end, or told that it does
    virtual void GoToAnotherWindow() = 0;     // as Alt+Tab does; nothing else can be done until ...
    virtual void ComeBack() = 0;
    virtual void GoToAnotherProgram() = 0; // leaves this one for good
    virtual void DropFile(const std::string& path) = 0;
    virtual bool IsShown() const = 0;
    virtual bool HasEnded() const = 0; // the window is gone, and the program ends
    virtual bool TakesInput() const = 0;
    virtual std::string Caption() const = 0;
    virtual std::string Icon() const = 0; // something that is another one for every icon

    // Where a control of the main window is on the screen, in twips of its client area.
    virtual Extent Shown(Control& control) const = 0;

    // The text in a label of the main window.
    virtual std::string LabelText(Label& label) const = 0;

    // The tree.
    virtual void ClickItem(TreeItem item) = 0;
    virtual void MoveSelectionDown() = 0;         // with the key
    virtual void CollapseItem(TreeItem item) = 0; // with the mouse; it is expanded
    virtual bool IsExpanded(TreeItem item) const = 0;

    // The texts of all items from top to bottom, also of hidden ones, with two blanks for each level in front, and that
    // of the selected one with "*" behind it.
    virtual std::vector<std::string> TreeShown() const = 0;

    // The kind of an item's mark and its description, "error: 2 errors", "" without a mark. With a text in italics
    // "italic: changed" or "error italic: 2 errors, changed".
    virtual std::string MarkShown(TreeItem item) = 0;

    // The pane. Positions count bytes of the shown text, in which every line break is one LF. Typing goes where the
    // focus is, if at all.
    virtual void ClickPane() = 0;
    virtual void SetCaret(std::size_t position) = 0;
    virtual void SelectAll() = 0;
    virtual void Type(std::string_view text) = 0;
    virtual void PressEnter() = 0;
    virtual void Backspace() = 0;
    virtual void Paste(std::string_view text) = 0;
    virtual void Undo() = 0;
    virtual std::string PaneShown() const = 0;

    // What a screen reader, which has asked for the pane once, is told of it beside its text; "" for nothing.
    virtual std::string PaneSaid() = 0;

    // What the margin of the pane shows beside each line in view: "12", or "12 error", or "12 warning".
    virtual std::vector<std::string> MarginShown() = 0;
    virtual std::vector<std::string> Underlined() = 0; // the pieces of text, from the top
    virtual void ClickMargin() = 0;

    // The user asks for a menu at an item, at a character of the pane, or by a key where the keyboard is. He chooses
    // the row of this number, lines counted, or leaves the menu.
    virtual void UseMenuOfItem(TreeItem item, std::optional<std::size_t> row) = 0;
    virtual void UseMenuOfPane(std::size_t position, std::optional<std::size_t> row) = 0;
    virtual void UseMenuByKey(int keyCode, int shift, std::optional<std::size_t> row) = 0;

    // The rows of the menu that he used last: "text|keys", "(text|keys)" for one that cannot be chosen, "-" for a line.
    // None where no menu came.
    virtual std::vector<std::string> MenuSeen() const = 0;

    // With Ctrl held: a click at a character of the pane, and the wheel over the pane, by 120 for each step.
    virtual void CtrlClickPane(std::size_t position) = 0;
    virtual void TurnCtrlWheel(int delta) = 0;

    // Where the left edge of a character of the pane is on the screen, in twips; which point counts from is the same
    // as long as the window is.
    virtual float LeftOf(std::size_t position) = 0;

    // Beside the caret: each name with "|" and its declaration behind it, and "*" behind the selected one; and the
    // parameters. Nothing where they are not shown.
    virtual std::vector<std::string> NamesSuggested() = 0;
    virtual bool IsSuggestionInView(std::size_t row) = 0;
    virtual void ClickSuggestion(std::size_t row) = 0;
    virtual std::string HintShown() = 0;

    // The colour of the paper behind a character in view, which counts as above; any number for each colour.
    virtual std::uint32_t ColourBehind(std::size_t position) = 0;

    // What comes up when the mouse rests on the character at a place of the pane, or in the margin beside a line from
    // 0;
    // "" for nothing.
    virtual std::string TipShown(Place place) = 0;
    virtual std::string MarginTipShown(std::size_t line) = 0;

    // The messages window. The keyboard goes there with all that the user does in it.
    virtual SeenMessages Messages() const = 0;
    virtual void ClickMessage(std::size_t row) = 0;
    virtual void DoubleClickMessage(std::size_t row) = 0;
    virtual void PressKeyInMessages(int keyCode, int shift) = 0;
    virtual void CloseMessages() = 0; // by its frame
    virtual Size SizeOfMessages() const = 0;
    virtual void ResizeMessages(const Size& size) = 0;

    // Whether the messages window lies over the control, on the screen.
    virtual bool IsCovered(Control& control) const = 0;

    // The main window takes all of the screen that windows may take.
    virtual void FillScreen() = 0;

    // The bar over the pane. A click into the middle; what stands on or in a control; whether it is to be seen.
    virtual void Click(Control& control) = 0;
    virtual std::string WordsOn(Control& control) const = 0;
    virtual bool IsSeen(Control& control) const = 0;

    // Bars and menus.
    virtual float PanelWidth(std::int32_t number) const = 0;
    virtual std::string PanelToolTip(std::int32_t number) const = 0;
    virtual std::string ButtonTip(std::int32_t number) const = 0; // as it is shown and read out
    virtual void PressButton(std::int32_t number) = 0;
    virtual void ChooseMenu(MenuItem& item) = 0;       // opens its menu first, in a window that is shown
    virtual void OpenMenuAndLeave(MenuItem& menu) = 0; // one in the bar; leaves it by Escape

    virtual std::string MenuCaption(MenuItem& item) const = 0;
    virtual bool IsChecked(MenuItem& item) const = 0;

    // What stands in the menu bar (null) or a drop-down, by its captions, "-" for a line.
    virtual std::vector<std::string> MenusIn(MenuItem* menu) const = 0;

    // What the user does with the dialogs that come next, in order.
    virtual void WillPress(MsgResult button) = 0;
    virtual void WillCloseMessageBox() = 0; // or try to
    virtual void WillChooseFile(std::string path) = 0;
    virtual void WillCancelFileDialog() = 0;
    virtual void WillUseName(std::function<void(NameWindowUser&)> script) = 0;
    virtual void WillUseSplash(std::function<void(SplashWindowUser&)> script) = 0;
    virtual std::vector<SeenMessageBox> MessageBoxes() const = 0;
    virtual std::vector<SeenFileDialog> FileDialogs() const = 0;

    // The system around the program.
    virtual std::string FilePath(std::string_view name) const = 0; // a file of that name would be new
    virtual std::string FolderPath() const = 0;                    // a folder that is there
    virtual std::string PicturePath() = 0;                         // an icon that can be loaded
    virtual RegistryPlace WritablePlace() const = 0;
    virtual std::vector<std::string> HelpOpened(std::size_t count) const = 0; // waits for so many
    virtual std::string StartableCommand() const = 0;
    virtual std::string UnstartableCommand() = 0; // no process can be started any more, or not this one

    // Whether one process was started with this command line, as far as it can tell, and in this style where the system
    // has any; and whether none was.
    virtual bool HasStarted(const std::string& commandLine, std::int32_t windowStyle) const = 0;
    virtual bool HasStartedNothing() const = 0;

protected:
    // To be reset before the folder of a test is removed where open files keep it.
    std::optional<SystemPrivateFiles> mOwnFiles{std::in_place};
};

// One desktop that has to keep the contracts.
struct DesktopUnderTest {
    std::string name;
    std::function<std::unique_ptr<DesktopDriver>(const Launch&)> start;
};

// What the lists of tests show.
inline void PrintTo(const DesktopUnderTest& desktop, std::ostream* stream) {
    *stream << desktop.name;
}

} // namespace tessaly
