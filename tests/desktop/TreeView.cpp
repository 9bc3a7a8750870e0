// Every call for the control counts; what the items hold cannot fail.
#include "tests/desktop/TreeView.h"

#include "platform/desktop/Raise.h"
#include "platform/desktop/Window.h"
#include "platform/text/Ascii.h"
#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace tessaly::memory {

void* TreeView::Insert(TreeItem /*item*/, TreeItem /*parent*/, std::string_view /*text*/) {
    CountCall();
    return nullptr;
}

void TreeView::RemoveNode(void* /*node*/, bool /*isSelected*/) {
    CountCall();
}

void TreeView::ShowLook(void* /*node*/, const Look& /*look*/) {
    CountCall();
}

void TreeView::ExpandNode(void* /*node*/) {
    CountCall();
}

void TreeView::SelectNode(void* /*node*/) {
    CountCall();
}

void TreeView::Click(TreeItem item) {
    CheckReachable("a click into the tree");
    if (!IsVisible(item)) {
        throw ImpossibleAction("a click on a tree item that cannot be seen");
    }
    MoveHere();
    mSought.clear();
    SelectByUser(item);
}

void TreeView::Click(std::string_view key) {
    try {
        Click(Find(key));
    } catch (const std::out_of_range&) {
        throw ImpossibleAction("a click on the tree item \"" + std::string(key) + "\", which is not there");
    }
}

void TreeView::RightClick(TreeItem item) {
    Click(item);
    Raise(onMenu, ScreenPlace{});
}

void TreeView::Collapse(TreeItem item) {
    CheckReachable("a click into the tree");
    if (!IsVisible(item) || !IsExpanded(item)) {
        throw ImpossibleAction("the collapse of a tree item that is hidden or not expanded");
    }
    MoveHere();
    const bool wasSeen = IsVisible(Selected());
    SetExpanded(item, false);
    if (wasSeen && !IsVisible(Selected())) {
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
        shown += Line(item) + "\n";
    }
    return shown;
}

std::vector<std::string> TreeView::AllShown() const {
    std::vector<std::string> shown;
    for (const TreeItem item : FromTopToBottom(true)) {
        shown.push_back(Line(item));
    }
    return shown;
}

std::string TreeView::Line(TreeItem item) const {
    std::string blanks;
    for (TreeItem above = Parent(item); above != TreeItem::None; above = Parent(above)) {
        blanks += "  ";
    }
    return blanks + Text(item) + (item == Selected() ? "*" : "");
}

bool TreeView::TakeKey(int keyCode, int shift) {
    if (IsMenuKey(keyCode, shift)) {
        Raise(onMenu, ScreenPlace{});
    } else if (keyCode == KeyUp) {
        MoveUp();
    } else if (keyCode == KeyDown) {
        MoveDown();
    } else if ((keyCode >= 'A' && keyCode <= 'Z') && (shift & ~Shift) == 0) {
        Type(std::string(1, static_cast<char>(keyCode)));
    }
    return keyCode != KeyTab;
}

// What is typed goes on with what was typed before, from the selected item on and round the end.
void TreeView::Type(std::string_view letters) {
    CheckReachable("a key in the tree");
    mSought += SmallLetters(letters);
    std::vector<TreeItem> visible = Visible();
    const auto selected = std::find(visible.begin(), visible.end(), Selected());
    if (selected != visible.end()) {
        std::rotate(visible.begin(), mSought.size() > 1 ? selected : std::next(selected), visible.end());
    }
    const auto found = std::find_if(visible.begin(), visible.end(),
                                    [this](TreeItem item) { return SmallLetters(Text(item)).starts_with(mSought); });
    if (found != visible.end() && *found != Selected()) {
        SelectByUser(*found);
    }
}

// All items, or those whose parents are all expanded.
std::vector<TreeItem> TreeView::FromTopToBottom(bool withHidden) const {
    std::map<TreeItem, std::vector<TreeItem>> children;
    for (const auto& [item, content] : AllItems()) {
        children[content.parent].push_back(item);
    }
    std::vector<TreeItem> visible;
    std::vector<TreeItem> waiting(children[TreeItem::None].rbegin(), children[TreeItem::None].rend());
    while (!waiting.empty()) {
        const TreeItem item = waiting.back();
        waiting.pop_back();
        visible.push_back(item);
        if (withHidden || IsExpanded(item)) {
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
    SetSelected(item);
    RaiseClick(item);
}

bool TreeView::Move(std::ptrdiff_t step) {
    CheckReachable("a key in the tree");
    const std::vector<TreeItem> visible = Visible();
    const auto selected = std::find(visible.begin(), visible.end(), Selected()) - visible.begin();
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
