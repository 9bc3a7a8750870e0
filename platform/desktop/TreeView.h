// A tree of items with unique keys. An item's index counts from 1 over the whole tree in the order the items were
// added, and closes up after a removal, so it is a position and not an identity.
#pragma once

#include "platform/desktop/Control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

// Names an item as long as it is in the tree; never given to another item of the same tree again. 0 is no item.
enum class TreeItem : std::uint32_t { None = 0 };

class TreeView : public Control {
public:
    // Raised when the user selects an item, by mouse or keyboard, after the item has become the selected one; a click
    // on the item that is selected already raises it, too, and so does an item that the user collapses over the
    // selected one, in whose place it is selected. Never raised by Select.
    std::function<void(TreeItem item)> onNodeClick;

    // Removes all items; nothing is selected then.
    virtual void Clear() = 0;

    // Adds an item as the last child of `parent` (None = top level), with an empty tag, collapsed, and not selected.
    // Throws std::invalid_argument, and adds nothing, when `key` is taken (keys are compared exactly) or there is no
    // such parent.
    virtual TreeItem Add(TreeItem parent, std::string_view key, std::string_view text) = 0;

    // Removes the item at `index` with all below it; if one of them was selected nothing is selected then.
    // Throws std::out_of_range when there is none.
    virtual void Remove(std::int32_t index) = 0;

    virtual std::int32_t Count() const = 0;

    // The item with exactly this key. Throws std::out_of_range when there is none.
    virtual TreeItem Find(std::string_view key) const = 0;

    // The item at `index`, from 1. Throws std::out_of_range when there is none.
    virtual TreeItem At(std::int32_t index) const = 0;

    // All of these throw std::out_of_range for an item that is not in the tree.
    virtual std::string Key(TreeItem item) const = 0;
    virtual std::string Text(TreeItem item) const = 0;
    virtual void SetText(TreeItem item, std::string_view text) = 0;
    virtual std::string Tag(TreeItem item) const = 0;
    virtual void SetTag(TreeItem item, std::string_view tag) = 0;
    virtual std::int32_t Index(TreeItem item) const = 0;
    virtual TreeItem Parent(TreeItem item) const = 0; // None at the top level
    virtual void Expand(TreeItem item) = 0;
    virtual bool IsExpanded(TreeItem item) const = 0;
    virtual void Select(TreeItem item) = 0;

    virtual TreeItem Selected() const = 0;
};

} // namespace tessaly
