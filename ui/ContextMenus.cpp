// The menus of the pane and the tree. All of what they do keys or buttons do as well; the menu has the keyboard then.
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

#include <utility>

namespace tessaly {

// The command is over before the keyboard is back.
void VornMainFrm::ShowMenu(std::vector<ContextChoice> choices, ScreenPlace place) {
    std::vector<PopupRow> rows;
    for (const ContextChoice& choice : choices) {
        rows.push_back(choice.row);
    }
    mDesktop.Popup().Show(rows, place, [choices = std::move(choices)](std::size_t row) { choices.at(row).run(); });
}

PopupRow VornMainFrm::MenuRow(OwnText text, const std::string& keys, bool isEnabled) const {
    return {std::string(OwnWords(text, mLanguage)), keys, isEnabled};
}

// The pane has not the keyboard now, but what is done counts as typing.
void VornMainFrm::EditByMenu(const std::function<void()>& edit) {
    FuncBodyChangeMode = 2;
    Attempt(edit);
    FuncBodyChangeMode = 1; // until it has the keyboard again
}

void VornMainFrm::ShowPaneMenu(ScreenPlace place) {
    const ContextChoice line;
    const std::string control(OwnWords(OwnText::ControlKey, mLanguage));
    const std::string deleteKey(OwnWords(OwnText::DeleteKey, mLanguage));
    const bool isSelected = !mFuncBody.Selected().IsEmpty();
    const auto edit = [this](auto work) { return [this, work] { EditByMenu([this, work] { work(mFuncBody); }); }; };
    const auto find = [this](FindBar::Purpose purpose) { return [this, purpose] { mFinding.Open(purpose); }; };
    std::vector<ContextChoice> choices = {
        {MenuRow(OwnText::UndoStep, control + "Z", mFuncBody.CanUndo()), edit([](RichTextBox& pane) { pane.Undo(); })},
        {MenuRow(OwnText::RedoStep, control + "Y", mFuncBody.CanRedo()), edit([](RichTextBox& pane) { pane.Redo(); })},
        line,
        {MenuRow(OwnText::CutText, control + "X", isSelected),
         edit([](RichTextBox& pane) { pane.Do(RichTextBox::Clip::Cut); })},
        {MenuRow(OwnText::CopyText, control + "C", isSelected), [this] { mFuncBody.Do(RichTextBox::Clip::Copy); }},
        {MenuRow(OwnText::PasteText, control + "V"),
         edit([](RichTextBox& pane) { pane.Do(RichTextBox::Clip::Paste); })},
        {MenuRow(OwnText::DeleteText, deleteKey, isSelected), edit([](RichTextBox& pane) {
             const Selection selected = pane.Selected();
             pane.Do({{{selected.Begin(), selected.End(), u""}}, {selected.Begin(), selected.Begin()}});
         })},
        line,
        {MenuRow(OwnText::SelectAllText, control + "A"), [this] { mFuncBody.SelectAll(); }},
        line,
        {MenuRow(OwnText::FindText, control + "F"), find(FindBar::Purpose::Find)},
        {MenuRow(OwnText::GoToLineOfText, control + "G"), find(FindBar::Purpose::Line)},
        {MenuRow(OwnText::CommentText, control + "/"), edit([this](RichTextBox&) {
             FuncBody_KeyDown({KeySlash, 2, 0});
         })},
    };
    if (mMessages.HasSome()) {
        choices.push_back(line);
        choices.push_back({MenuRow(OwnText::ShowMessages, control + "J"), [this] { mMessages.ShowAgain(); }});
    }
    ShowMenu(std::move(choices), place);
}

// What the tool bar has no button for cannot be chosen here either.
void VornMainFrm::ShowTreeMenu(ScreenPlace place) {
    const ToolBar& bar = mDesktop.VornToolBar();
    const bool hasButtons = bar.ButtonCount() > 0;
    const std::string member = mShownMember;
    const ContextChoice line;
    ShowMenu(
        {
            {MenuRow(OwnText::AddItem, "F5", hasButtons), [this] { UseTool("Add"); }},
            {MenuRow(OwnText::DeleteItem, "F4", hasButtons && IsFunctionItem(mCurrentNode)),
             [this] { UseTool("Delete"); }},
            line,
            {MenuRow(OwnText::GoToFirstMessage, "", mMessages.FirstOf(member).has_value()),
             [this, member] { mMessages.GoToFirst(member); }},
        },
        place);
}

} // namespace tessaly
