// The keys of the window, those of the pane, and the tool bar.
#include "platform/text/Utf16.h"
#include "ui/Command.h"
#include "ui/Editing.h"
#include "ui/VornMainFrm.h"

#include <exception>

namespace tessaly {

// F4 deletes and F5 adds, although the list of hot keys says the opposite: kept on purpose.
void VornMainFrm::Form_KeyDown(int keyCode, int) {
    try {
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
    } catch (const std::exception&) {
        Complain("UnhandledError in Form_KeyDown!", MsgIcon::None);
    }
}

// They do the same whichever control has the keyboard; those of the bar over the pane come after them. The plus needs
// Shift on some keyboards. To an edit control Ctrl+J would be a line break.
bool VornMainFrm::TakeKey(int keyCode, int shift) {
    using Self = VornMainFrm;
    constexpr int back = 1; // Shift
    constexpr int control = 2;
    constexpr int alt = 4;
    struct Row {
        int keyCode;
        int shift;
        void (*run)(Self& self);
    };
    constexpr Row rows[] = {
        {'N', control, [](Self& self) { self.mDesktop.ChooseMenu("mnuNewPSF"); }},
        {'O', control, [](Self& self) { self.mDesktop.ChooseMenu("mnuOpenPSF"); }},
        {'S', control, [](Self& self) { self.mDesktop.ChooseMenu("mnuSavePSF"); }},
        {'J', control, [](Self& self) { self.mMessages.Step(false); }},
        {'J', control | back, [](Self& self) { self.mMessages.Step(true); }},
        {'D', control, [](Self& self) { self.GoToNamed(); }},
        {KeyLeft, alt, [](Self& self) { self.GoBack(); }},
        {KeyAdd, control, [](Self& self) { self.ZoomBySteps(1); }},
        {KeyPlus, control, [](Self& self) { self.ZoomBySteps(1); }},
        {KeyPlus, control | back, [](Self& self) { self.ZoomBySteps(1); }},
        {KeySubtract, control, [](Self& self) { self.ZoomBySteps(-1); }},
        {KeyMinus, control, [](Self& self) { self.ZoomBySteps(-1); }},
        {'0', control, [](Self& self) { self.mFuncBody.SetZoom(100); }},
        {KeyDigit0, control, [](Self& self) { self.mFuncBody.SetZoom(100); }},
    };
    for (const Row& row : rows) {
        if (row.keyCode == keyCode && row.shift == shift) {
            Attempt(row.run, *this);
            return true;
        }
    }
    return mFinding.TakeKey(keyCode, shift);
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
        const ImageList& images = mDesktop.QuorvaneImages();
        if (bar.ButtonCount() == 2 && bar.ButtonTag(1) == images.Tag(1) && bar.ButtonTag(2) == images.Tag(2)) {
            return; // to make them anew would show
        }
        bar.Clear();
        for (const std::int32_t image : {1, 2}) {
            bar.AddButton(image, images.Tag(image));
        }
        ShowButtonTips();
    } else {
        // No text is made for this one: it can only be a mistake of the program.
        Tell(Text::UnknownError, Text::Error, MsgIcon::Stop);
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
