// A tree in memory, and what a user can do with it.
#pragma once

#include "platform/desktop/TreeView.h"
#include "tests/desktop/Control.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class TreeView final : public Control<tessaly::TreeView>, public KeyTarget {
public:
    using Control::Control;

    // What the user sees.
    std::int32_t Count() const { return static_cast<std::int32_t>(AllItems().size()); }
    TreeItem At(std::int32_t index) const { return std::next(AllItems().begin(), index - 1)->first; }
    using tessaly::TreeView::IsExpanded;
    using tessaly::TreeView::Selected;

    // The user clicks an item: the focus moves to the tree, the item is selected, onNodeClick is raised. Throws
    // ImpossibleAction when the item is not there or lies in a collapsed one.
    void Click(TreeItem item);
    void Click(std::string_view key);

    // The user clicks an item with the right button.
    void RightClick(TreeItem item);

    // The user collapses an item by the mouse. The focus moves to the tree. If the selected item is hidden now, this
    // one is selected as by a click. Throws ImpossibleAction when the item is not there, hidden or not expanded.
    void Collapse(TreeItem item);

    // The user presses the arrow keys: the selection moves over the items that can be seen. False, and nothing
    // happens, when the tree has not the focus or there is no further item.
    bool MoveUp();
    bool MoveDown();

    // The user types letters in a row, while the tree has the focus: the next item that can be seen and begins with
    // them is selected.
    void Type(std::string_view letters);

    Mark MarkOf(TreeItem item) const { return AllItems().at(item).mark; }
    bool IsItalic(TreeItem item) const { return AllItems().at(item).isItalic; }
    std::string DescriptionOf(TreeItem item) const { return LookOf(AllItems().at(item)).description; }

    // What the user sees: a line for each item, two blanks for each level, the selected one with a "*" at the end.
    std::string Shown() const;

    // The same lines, also of what is hidden.
    std::vector<std::string> AllShown() const;

    bool TakeKey(int keyCode, int shift) override;

private:
    void* Insert(TreeItem item, TreeItem parent, std::string_view text) override;
    void RemoveNode(void* node, bool isSelected) override;
    void ShowLook(void* node, const Look& look) override;
    void ExpandNode(void* node) override;
    void SelectNode(void* node) override;

    std::vector<TreeItem> FromTopToBottom(bool withHidden) const;
    std::string Line(TreeItem item) const;
    std::vector<TreeItem> Visible() const { return FromTopToBottom(false); }
    bool IsVisible(TreeItem item) const;
    void SelectByUser(TreeItem item);
    bool Move(std::ptrdiff_t step);

    std::string mSought; // the letters that were typed in a row
};

} // namespace tessaly::memory
