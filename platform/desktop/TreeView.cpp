// The control is asked first: where it fails, the items are as they were.
#include "platform/desktop/TreeView.h"

#include "platform/desktop/Raise.h"

#include <iterator>
#include <set>
#include <stdexcept>

namespace tessaly {

void TreeView::Clear() {
    RemoveNode(nullptr, mSelected != TreeItem::None);
    mItems.clear();
    mKeys.clear();
    mSelected = TreeItem::None;
}

TreeItem TreeView::Add(TreeItem parent, std::string_view key, std::string_view text) {
    if (mKeys.contains(key)) {
        throw std::invalid_argument("the key is taken");
    }
    const auto above = mItems.find(parent);
    if (parent != TreeItem::None && above == mItems.end()) {
        throw std::invalid_argument("there is no such parent");
    }
    const auto item = static_cast<TreeItem>(static_cast<std::uint32_t>(mLastItem) + 1);
    void* const node = Insert(item, parent, text);
    mLastItem = item;
    Item& added = mItems[item];
    added.parent = parent;
    added.key = key;
    added.text = text;
    added.node = node;
    mKeys.emplace(key, item);
    return item;
}

void TreeView::Remove(std::int32_t index) {
    if (index < 1 || static_cast<std::size_t>(index) > mItems.size()) {
        throw std::out_of_range("no item has this index");
    }
    const auto first = std::next(mItems.begin(), index - 1);
    std::set<TreeItem> removed = {first->first};
    for (auto item = std::next(first); item != mItems.end(); ++item) {
        if (removed.contains(item->second.parent)) {
            removed.insert(item->first);
        }
    }
    const bool isSelected = removed.contains(mSelected);
    RemoveNode(first->second.node, isSelected);
    mSelected = isSelected ? TreeItem::None : mSelected;
    for (const TreeItem item : removed) {
        mKeys.erase(mItems.at(item).key);
        mItems.erase(item);
    }
}

TreeItem TreeView::Find(std::string_view key) const {
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw std::out_of_range("no item has this key");
    }
    return found->second;
}

void TreeView::SetText(TreeItem item, std::string_view text) {
    Item& renamed = mItems.at(item);
    Item changed = renamed;
    changed.text = text;
    Change(renamed, changed);
}

void TreeView::SetMark(TreeItem item, Mark mark, std::string_view description) {
    Item& marked = mItems.at(item);
    Item changed = marked;
    changed.mark = mark;
    changed.markDescription = description;
    Change(marked, changed);
}

void TreeView::SetItalic(TreeItem item, bool isItalic, std::string_view description) {
    Item& slanted = mItems.at(item);
    Item changed = slanted;
    changed.isItalic = isItalic;
    changed.italicDescription = isItalic ? description : "";
    Change(slanted, changed);
}

void TreeView::Change(Item& item, const Item& changed) {
    const Look now = LookOf(changed);
    if (LookOf(item) != now) {
        ShowLook(item.node, now);
    }
    item = changed;
}

TreeView::Look TreeView::LookOf(const Item& item) {
    const bool isBoth = !item.markDescription.empty() && !item.italicDescription.empty();
    return {item.text, item.mark, item.isItalic, item.markDescription + (isBoth ? ", " : "") + item.italicDescription};
}

std::int32_t TreeView::Index(TreeItem item) const {
    const auto position = mItems.find(item);
    if (position == mItems.end()) {
        throw std::out_of_range("the item is not in the tree");
    }
    return static_cast<std::int32_t>(std::distance(mItems.begin(), position)) + 1;
}

void TreeView::Expand(TreeItem item) {
    ExpandNode(Node(item));
    SetExpanded(item, true);
}

void TreeView::SetExpanded(TreeItem item, bool isExpanded) {
    mItems.at(item).isExpanded = isExpanded;
}

void TreeView::Select(TreeItem item) {
    SelectNode(Node(item));
    mSelected = item;
}

// Nothing is told of an item that has gone in the meantime.
void TreeView::RaiseClick(TreeItem item) {
    if (mItems.contains(item)) {
        const FocusEvents::Command command(mControls.focus, FocusEvents::Keyboard::Stays);
        Raise(onNodeClick, item);
    }
}

} // namespace tessaly
