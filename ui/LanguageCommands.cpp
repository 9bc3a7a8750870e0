// The language of the window: the two commands that choose it, and all that shows it.
#include "ui/Command.h"
#include "ui/MenuTable.h"
#include "ui/VornMainFrm.h"

#include <algorithm>
#include <iterator>

namespace tessaly {

namespace {

// A group of the code tree, and the label over the pane while it, or an item in it, is edited.
struct Group {
    std::string_view key;
    Text name;
    Text label;
};

constexpr Group Groups[] = {
    {EventsKey, Text::EventsGroup, Text::EventLabel},
    {FunctionsKey, Text::FunctionsGroup, Text::FunctionLabel},
    {ReferencesKey, Text::ReferencesGroup, Text::ReferencesLabel},
};

const Group* FindGroup(std::string_view key) {
    const auto* group =
        std::find_if(std::begin(Groups), std::end(Groups), [key](const Group& entry) { return entry.key == key; });
    return group == std::end(Groups) ? nullptr : group;
}

} // namespace

void VornMainFrm::mnuEnglish_Click() {
    mLanguage = EnglishLanguage;
    ShowLanguage();
}

void VornMainFrm::mnuGerman_Click() {
    mLanguage = GermanLanguage;
    ShowLanguage();
}

// The first control that fails ends it, as in every command; those behind it keep their texts.
void VornMainFrm::ShowLanguage() {
    ApplyLanguage(*this, mLanguage);
    const auto lookup = [this](std::string_view identifier) {
        std::string text; // stays empty in a language that the catalogue does not know
        LookupPrompt(identifier, mLanguage, text);
        return text;
    };
    mWindow.SetCaption(Words(Text::Title));
    mDesktop.StatusBar1().SetPanelText(2, StatusPanel2.empty() ? "" : lookup(StatusPanel2));
    mDesktop.FuncLabel().SetCaption(FuncLabelText());
    mDesktop.LblcodeTreeViewer().SetCaption(lookup(Row(Text::TreeLabel).identifier));
    ShowFileName(mLastOpenedFile);
    for (const MenuEntry& menu : MenuTable) {
        mDesktop.Menu(menu.name).SetCaption(lookup(menu.name));
    }
    for (const Group& group : Groups) {
        mCodeTree.SetText(mCodeTree.Find(group.key), lookup(Row(group.name).identifier));
    }
    // Whatever is not English counts as German here: kept on purpose.
    mDesktop.Menu("mnuGerman").SetChecked(mLanguage != EnglishLanguage);
    mDesktop.Menu("mnuEnglish").SetChecked(mLanguage == EnglishLanguage);
    ShowButtonTips();
    ShowEdited(true);
    Attempt([this] { mMessages.SetLanguage(mLanguage); });
    Attempt([this] { mFinding.SetLanguage(mLanguage); });
}

std::string VornMainFrm::FuncLabelText() const {
    if (mCurrentNode == TreeItem::None) {
        return "";
    }
    const Group* group = FindGroup(mCodeTree.Key(mCurrentNode));
    if (group == nullptr) {
        group = FindGroup(ParentKey(mCurrentNode));
    }
    return group == nullptr ? "" : Words(group->label);
}

// Shows a message in status panel 2 and remembers which it is, so that a change of language can show it again.
void VornMainFrm::ShowMessage(Text message) {
    mDesktop.StatusBar1().SetPanelText(2, Words(message));
    StatusPanel2 = Row(message).identifier;
}

void VornMainFrm::ShowFileName(std::string_view fileName) {
    mDesktop.StatusBar1().SetPanelText(1, Words(Text::FilePrefix) + std::string(fileName));
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

// Items that have gone since are passed over.
void VornMainFrm::ShowEdited(bool areEdited) {
    for (const TreeItem item : mEditedItems) {
        Attempt([&] { mCodeTree.SetItalic(item, areEdited, OwnWords(OwnText::NotSaved, mLanguage)); });
    }
}

} // namespace tessaly
