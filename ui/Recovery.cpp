// Copies of what is not saved, made on events, and the way back from them. All of this stands beside the commands: a
// failure in here changes nothing of what they do.
#include "document/Members.h"
#include "recovery/Differences.h"
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

// A control may be short of memory for a moment, and its text may be about to go.
std::string VornMainFrm::PaneText() {
    std::optional<std::string> text;
    for (int attempt = 1; attempt < 3 && !text; ++attempt) {
        Attempt([&] { text = mFuncBody.Text(); });
    }
    return text ? *text : mFuncBody.Text();
}

void VornMainFrm::WithContent(const std::function<void(const WindowContent& content)>& use) {
    const std::string text = mShownMember.empty() ? "" : PaneText();
    std::size_t caret = 0;
    Attempt([&] { caret = mShownMember.empty() ? 0 : mFuncBody.CaretPosition(); });
    use({*mSourceDoc, mShownMember, text, caret, mFile.path, mFile.mark, mLanguage});
}

void VornMainFrm::NoteChange() {
    if (!mIsFilling) {
        mIsUnsaved = true;
        mIsCopyBehind = true;
    }
}

void VornMainFrm::WriteCopyWhenIdle() {
    if (mIsCopyBehind && mRecovery.IsCheap()) {
        WriteCopy(Flushing::Later);
    }
}

// One that cannot be written is tried again by the next event.
void VornMainFrm::WriteCopy(Flushing flushing) {
    if (!mIsUnsaved || (!mIsCopyBehind && (flushing == Flushing::Later || mIsOnDisk))) {
        return;
    }
    Attempt([this, flushing] {
        WithContent([this, flushing](const WindowContent& content) {
            if (!mRecovery.Write(content, flushing)) {
                mIsCopyBehind = false;
                mIsOnDisk = flushing == Flushing::Now;
            }
        });
    });
}

// Whether a Save may open the file. What it would destroy there must be whole somewhere else before; where no file is
// there is nothing to destroy.
bool VornMainFrm::IsSafeToReplace(const std::string& fileName) {
    bool isSafe = false;
    Attempt([&] {
        WithContent([&](const WindowContent& content) { isSafe = !mRecovery.WriteBeforeSave(content, fileName); });
    });
    Attempt([&] { isSafe = isSafe || !mDesktop.Files().FileExists(fileName); });
    return isSafe;
}

// Whatever the document tells: the file has what the window holds, or the copy stays.
Status VornMainFrm::Save(const std::string& fileName) {
    const Status status = mSourceDoc->SaveFile(fileName);
    mIsUnsaved = true;
    mIsCopyBehind = true;
    mHasSaveFailed = true;
    Attempt([&] {
        if (const std::optional<FileMark> mark = mRecovery.DropAfterSave(fileName)) {
            NoteLoaded("");
            mFile = {mRecovery.FullPath(fileName), mark};
        }
    });
    return status;
}

void VornMainFrm::NoteLoaded(const std::string& fileName) {
    mIsUnsaved = false;
    mIsCopyBehind = false;
    mHasSaveFailed = false;
    ShowEdited(false);
    mEditedItems.clear();
    mFile = {};
    Attempt([&] {
        if (!fileName.empty()) {
            mFile = {mRecovery.FullPath(fileName), mRecovery.MarkOfFile(fileName)};
        }
    });
}

void VornMainFrm::KeepDocument(Reason reason) {
    if (mIsUnsaved) {
        Attempt([&] { WithContent([&](const WindowContent& content) { mRecovery.Keep(content, reason); }); });
    }
}

// Before another text takes the place of one that was edited and not stored.
void VornMainFrm::KeepPane() {
    Attempt([this] {
        if (mShownMember.empty() || !mIsUnsaved) {
            return;
        }
        const std::optional<CCodeOrigin> member = FindMember(*mSourceDoc, mShownMember);
        if (!member || MemberText(*mSourceDoc, *member) != PaneText()) {
            KeepDocument(Reason::TextReplaced);
        }
    });
}

