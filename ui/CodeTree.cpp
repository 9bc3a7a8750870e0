// The code tree and the editing pane: selecting, committing, adding and deleting functions.
#include "document/Members.h"
#include "document/NewFunction.h"
#include "platform/desktop/Flagged.h"
#include "ui/Command.h"
#include "ui/UserFuncVarFrm.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

namespace {

// The eight events that have an item; OnMsg has none, on purpose.
constexpr std::int32_t ShownEvents = 8;

// How far an event item's index, counted from 1 over the whole tree, is from its event's index: the three groups
// come first.
constexpr std::int32_t EventItemOffset = 4;

} // namespace

// The groups are English in every language, until one is applied: kept on purpose.
void VornMainFrm::BuildCodeTree() {
    mLeft.clear();
    mCodeTree.Clear();
    mCameFrom.clear();
    mCurrentNode = TreeItem::None;
    const TreeItem references = mCodeTree.Add(TreeItem::None, ReferencesKey, Row(Text::ReferencesGroup).english);
    mCodeTree.SetTag(references, "variable");
    const TreeItem functions = mCodeTree.Add(TreeItem::None, FunctionsKey, Row(Text::FunctionsGroup).english);
    mCodeTree.SetTag(functions, "function");
    const TreeItem events = mCodeTree.Add(TreeItem::None, EventsKey, Row(Text::EventsGroup).english);
    mCodeTree.SetTag(events, "event");
    mCodeTree.Select(events);
    SetUpToolBar(EventTool);
    mDesktop.FuncLabel().SetCaption(Words(Text::EventLabel));
    for (std::int32_t i = 0; i < ShownEvents; ++i) {
        const std::string name(EventTable[static_cast<std::size_t>(i)].name);
        mCodeTree.Add(events, std::string(EventsKey) + std::to_string(i + 1), name + "()");
    }
    mCodeTree.Expand(events);
    mCodeTree.Expand(functions);
    mCodeTree.Expand(references);
    mFuncBody.SetFuncBodyAvailable(false);
    PutIntoPane("");
    SetUpFuncBodyTabs();
    Attempt([this] { mFinding.NoteItem(); });
}

void VornMainFrm::CodeTree_NodeClick(TreeItem node) {
    FuncBodyChangeMode = 1;
    SaveCurrentNodeCode(mCurrentNode);
    KeepPane();
    LeaveText();
    mCurrentNode = node;
    mShownNode = TreeItem::None;
    mFuncBody.SetFuncBodyAvailable(false);
    PutIntoPane("");
    ShowNodeCode(node);
    Attempt([this] { mFinding.NoteItem(); });
}

// After an error of the document, which is shown, the pane stays empty.
void VornMainFrm::ShowNodeCode(TreeItem node) {
    const std::string key = mCodeTree.Key(node);
    const std::string parent = ParentKey(node);
    SetUpToolBar(key == FunctionsKey || parent == FunctionsKey ? FuncVarTool : EventTool);
    if (key != EventsKey && key != FunctionsKey) {
        mFuncBody.SetFuncBodyAvailable(true);
        std::string member(ReferencesName);
        std::string code;
        Status status = Status::Done;
        if (key == ReferencesKey) {
            mSourceDoc->GetVarCode(code);
        } else if (parent == EventsKey) {
            const std::int32_t index = EventIndex(node);
            mSourceDoc->GetEventCodeByIndex(index, code);
            member = MemberName(*mSourceDoc, {CCodeOrigin::Kind::Event, index});
        } else {
            std::string prototype;
            status = mSourceDoc->GetFunctionCount() > 0 ? mSourceDoc->GetFunction(key, prototype, code) : Status::Done;
            member = std::string(FunctionPrefix) + key;
        }
        if (status != Status::Done) {
            TellStatus(status);
            return;
        }
        PutIntoPane(code, member);
        ReturnToText(code);
        mShownNode = node; // only now what the pane holds may go back to the document as such
        if (!mMessages.All().empty()) {
            Attempt([&] { ShowLineMarks(code); });
        }
    }
    if (parent.empty()) {
        mDesktop.FuncLabel().SetCaption(FuncLabelText());
    }
    StatusPanel2 = "";
    mDesktop.StatusBar1().SetPanelText(2, "");
}

