// A tree in memory, and what a user can do with it.
#pragma once

#include "platform/desktop/TreeView.h"
#include "tests/desktop/Control.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tessaly::memory {

class TreeView final : public Control<tessaly::TreeView> {
public:
    TreeView(Faults& faults, Focus& focus) : Control(faults, focus, Keyboard::Used) {}

    void Clear() override;
    TreeItem Add(TreeItem parent, std::string_view key, std::string_view text) override;
    void Remove(std::int32_t index) override;
    std::int32_t Count() const override;
    TreeItem Find(std::string_view key) const override;
    TreeItem At(std::int32_t index) const override;
    std::string Key(TreeItem item) const override;
    std::string Text(TreeItem item) const override;
    void SetText(TreeItem item, std::string_view text) override;
    std::string Tag(TreeItem item) const override;
    void SetTag(TreeItem item, std::string_view tag) override;
    std::int32_t Index(TreeItem item) const override;
    TreeItem Parent(TreeItem item) const override;
    void Expand(TreeItem item) override;
    bool IsExpanded(TreeItem item) const override;
    void Select(TreeItem item) override;
    TreeItem Selected() const override;

    // The user clicks an item: the focus moves to the tree, the item is selected, onNodeClick is raised. Throws
    // ImpossibleAction when the item is not there or lies in a collapsed one.
    void Click(TreeItem item);
    void Click(std::string_view key);

    // The user collapses an item by the mouse. The focus moves to the tree. If the selected item is hidden now, this
    // one is selected as by a click. Throws ImpossibleAction when the item is not there, hidden or not expanded.
    void Collapse(TreeItem item);

    // The user presses the arrow keys: the selection moves over the items that can be seen. False, and nothing
    // happens, when the tree has not the focus or there is no further item.
    bool MoveUp();
    bool MoveDown();

    // What the user sees: a line for each item, two blanks for each level, the selected one with a "*" at the end.
    std::string Shown() const;

    bool TakeKey(int keyCode, int shift) override;

private:
    struct Item {
        TreeItem parent = TreeItem::None;
        std::string key;
        std::string text;
        std::string tag;
        bool isExpanded = false;
    };
    using Items = std::map<TreeItem, Item>; // in the order of adding

    Items::const_iterator Position(std::int32_t index) const;
    const Item& Get(TreeItem item) const;
    Item& Get(TreeItem item);
    std::vector<TreeItem> Visible() const;
    bool IsVisible(TreeItem item) const;
    void SelectByUser(TreeItem item);
    bool Move(std::ptrdiff_t step);

    Items mItems;
    std::map<std::string, TreeItem, std::less<>> mKeys;
    TreeItem mLastItem = TreeItem::None;
    TreeItem mSelected = TreeItem::None;
};

} // namespace tessaly::memory