// Nobody can be asked at the end of a session, so nothing is given up then: the next start asks.
void VornMainFrm::GiveUpDocument(Reason reason) {
    if (!mIsUnsaved || mDesktop.MessageBoxes().HasNobody()) {
        return;
    }
    Attempt([&] {
        WithContent([&](const WindowContent& content) {
            if (!mRecovery.Keep(content, reason)) {
                mRecovery.Drop();
                mIsUnsaved = false;
                mIsCopyBehind = false;
            }
        });
    });
}

void VornMainFrm::OfferLeft() {
    Attempt([this] {
        if (const std::optional<Copy> copy = mRecovery.FindLeft(*mSourceDoc)) {
            Offer(*copy);
        }
    });
}

// For a file that was just opened.
void VornMainFrm::OfferBeside() {
    Attempt([this] {
        if (const std::optional<Copy> copy = mRecovery.FindBeside(mLastOpenedFile, *mSourceDoc)) {
            Offer(*copy);
        }
    });
}

// Asks whether to go on with what an earlier program left.
void VornMainFrm::Offer(const Copy& copy) {
    const auto words = [this](OwnText text) { return std::string(OwnWords(text, mLanguage)); };
    const std::string path = copy.origin.path.empty() ? words(OwnText::Untitled) : copy.origin.path;
    const std::string question = words(OwnText::EndedBeforeSaved) + "\n" + path + "\n\n" + words(OwnText::GoOnQuestion);
    if (Ask(question, words(OwnText::Recovery), MsgButtons::YesNo, MsgIcon::Question) == MsgResult::Yes) {
        GoOnWith(copy);
    } else if (!mDesktop.MessageBoxes().HasNobody()) {
        mRecovery.GiveUp(copy, Reason::NotRecovered);
    }
}

// Without its name where the file is not what the edits began from, so that nothing is overwritten unasked.
void VornMainFrm::GoOnWith(const Copy& copy) {
    std::unique_ptr<VornSrcObj> document = NewDocument();
    if (mRecovery.Load(copy, *document) != Status::Done) {
        return;
    }
    mSourceDoc = std::move(document);
    mRecovery.Adopt(copy);
    FuncBodyChangedFlag = true;
    NoteChange();
    const Origin& origin = copy.origin;
    const bool isSameFile = !origin.path.empty() && mRecovery.MarkOfFile(origin.path) == origin.file;
    mFile = isSameFile ? DocumentFile{origin.path, origin.file} : DocumentFile{};
    mLastOpenedFile = mFile.path;
    mShownMember = "";
    mShownNode = TreeItem::None;
    BuildCodeTree();
    AddFunctionItems(true);
    mCurrentNode = mCodeTree.Find(EventsKey);
    ShowFileName(mLastOpenedFile);
    mDesktop.StatusBar1().SetPanelText(2, "");
    StatusPanel2 = "";
    mMessages.Forget();
    SelectMember(origin.item, static_cast<std::size_t>(origin.caret));
    Attempt([&] { NoteEditedSince(origin.path); });
}

// Of a file that is gone, or cannot be loaded any more, all is unsaved.
void VornMainFrm::NoteEditedSince(const std::string& fileName) {
    const std::unique_ptr<VornSrcObj> saved = NewDocument();
    if (fileName.empty()) {
        saved->Init();
    } else {
        saved->LoadFile(fileName);
    }
    for (const std::string& member : DifferingMembers(*mSourceDoc, *saved)) {
        const TreeItem item = ItemOf(member);
        if (member == ReferencesName || mCodeTree.Parent(item) != TreeItem::None) {
            mEditedItems.insert(item);
        }
    }
    ShowEdited(true);
}

void VornMainFrm::SelectMember(const std::string& member, std::size_t caret) {
    if (FindMember(*mSourceDoc, member)) {
        const TreeItem item = ItemOf(member);
        mCodeTree.Select(item);
        CodeTree_NodeClick(item);
        mFuncBody.MoveCaret(caret);
    }
}

} // namespace tessaly
