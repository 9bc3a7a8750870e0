// The order of the calls is fixed: a window whose setter fails keeps what was set before it.
#include "app/ApplyLanguage.h"

#include "app/Catalogue.h"
#include "app/CatalogueTable.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

namespace {

struct TopNode {
    std::string_view key;
    std::string_view label; // the label's identifier while the node, or one below it, is edited
};

constexpr TopNode TopNodes[] = {
    {"_0f", "lblcodeEditFunctionCode"},
    {"_0e", "lblcodeEditEventCode"},
    {"_0v", "lblcodeEditVariableCode"},
};

// Every text starts out empty, and so it stays in a language that the catalogue does not know.
std::string Text(std::string_view identifier, std::uint8_t language) {
    std::string text;
    LookupPrompt(identifier, language, text);
    return text;
}

void ApplyToMembers(LanguageTarget& window, std::uint8_t language) {
    const std::string title = Text("titleVorn", language);
    window.SetCaption(title);
    window.SetPrompt("titleVorn", title);
    for (const std::string_view identifier : TextMembers) {
        window.SetPrompt(identifier, Text(identifier, language));
    }
}

void ApplyToMessage(LanguageTarget& window, std::uint8_t language) {
    const std::string identifier = window.StatusPanel2Identifier();
    window.SetStatusPanelText(2, identifier.empty() ? "" : Text(identifier, language));
}

// The label's identifier for the node `key`; "" for a missing node and one that is not at the top.
std::string_view LabelOf(const std::optional<std::string>& key) {
    const auto* node = std::find_if(std::begin(TopNodes), std::end(TopNodes),
                                    [&key](const TopNode& entry) { return key && entry.key == *key; });
    return node == std::end(TopNodes) ? "" : node->label;
}

void ApplyToFuncLabel(LanguageTarget& window, std::uint8_t language) {
    std::string_view label = LabelOf(window.CurrentNodeKey());
    if (label.empty()) {
        label = LabelOf(window.CurrentNodeParentKey());
    }
    window.SetFuncLabelCaption(label.empty() ? "" : Text(label, language));
}

void ApplyToControls(LanguageTarget& window, std::uint8_t language) {
    for (const LanguageTarget::Control& control : window.Controls()) {
        switch (control.kind) {
        case LanguageTarget::ControlKind::Menu:
            window.SetMenuCaption(control.name, Text(control.name, language));
            break;
        case LanguageTarget::ControlKind::Tree:
            window.SetNodeText("_0e", Text("nodeEvents", language));
            window.SetNodeText("_0f", Text("nodeFunctions", language));
            window.SetNodeText("_0v", Text("nodeVariables", language));
            break;
        case LanguageTarget::ControlKind::Other:
            break;
        }
    }
}

} // namespace

void ApplyLanguage(LanguageTarget& window, std::uint8_t language) {
    ApplyToMembers(window, language);
    ApplyToMessage(window, language);
    ApplyToFuncLabel(window, language);
    window.SetTreeViewerCaption(Text("lblcodeTreeViewer", language));
    window.SetStatusPanelText(1, Text("vornMainFrmPrmpt40", language) + window.LastOpenedFile());
    ApplyToControls(window, language);
    // Whatever is not English counts as German here: kept on purpose.
    window.SetMenuChecked("mnuGerman", language != EnglishLanguage);
    window.SetMenuChecked("mnuEnglish", language == EnglishLanguage);
}

} // namespace tessaly
