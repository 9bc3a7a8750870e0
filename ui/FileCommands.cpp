// New, Open, Save, Save As, Exit, and the save question.
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

void VornMainFrm::mnuNewPSF_Click() {
    SaveCurrentNodeCode(mCurrentNode);
    if (MayDropDocument()) {
        GiveUpDocument(FuncBodyChangedFlag ? Reason::AnsweredNo : Reason::NewFile);
        ForgetChanges();
        BuildCodeTree();
        mSourceDoc->Init();
        mLastOpenedFile = "";
        NoteLoaded("");
        mMessages.Forget();
        ShowFileName("");
        ShowMessage(Text::FileCreated);
    }
    // Also when nothing was made new, though the pane goes on showing the old item: kept on purpose.
    mCurrentNode = mCodeTree.Find(EventsKey);
}

void VornMainFrm::mnuOpenPSF_Click(const std::string& dropped) {
    SaveCurrentNodeCode(mCurrentNode);
    if (!MayDropDocument()) {
        return;
    }
    const Reason reason = FuncBodyChangedFlag ? Reason::AnsweredNo : Reason::FileOpened;
    // Before the name is asked for, so that cancelling it leaves the edits without their flag: kept on purpose.
    ForgetChanges();
    const std::string fileName =
        dropped.empty() ? mDesktop.CommonDialog1().ShowOpen(DialogSettings("mnuOpenPSF")) : dropped;
    if (fileName.empty()) {
        return;
    }
    GiveUpDocument(reason);
    mSourceDoc = NewDocument();
    NoteLoaded("");
    mMessages.Forget();
    if (mSourceDoc->LoadFile(fileName) != Status::Done) {
        ShowMessage(Text::LoadAborted);
        Tell(Text::LoadAborted, Text::Error, MsgIcon::Exclamation);
        return;
    }
    mLastOpenedFile = fileName;
    NoteLoaded(fileName);
    mShownNode = TreeItem::None; // what the pane holds is the old document's
    mShownMember = "";
    BuildCodeTree();
    AddFunctionItems(false);
    ShowFileName(mLastOpenedFile);
    ShowMessage(Text::FileOpened);
    mCurrentNode = mCodeTree.Find(EventsKey);
    OfferBeside();
}

void VornMainFrm::mnuSavePSF_Click() {
    if (SavePSFFunc() == SaveResult::Saved) {
        ForgetChanges();
    }
}

void VornMainFrm::mnuSaveAsPSF_Click() {
    if (SaveAsPSFFunc() == SaveResult::Saved) {
        ForgetChanges();
    }
}

SaveResult VornMainFrm::SavePSFFunc() {
    SaveCurrentNodeCode(mCurrentNode);
    if (mLastOpenedFile.empty()) {
        return SaveAsPSFFunc();
    }
    SaveResult result = SaveResult::NotSaved;
    try {
        if (IsSafeToReplace(mLastOpenedFile) && Save(mLastOpenedFile) == Status::Done) {
            result = SaveResult::Saved;
            ShowMessage(Text::FileSaved);
        } else {
            Tell(Text::RestartApplication, Text::FileWriteError, MsgIcon::Stop);
        }
    } catch (const std::exception&) {
        return result; // as the file is, whatever else failed
    }
    return result;
}

SaveResult VornMainFrm::SaveAsPSFFunc() {
    SaveCurrentNodeCode(mCurrentNode);
    SaveResult result = SaveResult::NotSaved;
    Attempt([this, &result] {
        const std::string fileName = AskSaveName();
        if (!IsSafeToReplace(fileName)) {
            Tell(Text::RestartApplication, Text::FileWriteError, MsgIcon::Stop);
            return;
        }
        // What SaveFile reports is not looked at; a failed save is shown as a success. Kept on purpose.
        Save(fileName);
        mLastOpenedFile = fileName;
        ShowFileName(mLastOpenedFile);
        ShowMessage(Text::FileSaved);
        result = SaveResult::Saved;
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

SaveAnswer VornMainFrm::PromptUserForSave() {
    SaveAnswer result = SaveAnswer::Failed;
    Attempt([this, &result] {
        switch (Ask(Words(Text::SaveQuestion), Words(Text::SaveDialog), MsgButtons::YesNoCancel, MsgIcon::Question)) {
        case MsgResult::No:
            result = SaveAnswer::Declined;
            break;
        case MsgResult::Yes:
            if (SavePSFFunc() == SaveResult::Saved) {
                result = SaveAnswer::Saved;
                ShowMessage(Text::YourFileSaved);
            }
            break;
        default:
            result = SaveAnswer::Cancelled;
            ShowMessage(Text::CommandCancelled);
            break;
        }
    });
    return result;
}

// Whether what is in the window may be given up: nothing is unsaved, or it has been saved, or the user said so.
bool VornMainFrm::MayDropDocument() {
    if (!FuncBodyChangedFlag) {
        return true;
    }
    const SaveAnswer answer = PromptUserForSave();
    return answer == SaveAnswer::Saved || answer == SaveAnswer::Declined;
}

// The dialog is called as the menu item that leads to it.
FileDialogSettings VornMainFrm::DialogSettings(std::string_view menu) const {
    FileDialogSettings settings;
    settings.title = mDesktop.Menu(menu).Caption();
    std::erase(settings.title, '&');
    settings.title.resize(settings.title.find_last_not_of('.') + 1);
    settings.fileName = mLastOpenedFile;
    settings.cancelIsError = true;
    settings.flags = HideReadOnly;
    settings.filter = Words(Text::FileFilter);
    settings.filterIndex = 2; // one beyond the only pair: kept on purpose
    return settings;
}

// What is in the window counts as saved, or is no longer wanted.
void VornMainFrm::ForgetChanges() {
    FuncBodyChangeMode = 1;
    FuncBodyChangedFlag = false;
}

void VornMainFrm::mnuExit_Click() {
    SaveCurrentNodeCode(mCurrentNode);
    if (!MayDropDocument()) {
        return;
    }
    ForgetChanges();
    mWindow.Unload();
}

} // namespace tessaly
