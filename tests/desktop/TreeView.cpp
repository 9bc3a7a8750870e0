// Items get rising numbers, so that a map keeps them in the order of adding and parents before their children.
#include "tests/desktop/TreeView.h"

#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tessaly::memory {

void TreeView::Clear() {
    CountCall();
    mItems.clear();
    mKeys.clear();
    mSelected = TreeItem::None;
}

TreeItem TreeView::Add(TreeItem parent, std::string_view key, std::string_view text) {
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

void TreeView::Remove(std::int32_t index) {
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

std::int32_t TreeView::Count() const {
    CountCall();
    return static_cast<std::int32_t>(mItems.size());
}

TreeItem TreeView::Find(std::string_view key) const {
    CountCall();
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw std::out_of_range("no item has this key");
    }
    return found->second;
}

TreeItem TreeView::At(std::int32_t index) const {
    CountCall();
    return Position(index)->first;
}

std::string TreeView::Key(TreeItem item) const {
    CountCall();
    return Get(item).key;
}

std::string TreeView::Text(TreeItem item) const {
    CountCall();
    return Get(item).text;
}

void TreeView::SetText(TreeItem item, std::string_view text) {
    CountCall();
    Get(item).text = text;
}

std::string TreeView::Tag(TreeItem item) const {
    CountCall();
    return Get(item).tag;
}

void TreeView::SetTag(TreeItem item, std::string_view tag) {
    CountCall();
    Get(item).tag = tag;
}

std::int32_t TreeView::Index(TreeItem item) const {
    CountCall();
    Get(item);
    return static_cast<std::int32_t>(std::distance(mItems.begin(), mItems.find(item))) + 1;
}

TreeItem TreeView::Parent(TreeItem item) const {
    CountCall();
    return Get(item).parent;
}

void TreeView::Expand(TreeItem item) {
    CountCall();
    Get(item).isExpanded = true;
}

bool TreeView::IsExpanded(TreeItem item) const {
    CountCall();
    return Get(item).isExpanded;
}

void TreeView::Select(TreeItem item) {
    CountCall();
    Get(item);
    mSelected = item;
}

TreeItem TreeView::Selected() const {
    CountCall();
    return mSelected;
}

void TreeView::Click(TreeItem item) {
    CheckReachable("a click into the tree");
    if (!IsVisible(item)) {
        throw ImpossibleAction("a click on a tree item that cannot be seen");
    }
    TakeFocus();
    SelectByUser(item);
}

void TreeView::Click(std::string_view key) {
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw ImpossibleAction("a click on the tree item \"" + std::string(key) + "\", which is not there");
    }
    Click(found->second);
}

void TreeView::Collapse(TreeItem item) {
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

bool TreeView::MoveUp() {
    return Move(-1);
}

bool TreeView::MoveDown() {
    return Move(1);
}

std::string TreeView::Shown() const {
    std::string shown;
    for (const TreeItem item : Visible()) {
        for (TreeItem above = Get(item).parent; above != TreeItem::None; above = Get(above).parent) {
            shown += "  ";
        }
        shown += Get(item).text + (item == mSelected ? "*\n" : "\n");
    }
    return shown;
}

bool TreeView::TakeKey(int keyCode, int /*shift*/) {
    if (keyCode == KeyUp) {
        MoveUp();
    } else if (keyCode == KeyDown) {
        MoveDown();
    }
    return keyCode != KeyTab;
}

TreeView::Items::const_iterator TreeView::Position(std::int32_t index) const {
    if (index < 1 || static_cast<std::size_t>(index) > mItems.size()) {
        throw std::out_of_range("no item has this index");
    }
    return std::next(mItems.begin(), index - 1);
}

const TreeView::Item& TreeView::Get(TreeItem item) const {
    return mItems.at(item);
}

TreeView::Item& TreeView::Get(TreeItem item) {
    return mItems.at(item);
}

// The items whose parents are all expanded, from top to bottom.
std::vector<TreeItem> TreeView::Visible() const {
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

bool TreeView::IsVisible(TreeItem item) const {
    const std::vector<TreeItem> visible = Visible();
    return std::find(visible.begin(), visible.end(), item) != visible.end();
}

void TreeView::SelectByUser(TreeItem item) {
    mSelected = item;
    const FocusEvents::Command command(Events(), FocusEvents::Keyboard::Stays);
    if (onNodeClick) {
        onNodeClick(item);
    }
}

bool TreeView::Move(std::ptrdiff_t step) {
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

} // namespace tessaly::memory