// A user who comes back finds the caret where it was, and can undo what was done before.
void VornMainFrm::LeaveText() {
    Attempt([this] {
        if (!mShownMember.empty() && mFuncBody.FuncBodyAvailable()) {
            const bool isEdited = mFuncBody.CanUndo() || mFuncBody.CanRedo();
            std::string text = isEdited ? mFuncBody.Text() : "";
            mLeft[mShownMember] = {std::move(text), mFuncBody.TakeSight()};
        }
    });
}

// Of another text than was left only the caret's place is of use.
void VornMainFrm::ReturnToText(std::string_view text) {
    const auto left = mLeft.find(mShownMember);
    if (left == mLeft.end()) {
        return;
    }
    LeftText found = std::move(left->second);
    mLeft.erase(left);
    if (found.text != text) {
        found.sight.history = {};
    }
    Attempt([&] { mFuncBody.GiveSight(std::move(found.sight)); });
}

void VornMainFrm::PutIntoPane(std::string_view text, const std::string& member) {
    const Flagged filling(mIsFilling);
    mFuncBody.SetText(text);
    mShownMember = member;
    mIsCopyBehind = mIsUnsaved; // it tells what is selected
}

// A group has no text of its own. Where a control failed, the pane may hold another item's text, or none.
void VornMainFrm::SaveCurrentNodeCode(TreeItem node) {
    Attempt([this, node] {
        if (node != mShownNode) {
            return;
        }
        Status status = Status::Done;
        if (mCodeTree.Key(node) == ReferencesKey) {
            mSourceDoc->UpdateVarCode(mFuncBody.Text());
        } else if (ParentKey(node) == EventsKey) {
            mSourceDoc->UpdateEventCodeByIndex(EventIndex(node), mFuncBody.Text());
        } else if (ParentKey(node) == FunctionsKey && mSourceDoc->GetFunctionCount() > 0) {
            // The stored prototype becomes empty: kept on purpose, the C file takes it from the code.
            status = mSourceDoc->UpdateFunction(mCodeTree.Text(node), "", mFuncBody.Text());
        }
        if (status != Status::Done) {
            TellStatus(status);
        }
    });
    StatusPanel2 = "";
    WriteCopy(Flushing::Later);
}

// The pane's text is not stored first: what was edited in it and not stored is overwritten, kept on purpose.
void VornMainFrm::Form_AddFunction() {
    UserFuncVarFrm dialog(mDesktop);
    dialog.firstCharacterMessage = Words(Text::NameBeginsWithDigit);
    dialog.badCharacterMessage = Words(Text::NameHasBadCharacter);
    dialog.messageCaption = Words(Text::NameError);
    dialog.SetTexts({Words(Text::AddFunction), Words(Text::TypeFunctionName), Words(Text::Cancel)});
    dialog.ShowModal();
    const std::string name = dialog.FuncVarName();
    if (!dialog.WasConfirmed() || name.empty()) {
        return;
    }
    KeepPane();
    LeaveText();
    SelectFunctionsItem();
    const std::string text = NewFunctionText(name);
    const Status status = mSourceDoc->AddFunction(name, "", text);
    if (status == Status::Done) {
        FuncBodyChangedFlag = true;
        NoteChange();
        PutIntoPane(text, std::string(FunctionPrefix) + name);
        mFuncBody.SetFuncBodyAvailable(true);
        mCurrentNode = mCodeTree.Add(mCurrentNode, name, name);
        mShownNode = mCurrentNode;
        mCodeTree.Select(mCurrentNode);
        NoteEdited(mCurrentNode);
    } else if (status == Status::NameCollision) {
        Tell(Text::FunctionExists, Text::DuplicateFunction, MsgIcon::Stop);
    }
}

void VornMainFrm::Form_DeleteFunction() {
    try {
        if (IsFunctionItem(mCurrentNode)) {
            DeleteCurrentFunction();
        }
    } catch (const std::exception&) {
        Complain("UnhandledError in Form_DeleteFunction!", MsgIcon::None);
    }
}

