// The language of the window: the two commands that choose it, and what the language is applied to.
#include "app/Catalogue.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

void VornMainFrm::mnuEnglish_Click() {
    mLanguage = EnglishLanguage;
    ShowLanguage();
}

void VornMainFrm::mnuGerman_Click() {
    mLanguage = GermanLanguage;
    ShowLanguage();
}

void VornMainFrm::ShowLanguage() {
    ApplyLanguage(*this, mLanguage);
    ShowButtonTips();
}

void VornMainFrm::SetCaption(std::string_view text) {
    mWindow.SetCaption(text);
}

void VornMainFrm::SetPrompt(std::string_view identifier, std::string_view text) {
    prompts.Member(identifier) = text;
}

void VornMainFrm::SetStatusPanelText(int number, std::string_view text) {
    mDesktop.StatusBar1().SetPanelText(number, text);
}

std::optional<std::string> VornMainFrm::CurrentNodeKey() const {
    return mCurrentNode == TreeItem::None ? std::nullopt : std::optional(mCodeTree.Key(mCurrentNode));
}

std::optional<std::string> VornMainFrm::CurrentNodeParentKey() const {
    return mCurrentNode == TreeItem::None ? std::nullopt : std::optional(ParentKey(mCurrentNode));
}

void VornMainFrm::SetFuncLabelCaption(std::string_view text) {
    mDesktop.FuncLabel().SetCaption(text);
}

void VornMainFrm::SetTreeViewerCaption(std::string_view text) {
    mDesktop.LblcodeTreeViewer().SetCaption(text);
}

std::vector<LanguageTarget::Control> VornMainFrm::Controls() const {
    std::vector<Control> controls;
    for (const MenuItem* const menu : mMenus) {
        controls.push_back({ControlKind::Menu, menu->Name()});
    }
    controls.push_back({ControlKind::Tree, ""});
    return controls;
}

void VornMainFrm::SetMenuCaption(std::string_view name, std::string_view text) {
    Menu(name).SetCaption(text);
}

void VornMainFrm::SetNodeText(std::string_view key, std::string_view text) {
    mCodeTree.SetText(mCodeTree.Find(key), text);
}

void VornMainFrm::SetMenuChecked(std::string_view name, bool checked) {
    Menu(name).SetChecked(checked);
}

} // namespace tessaly
