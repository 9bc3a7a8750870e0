// The common file dialogs, and message boxes. These are named as they are because the Windows headers define the longer
// name as a macro.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessaly {

// The user cancelled a dialog for which that is an error.
class DialogCancelled : public std::runtime_error {
public:
    DialogCancelled() : std::runtime_error("the dialog was cancelled") {}
};

// Among the flags: hides the read-only check box.
inline constexpr std::int32_t HideReadOnly = 4;

struct FileDialogSettings {
    std::string title;            // of the window; what the desktop likes where it is empty
    std::string fileName;         // what the dialog begins with
    bool cancelIsError = false;   // else a cancelled dialog gives ""
    std::int32_t flags = 0;       // HideReadOnly
    std::string filter;           // "description|pattern", further pairs behind further "|"
    std::int32_t filterIndex = 1; // the pair shown first, from 1; one beyond the last stands for the last
};

class FileDialog {
public:
    virtual ~FileDialog() = default;

    // Show the dialog, modal to the main window, and return the chosen path. Neither asks about a file that exists
    // or does not, and neither adds an extension. Throw DialogCancelled where cancelling is an error.
    std::string ShowOpen(const FileDialogSettings& settings) { return Show(Kind::Open, settings); }
    std::string ShowSave(const FileDialogSettings& settings) { return Show(Kind::Save, settings); }

protected:
    enum class Kind { Open, Save };

    // Nothing when the user cancelled it.
    virtual std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) = 0;

private:
    std::string Show(Kind kind, const FileDialogSettings& settings) {
        const std::optional<std::string> path = Ask(kind, settings);
        if (!path && settings.cancelIsError) {
            throw DialogCancelled();
        }
        return path.value_or("");
    }
};

enum class MsgButtons : std::int32_t { Ok = 0, YesNoCancel = 3, YesNo = 4 };
enum class MsgIcon : std::int32_t { None = 0, Stop = 16, Question = 32, Exclamation = 48, Information = 64 };
enum class MsgResult : std::int32_t { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

// The answer of a box that goes without its user, or is not shown because there is nobody to ask.
constexpr MsgResult AnswerOfNobody(MsgButtons buttons) {
    return buttons == MsgButtons::Ok ? MsgResult::Ok : buttons == MsgButtons::YesNo ? MsgResult::No : MsgResult::Cancel;
}

// What has room beside a box's caption: icon and buttons. In pixels at 96 dots per inch. Nobody but the window manager
// knows how wide they are, so it is rather more.
inline constexpr int AroundCaption = 140;

class MsgBox {
public:
    virtual ~MsgBox() = default;

    // Shows the box, modal to the window that is on top, with its first button as default, and returns the button that
    // the user pressed. Closing it counts as Cancel, if there is that button, and as Ok if it is the only one; a Yes/No
    // box cannot be closed otherwise.
    // A box that is taken away from outside has the AnswerOfNobody.
    // It is wide enough for its caption, and it breaks no line of a text with columns, which has tabs.
    MsgResult Show(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
        return mIsSilent ? AnswerOfNobody(buttons) : Ask(text, caption, buttons, icon);
    }

    // There is nobody to ask: no box is shown any more.
    void AskNoMore() { mIsSilent = true; }
    bool HasNobody() const { return mIsSilent; }

protected:
    virtual MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) = 0;

private:
    bool mIsSilent = false;
};

} // namespace tessaly
