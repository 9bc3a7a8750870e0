// Items get rising numbers, so that a map keeps them in the order of adding and parents before their children.
#include "tests/desktop/TreeView.h"

#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tessaly {

void MemoryTreeView::Clear() {
    CountCall();
    mItems.clear();
    mKeys.clear();
    mSelected = TreeItem::None;
}

TreeItem MemoryTreeView::Add(TreeItem parent, std::string_view key, std::string_view text) {
    CountCall();
    if (mKeys.contains(key)) {
        throw std::invalid_argument("the key is taken");
    }
    if (parent != TreeItem::None && !mItems.contains(parent)) {
        throw std::invalid_argument("there is no such parent");
    }
    mLastItem = static_cast<TreeItem>(static_cast<std::uint32_t>(mLastItem) + 1);
    mItems[mLastItem] = {parent, std::string(key), std::string(text), {}, false};
    mKeys.emplace(key, mLastItem);
    return mLastItem;
}

void MemoryTreeView::Remove(std::int32_t index) {
    CountCall();
    std::vector<TreeItem> removed = {Position(index)->first};
    for (const auto& [item, content] : mItems) {
        if (std::find(removed.begin(), removed.end(), content.parent) != removed.end()) {
            removed.push_back(item);
        }
    }
    for (const TreeItem item : removed) {
        mKeys.erase(Get(item).key);
        mItems.erase(item);
    }
    if (!mItems.contains(mSelected)) {
        mSelected = TreeItem::None;
    }
}

std::int32_t MemoryTreeView::Count() const {
    CountCall();
    return static_cast<std::int32_t>(mItems.size());
}

TreeItem MemoryTreeView::Find(std::string_view key) const {
    CountCall();
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw std::out_of_range("no item has this key");
    }
    return found->second;
}

TreeItem MemoryTreeView::At(std::int32_t index) const {
    CountCall();
    return Position(index)->first;
}

std::string MemoryTreeView::Key(TreeItem item) const {
    CountCall();
    return Get(item).key;
}

std::string MemoryTreeView::Text(TreeItem item) const {
    CountCall();
    return Get(item).text;
}

void MemoryTreeView::SetText(TreeItem item, std::string_view text) {
    CountCall();
    Get(item).text = text;
}

std::string MemoryTreeView::Tag(TreeItem item) const {
    CountCall();
    return Get(item).tag;
}

void MemoryTreeView::SetTag(TreeItem item, std::string_view tag) {
    CountCall();
    Get(item).tag = tag;
}

std::int32_t MemoryTreeView::Index(TreeItem item) const {
    CountCall();
    Get(item);
    return static_cast<std::int32_t>(std::distance(mItems.begin(), mItems.find(item))) + 1;
}

TreeItem MemoryTreeView::Parent(TreeItem item) const {
    CountCall();
    return Get(item).parent;
}

void MemoryTreeView::Expand(TreeItem item) {
    CountCall();
    Get(item).isExpanded = true;
}

bool MemoryTreeView::IsExpanded(TreeItem item) const {
    CountCall();
    return Get(item).isExpanded;
}

void MemoryTreeView::Select(TreeItem item) {
    CountCall();
    Get(item);
    mSelected = item;
}

TreeItem MemoryTreeView::Selected() const {
    CountCall();
    return mSelected;
}

void MemoryTreeView::Click(TreeItem item) {
    CheckReachable("a click into the tree");
    if (!IsVisible(item)) {
        throw ImpossibleAction("a click on a tree item that cannot be seen");
    }
    TakeFocus();
    SelectByUser(item);
}

void MemoryTreeView::Click(std::string_view key) {
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw ImpossibleAction("a click on the tree item \"" + std::string(key) + "\", which is not there");
    }
    Click(found->second);
}

void MemoryTreeView::Collapse(TreeItem item) {
    CheckReachable("a click into the tree");
    if (!IsVisible(item) || !Get(item).isExpanded) {
        throw ImpossibleAction("the collapse of a tree item that is hidden or not expanded");
    }
    TakeFocus();
    const bool wasSeen = IsVisible(mSelected);
    Get(item).isExpanded = false;
    if (wasSeen && !IsVisible(mSelected)) {
        SelectByUser(item);
    }
}

bool MemoryTreeView::MoveUp() {
    return Move(-1);
}

bool MemoryTreeView::MoveDown() {
    return Move(1);
}

std::string MemoryTreeView::Shown() const {
    std::string shown;
    for (const TreeItem item : Visible()) {
        for (TreeItem above = Get(item).parent; above != TreeItem::None; above = Get(above).parent) {
            shown += "  ";
        }
        shown += Get(item).text + (item == mSelected ? "*\n" : "\n");
    }
    return shown;
}

bool MemoryTreeView::TakeKey(int keyCode, int /*shift*/) {
    if (keyCode == MemoryKeyUp) {
        MoveUp();
    } else if (keyCode == MemoryKeyDown) {
        MoveDown();
    }
    return keyCode != MemoryKeyTab;
}

MemoryTreeView::Items::const_iterator MemoryTreeView::Position(std::int32_t index) const {
    if (index < 1 || static_cast<std::size_t>(index) > mItems.size()) {
        throw std::out_of_range("no item has this index");
    }
    return std::next(mItems.begin(), index - 1);
}

const MemoryTreeView::Item& MemoryTreeView::Get(TreeItem item) const {
    return mItems.at(item);
}

MemoryTreeView::Item& MemoryTreeView::Get(TreeItem item) {
    return mItems.at(item);
}

// The items whose parents are all expanded, from top to bottom.
std::vector<TreeItem> MemoryTreeView::Visible() const {
    std::map<TreeItem, std::vector<TreeItem>> children;
    for (const auto& [item, content] : mItems) {
        children[content.parent].push_back(item);
    }
    std::vector<TreeItem> visible;
    std::vector<TreeItem> waiting(children[TreeItem::None].rbegin(), children[TreeItem::None].rend());
    while (!waiting.empty()) {
        const TreeItem item = waiting.back();
        waiting.pop_back();
        visible.push_back(item);
        if (Get(item).isExpanded) {
            waiting.insert(waiting.end(), children[item].rbegin(), children[item].rend());
        }
    }
    return visible;
}

bool MemoryTreeView::IsVisible(TreeItem item) const {
    const std::vector<TreeItem> visible = Visible();
    return std::find(visible.begin(), visible.end(), item) != visible.end();
}

void MemoryTreeView::SelectByUser(TreeItem item) {
    mSelected = item;
    const FocusEvents::Command command(Focus(), FocusEvents::Keyboard::Stays);
    if (onNodeClick) {
        onNodeClick(item);
    }
}

bool MemoryTreeView::Move(std::ptrdiff_t step) {
    CheckReachable("a key in the tree");
    const std::vector<TreeItem> visible = Visible();
    const auto selected = std::find(visible.begin(), visible.end(), mSelected) - visible.begin();
    const auto count = static_cast<std::ptrdiff_t>(visible.size());
    // Without a selection that can be seen the first item is next.
    const std::ptrdiff_t next = selected == count ? 0 : selected + step;
    if (!HasFocus() || next < 0 || next >= count) {
        return false;
    }
    SelectByUser(visible[static_cast<std::size_t>(next)]);
    return true;
}

} // namespace tessaly
