// New, Open, Save, Save As, Exit, and the save question.
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

namespace {

// What the saving operations report.
constexpr std::int32_t Saved = 0;
constexpr std::int32_t SavingCancelled = 1; // no saving operation reports it any more, but it is still understood
constexpr std::int32_t NotSaved = 2;

// What the save question reports.
constexpr std::int32_t QuestionSaved = 0;
constexpr std::int32_t QuestionDeclined = 1;
constexpr std::int32_t QuestionCancelled = 2;
constexpr std::int32_t QuestionSaveFailed = 3;

// Hides the read-only check box of the file dialog.
constexpr std::int32_t HideReadOnly = 4;

} // namespace

void VornMainFrm::mnuNewPSF_Click() {
    SaveCurrentNodeCode(mCurrentNode);
    if (MayDropDocument()) {
        FuncBodyChangeMode = 1;
        FuncBodyChangedFlag = false;
        BuildCodeTree();
        mSourceDoc->Init();
        mLastOpenedFile = "";
        ShowFileName("");
        ShowMessage(Text::FileCreated);
    }
    // Also when nothing was made new, though the pane goes on showing the old item: kept on purpose.
    mCurrentNode = mCodeTree.Find("_0e");
}

void VornMainFrm::mnuOpenPSF_Click() {
    Open([this] { return mDesktop.CommonDialog1().ShowOpen(DialogSettings("mnuOpenPSF")); });
}

// As Open does, with the name already chosen.
void VornMainFrm::Form_FileDropped(const std::string& path) {
    Open([&path] { return path; });
}

void VornMainFrm::Open(const std::function<std::string()>& askName) {
    SaveCurrentNodeCode(mCurrentNode);
    if (!MayDropDocument()) {
        return;
    }
    // Before the name is asked for, so that cancelling it leaves the edits without their flag: kept on purpose.
    FuncBodyChangeMode = 1;
    FuncBodyChangedFlag = false;
    const std::string fileName = askName();
    if (fileName.empty()) {
        return;
    }
    mSourceDoc = NewDocument();
    if (mSourceDoc->LoadFile(fileName) != Status::Done) {
        ShowMessage(Text::LoadAborted);
        Tell(Text::LoadAborted, Text::Error, MsgIcon::Exclamation);
        return;
    }
    mLastOpenedFile = fileName;
    mShownNode = TreeItem::None; // what the pane holds is the old document's
    BuildCodeTree();
    AddFunctionItems(false);
    ShowFileName(mLastOpenedFile);
    ShowMessage(Text::FileOpened);
    mCurrentNode = mCodeTree.Find("_0e");
}

void VornMainFrm::mnuSavePSF_Click() {
    if (SavePSFFunc() == Saved) {
        FuncBodyChangeMode = 1;
        FuncBodyChangedFlag = false;
    }
}

void VornMainFrm::mnuSaveAsPSF_Click() {
    if (SaveAsPSFFunc() == Saved) {
        FuncBodyChangeMode = 1;
        FuncBodyChangedFlag = false;
    }
}

std::int32_t VornMainFrm::SavePSFFunc() {
    std::int32_t result = NotSaved;
    RunCommand([this, &result] {
        SaveCurrentNodeCode(mCurrentNode);
        if (mLastOpenedFile.empty()) {
            result = SaveAsPSFFunc();
        } else if (mSourceDoc->SaveFile(mLastOpenedFile) == Status::Done) {
            result = Saved;
            ShowMessage(Text::FileSaved);
        } else {
            Tell(Text::RestartApplication, Text::FileWriteError, MsgIcon::Stop);
        }
    });
    return result;
}

std::int32_t VornMainFrm::SaveAsPSFFunc() {
    std::int32_t result = NotSaved;
    RunCommand([this, &result] {
        SaveCurrentNodeCode(mCurrentNode);
        const std::string fileName = AskSaveName();
        // What SaveFile reports is not looked at; a failed save is shown as a success. Kept on purpose.
        mSourceDoc->SaveFile(fileName);
        mLastOpenedFile = fileName;
        ShowFileName(mLastOpenedFile);
        ShowMessage(Text::FileSaved);
        result = Saved;
    });
    return result;
}

// Asks for a name until it is one that is free or that may be replaced. Cancelling throws.
std::string VornMainFrm::AskSaveName() {
    while (true) {
        std::string fileName = mDesktop.CommonDialog1().ShowSave(DialogSettings("mnuSaveAsPSF"));
        if (!mDesktop.Files().FileExists(fileName)) {
            return fileName;
        }
        const std::string question = fileName + "\n" + Words(Text::FileExists) + "\n\n" + Words(Text::ReplaceQuestion);
        if (Ask(question, Words(Text::SaveAs), MsgButtons::YesNo, MsgIcon::None) == MsgResult::Yes) {
            return fileName;
        }
    }
}

std::int32_t VornMainFrm::PromptUserForSave() {
    std::int32_t result = QuestionSaveFailed;
    RunCommand([this, &result] {
        const MsgResult answer =
            Ask(Words(Text::SaveQuestion), Words(Text::SaveDialog), MsgButtons::YesNoCancel, MsgIcon::Question);
        if (answer == MsgResult::No) {
            result = QuestionDeclined;
            return;
        }
        const std::int32_t report = answer == MsgResult::Yes ? SavePSFFunc() : SavingCancelled;
        if (report == NotSaved) {
            return;
        }
        const bool cancelled = report == SavingCancelled;
        result = cancelled ? QuestionCancelled : QuestionSaved;
        ShowMessage(cancelled ? Text::CommandCancelled : Text::YourFileSaved);
    });
    return result;
}

// Whether what is in the window may be given up: nothing is unsaved, or it has been saved, or the user said so.
bool VornMainFrm::MayDropDocument() {
    return !FuncBodyChangedFlag || PromptUserForSave() <= QuestionDeclined;
}

// The dialog is called as the menu item that leads to it.
FileDialogSettings VornMainFrm::DialogSettings(std::string_view menu) const {
    FileDialogSettings settings;
    settings.title = Menu(menu).Caption();
    std::erase(settings.title, '&');
    settings.title.resize(settings.title.find_last_not_of('.') + 1);
    settings.fileName = mLastOpenedFile;
    settings.cancelIsError = true;
    settings.flags = HideReadOnly;
    settings.filter = Words(Text::FileFilter);
    settings.filterIndex = 2; // one beyond the only pair: kept on purpose
    return settings;
}

void VornMainFrm::mnuExit_Click() {
    SaveCurrentNodeCode(mCurrentNode);
    if (!MayDropDocument()) {
        return;
    }
    FuncBodyChangeMode = 1;
    FuncBodyChangedFlag = false;
    mWindow.Unload();
}

} // namespace tessaly
