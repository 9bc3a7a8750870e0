// A tree of items with unique keys. An item's index counts from 1 over the whole tree in the order the items were
// added, and closes up after a removal, so it is a position and not an identity.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/LineMarks.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tessaly {

// Names an item as long as it is in the tree; never given to another item of the same tree again. 0 is no item.
enum class TreeItem : std::uint32_t { None = 0 };

// The items are kept here; the control of a desktop shows them and tells what the user does.
class TreeView : public Control {
public:
    explicit TreeView(Controls& controls) : Control(controls, Keyboard::Used) {}

    // Raised when the user selects an item, by mouse or keyboard, after the item has become the selected one; a click
    // on the selected item raises it, too. So does collapsing an item above the selected one, which then is selected
    // instead. Never raised by Select.
    std::function<void(TreeItem item)> onNodeClick;

    // Removes all items; nothing is selected then.
    void Clear();

    // Adds an item as the last child of `parent` (None = top level), with an empty tag, collapsed, and not selected.
    // Throws std::invalid_argument, and adds nothing, when `key` is taken (keys are compared exactly) or there is no
    // such parent.
    TreeItem Add(TreeItem parent, std::string_view key, std::string_view text);

    // Removes the item at `index` with all below it; if one of them was selected nothing is selected then.
    // Throws std::out_of_range when there is none.
    void Remove(std::int32_t index);

    // The item with exactly this key. Throws std::out_of_range when there is none.
    TreeItem Find(std::string_view key) const;

    // All of these throw std::out_of_range for an item that is not in the tree.
    const std::string& Key(TreeItem item) const { return mItems.at(item).key; }
    const std::string& Text(TreeItem item) const { return mItems.at(item).text; }
    void SetText(TreeItem item, std::string_view text);
    const std::string& Tag(TreeItem item) const { return mItems.at(item).tag; }
    void SetTag(TreeItem item, std::string_view tag) { mItems.at(item).tag = tag; }
    // A picture beside the item, none at first. `description` says the same in words: a screen reader has it, and it
    // is shown where the mouse rests on the item. The text stays what it is.
    void SetMark(TreeItem item, Mark mark, std::string_view description);

    // Its text in italics, or upright as at first. `description` says why, behind that of the mark.
    void SetItalic(TreeItem item, bool isItalic, std::string_view description);

    std::int32_t Index(TreeItem item) const;
    TreeItem Parent(TreeItem item) const { return mItems.at(item).parent; } // None at the top level
    void Expand(TreeItem item);
    void Select(TreeItem item);

protected:
    struct Item {
        TreeItem parent = TreeItem::None;
        std::string key;
        std::string text;
        std::string tag;
        Mark mark = Mark::None;
        std::string markDescription;
        bool isItalic = false;
        std::string italicDescription;
        bool isExpanded = false; // also wished for, before there are children
        void* node = nullptr;    // what the control knows it by
    };

    struct Look {
        std::string text;
        Mark mark = Mark::None;
        bool isItalic = false;
        std::string description; // of both

        bool operator==(const Look&) const = default;
    };
    static Look LookOf(const Item& item);

    // Items get rising numbers, so that a map keeps them in the order of adding and parents before their children.
    using Items = std::map<TreeItem, Item>;

    // What a desktop does with its control. `node` is the item's.
    virtual void* Insert(TreeItem item, TreeItem parent, std::string_view text) = 0; // returns the new node

    // With all that is below, of which one may be selected; null for all nodes.
    virtual void RemoveNode(void* node, bool isSelected) = 0;

    virtual void ShowLook(void* node, const Look& look) = 0;
    virtual void ExpandNode(void* node) = 0;
    virtual void SelectNode(void* node) = 0;

    const Items& AllItems() const { return mItems; }
    void* Node(TreeItem item) const { return mItems.at(item).node; }
    bool IsExpanded(TreeItem item) const { return mItems.at(item).isExpanded; }
    void SetExpanded(TreeItem item, bool isExpanded);

    // What is selected, None when nothing is.
    TreeItem Selected() const { return mSelected; }

    // The user has selected this item; it is to be told by RaiseClick.
    void SetSelected(TreeItem item) { mSelected = item; }
    void RaiseClick(TreeItem item);

private:
    void Change(Item& item, const Item& changed);

    Items mItems;
    std::map<std::string, TreeItem, std::less<>> mKeys;
    TreeItem mLastItem = TreeItem::None;
    TreeItem mSelected = TreeItem::None;
};

} // namespace tessaly
