// The keys of the window, those of the pane, and the tool bar.
#include "platform/text/Utf16.h"
#include "ui/Command.h"
#include "ui/Editing.h"
#include "ui/VornMainFrm.h"

#include <utility>

namespace tessaly {

// F4 deletes and F5 adds, although the list of hot keys says the opposite: kept on purpose.
void VornMainFrm::Form_KeyDown(int keyCode, int) {
    RunOrTell("UnhandledError in Form_KeyDown!", MsgIcon::None, [this, keyCode] {
        switch (keyCode) {
        case KeyF2:
            mCodeTree.SetFocus();
            break;
        case KeyF3:
            if (mFuncBody.FuncBodyAvailable()) {
                mFuncBody.SetFocus();
            }
            break;
        case KeyF4:
            Form_DeleteFunction();
            break;
        case KeyF5:
            Form_AddFunction();
            break;
        case KeyF10:
            mnuBuildExe_Click();
            break;
        default:
            break;
        }
    });
}

// Does what the item of the menu does, also while another control has the keyboard.
bool VornMainFrm::ChooseMenuOnKey(int keyCode, int shift) {
    constexpr std::pair<int, std::string_view> keys[] = {{'N', "mnuNewPSF"}, {'O', "mnuOpenPSF"}, {'S', "mnuSavePSF"}};
    for (const auto& [key, menu] : keys) {
        if (key == keyCode && shift == 2) {
            mDesktop.ChooseMenu(menu);
            return true;
        }
    }
    return false;
}

// Ctrl+Plus, Ctrl+Minus and Ctrl+0. The plus needs Shift on some keyboards.
bool VornMainFrm::ZoomOnKey(int keyCode, int shift) {
    constexpr int control = 2;
    if (shift != control && !(keyCode == KeyPlus && shift == (control | 1))) {
        return false;
    }
    if (keyCode == KeyAdd || keyCode == KeyPlus) {
        RunCommand([this] { ZoomBySteps(1); });
    } else if (keyCode == KeySubtract || keyCode == KeyMinus) {
        RunCommand([this] { ZoomBySteps(-1); });
    } else if (keyCode == '0' || keyCode == KeyDigit0) {
        RunCommand([this] { mFuncBody.SetZoom(100); });
    } else {
        return false;
    }
    return true;
}

// Wherever the lists beside the caret stand, they do not any more.
void VornMainFrm::ZoomBySteps(int steps) {
    constexpr int step = 10; // percent
    mTypingHelp.Close();
    mFuncBody.SetZoom(mFuncBody.Zoom() + steps * step);
}

std::string VornMainFrm::TipOfLost(std::u16string_view character) const {
    std::string bytes;
    std::string saved(OwnWords(OwnText::LostBySave, mLanguage));
    mDesktop.AnsiCodePage().AppendEncoded(ToUtf8(character), bytes);
    mDesktop.AnsiCodePage().AppendDecoded(bytes, saved);
    return saved;
}

bool VornMainFrm::FuncBody_KeyDown(const PaneKey& key) {
    bool isTaken = false;
    Attempt([&] { isTaken = mTypingHelp.TakeKey(key); });
    if (isTaken) {
        return true;
    }
    const std::optional<Edit> edit = EditOf(key, mFuncBody, mFuncBody.Selected());
    if (edit) {
        mFuncBody.Do(*edit);
    }
    return edit.has_value();
}

void VornMainFrm::SetUpToolBar(std::string_view kind) {
    ToolBar& bar = mDesktop.VornToolBar();
    if (kind == EventTool) {
        bar.Clear();
    } else if (kind == FuncVarTool) {
        bar.Clear();
        for (const std::int32_t image : {1, 2}) {
            bar.AddButton(image, mDesktop.QuorvaneImages().Tag(image));
        }
        ShowButtonTips();
    } else {
        // No text is made for this one: it can only be a mistake of the program.
        Tell(Text::UnknownError, Text::Error, MsgIcon::Stop);
    }
}

void VornMainFrm::ShowButtonTips() {
    ToolBar& bar = mDesktop.VornToolBar();
    for (std::int32_t number = 1; number <= bar.ButtonCount(); ++number) {
        const std::string tag = bar.ButtonTag(number);
        if (tag == "Add") {
            bar.SetButtonTip(number, Words(Text::AddFunction));
        } else if (tag == "Delete") {
            bar.SetButtonTip(number, Words(Text::Delete));
        }
    }
}

void VornMainFrm::VornToolBar_ButtonClick(std::int32_t number) {
    UseTool(mDesktop.VornToolBar().ButtonTag(number));
}

void VornMainFrm::UseTool(std::string_view tag) {
    FuncBodyChangeMode = 1;
    SaveCurrentNodeCode(mCurrentNode);
    if (tag == "Add") {
        Form_AddFunction();
    }
    if (tag == "Delete") {
        Form_DeleteFunction();
    }
}

} // namespace tessaly
