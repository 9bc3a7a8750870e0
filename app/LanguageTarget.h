// The window that a language is applied to, as far as that is concerned. Texts are UTF-8.
// What a setter throws ends the application of the language; what was set before stays.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class LanguageTarget {
public:
    enum class ControlKind { Menu, Tree, Other };

    struct Control {
        ControlKind kind = ControlKind::Other;
        std::string name; // used of menus only
    };

    virtual ~LanguageTarget() = default;

    // Sets the window's own caption.
    virtual void SetCaption(std::string_view text) = 0;

    // Sets the member named `identifier`: `titleVorn` or one of TextMembers.
    virtual void SetPrompt(std::string_view identifier, std::string_view text) = 0;

    // The identifier of the message in status panel 2; "" when the panel is blank.
    virtual std::string StatusPanel2Identifier() const = 0;

    // The path of the current file; "" while untitled.
    virtual std::string LastOpenedFile() const = 0;

    // Sets the text of status panel `number`, which is 1 or 2.
    virtual void SetStatusPanelText(int number, std::string_view text) = 0;

    // The key of the tree node being edited, and that of the node above it. No value when there is no such node;
    // a node at the top level has none above it. The second is not asked for when the first says enough.
    virtual std::optional<std::string> CurrentNodeKey() const = 0;
    virtual std::optional<std::string> CurrentNodeParentKey() const = 0;

    // Set the captions of the labels `FuncLabel`, above the editing pane, and `lblcodeTreeViewer`, above the tree.
    virtual void SetFuncLabelCaption(std::string_view text) = 0;
    virtual void SetTreeViewerCaption(std::string_view text) = 0;

    // All controls in the window's order. A line between menu items is no menu here: it would get the text of an
    // identifier that is not in the catalogue.
    virtual std::vector<Control> Controls() const = 0;

    // Sets the caption of the menu or menu item `name`, one of those that Controls gave. "&" marks the access key.
    virtual void SetMenuCaption(std::string_view name, std::string_view text) = 0;

    // Sets the text of the tree node with the key `key`: "_0e", "_0f" or "_0v". Called only when Controls gave a tree.
    virtual void SetNodeText(std::string_view key, std::string_view text) = 0;

    // Sets or takes away the check mark of the menu item `name`: `mnuEnglish` or `mnuGerman`.
    virtual void SetMenuChecked(std::string_view name, bool checked) = 0;
};

} // namespace tessaly