void VornMainFrm::DeleteCurrentFunction() {
    const std::string name = mCodeTree.Text(mCurrentNode);
    const std::string tag = mCodeTree.Tag(mCodeTree.Parent(mCurrentNode));
    const std::string& remove = Words(Text::Delete);
    if (Ask(remove + " " + name + " ?", remove + " " + tag, MsgButtons::YesNo, MsgIcon::None) != MsgResult::Yes) {
        return;
    }
    KeepDocument(Reason::MemberDeleted);
    mLeft.erase(mShownMember);
    mCodeTree.Remove(mCodeTree.Index(mCurrentNode));
    mCurrentNode = TreeItem::None;
    mShownMember = "";
    const Status status = mSourceDoc->DeleteFunction(name);
    if (status != Status::Done) {
        TellStatus(status);
        return;
    }
    FuncBodyChangedFlag = true;
    NoteChange();
    SelectFunctionsItem();
    PutIntoPane("");
    mFuncBody.SetFuncBodyAvailable(false);
    Attempt([this] { mFinding.NoteItem(); });
}

void VornMainFrm::SetUpFuncBodyTabs() {
    try {
        const float interval = mFuncBody.GetExtent().width / static_cast<float>(mTabStopCount);
        std::vector<float> stops;
        for (int i = 0; i < mTabStopCount; ++i) {
            stops.push_back(static_cast<float>(i) * interval);
        }
        mFuncBody.SetTabStops(stops);
    } catch (const std::exception&) {
        Complain("Unhandled Error in SetUpFuncBodyTabs", MsgIcon::Exclamation);
    }
}

// The Tab key is for the pane alone, where it inserts a tab character.
void VornMainFrm::DisableTabKeyForUseOnlyInFuncBody() {
    try {
        FuncBodyChangeMode = 1;
        Control* const controls[] = {&mDesktop.LblcodeTreeViewer(), &mCodeTree,
                                     &mDesktop.FuncLabel(),         &mFuncBody,
                                     &mDesktop.VornToolBar(),       &mDesktop.StatusBar1()};
        for (Control* const control : controls) {
            if (control->HasTabStop()) { // to try it all the same costs the start an exception for each without
                control->SetTabStop(false);
            }
        }
    } catch (const std::exception&) {
        Complain("Unhandled Error in DisableTabKeyForUseOnlyInFuncBody", MsgIcon::Exclamation);
    }
}

// Of an error that has ended a routine.
void VornMainFrm::Complain(std::string_view complaint, MsgIcon icon) {
    Attempt([&] { Tell(complaint, Text::Title, icon); });
}

void VornMainFrm::FuncBody_GotFocus() {
    FuncBodyChangeMode = 2;
}

void VornMainFrm::FuncBody_LostFocus() {
    FuncBodyChangeMode = 1;
    mTypingHelp.Close();
    WriteCopy(Flushing::Later);
}

void VornMainFrm::FuncBody_Change() {
    NoteChange();
    if (!mIsFilling) {
        NoteEdited(mShownNode);
    }
    mFinding.NoteChange();
    if (FuncBodyChangeMode == 2) {
        FuncBodyChangedFlag = true;
    }
    Attempt([this] { mTypingHelp.FollowChange(); });
}

// The key of the item above `node`; "" at the top level.
std::string VornMainFrm::ParentKey(TreeItem node) const {
    const TreeItem parent = mCodeTree.Parent(node);
    return parent == TreeItem::None ? "" : mCodeTree.Key(parent);
}

std::int32_t VornMainFrm::EventIndex(TreeItem node) const {
    return mCodeTree.Index(node) - EventItemOffset;
}

bool VornMainFrm::IsFunctionItem(TreeItem node) const {
    return node != TreeItem::None && ParentKey(node) == FunctionsKey;
}

void VornMainFrm::SelectFunctionsItem() {
    mCurrentNode = mCodeTree.Find(FunctionsKey);
    mCodeTree.Select(mCurrentNode);
}

} // namespace tessaly
