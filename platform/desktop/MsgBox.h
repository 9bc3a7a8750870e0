// Message boxes. Named as it is because the Windows headers define the longer name as a macro.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

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
