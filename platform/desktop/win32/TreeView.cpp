#include "platform/desktop/win32/TreeView.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tessaly::win32 {

namespace {

// Sets a flag for as long as it lives.
class Flagged {
public:
    explicit Flagged(bool& flag) : mFlag(flag), mBefore(std::exchange(flag, true)) {}
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;
    ~Flagged() { mFlag = mBefore; }

private:
    bool& mFlag;
    bool mBefore;
};

TreeItem ItemOf(LPARAM parameter) {
    return static_cast<TreeItem>(static_cast<std::uint32_t>(parameter));
}

} // namespace

TreeView::TreeView(win32::Parent& parent)
    : Control(parent, {WC_TREEVIEWW,
                       TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS | TVS_NOTOOLTIPS |
                           TVS_DISABLEDRAGDROP,
                       WS_EX_CLIENTEDGE, ControlId::CodeTree}) {
    Send(TVM_SETEXTENDEDSTYLE, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
}

void TreeView::Clear() {
    const Flagged atWork(mIsProgramAtWork);
    ShowAdded();
    SelectShown(nullptr);
    Send(WM_SETREDRAW, FALSE);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    Send(WM_SETREDRAW, TRUE);
    mItems.clear();
    mKeys.clear();
    mSelected = TreeItem::None;
}

TreeItem TreeView::Add(TreeItem parent, std::string_view key, std::string_view text) {
    if (mKeys.contains(key)) {
        throw std::invalid_argument("the key is taken");
    }
    const auto parentItem = mItems.find(parent);
    if (parent != TreeItem::None && parentItem == mItems.end()) {
        throw std::invalid_argument("there is no such parent");
    }
    const Flagged atWork(mIsProgramAtWork);
    HoldDrawing();
    mLastItem = static_cast<TreeItem>(static_cast<std::uint32_t>(mLastItem) + 1);
    HTREEITEM shown = Insert(parent, mLastItem, text);
    mItems[mLastItem] = {parent, std::string(key), std::string(text), {}, shown, false};
    mKeys.emplace(key, mLastItem);
    if (parent != TreeItem::None && parentItem->second.isExpanded) {
        ExpandShown(parentItem->second.shown);
    }
    return mLastItem;
}

// Of many items in a row the control would lay out and invalidate all that stands below each one.
void TreeView::HoldDrawing() {
    if (!std::exchange(mIsDrawingHeld, true)) {
        Send(WM_SETREDRAW, FALSE);
        ParentWindow().Later([this] { ShowAdded(); });
    }
}

void TreeView::ShowAdded() {
    if (std::exchange(mIsDrawingHeld, false)) {
        Send(WM_SETREDRAW, TRUE);
    }
}

HTREEITEM TreeView::Insert(TreeItem parent, TreeItem item, std::string_view text) {
    std::wstring wide = ToWide(text);
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent == TreeItem::None ? TVI_ROOT : mItems.at(parent).shown;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = wide.data();
    insert.item.lParam = static_cast<LPARAM>(item);
    return std::bit_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TreeView::Remove(std::int32_t index) {
    ShowAdded();
    const TreeItem first = Position(index)->first;
    std::map<TreeItem, bool> removed = {{first, true}};
    for (auto item = mItems.upper_bound(first); item != mItems.end(); ++item) { // children come behind their parents
        if (removed.contains(item->second.parent)) {
            removed[item->first] = true;
        }
    }
    const Flagged atWork(mIsProgramAtWork);
    if (removed.contains(mSelected)) { // else the control would select another item
        SelectShown(nullptr);
        mSelected = TreeItem::None;
    }
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(mItems.at(first).shown));
    for (const auto& [item, isRemoved] : removed) {
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
    Item& changed = mItems.at(item);
    if (changed.text == text) {
        return;
    }
    changed.text = text;
    std::wstring wide = ToWide(text);
    TVITEMW shown = {};
    shown.mask = TVIF_HANDLE | TVIF_TEXT;
    shown.hItem = changed.shown;
    shown.pszText = wide.data();
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&shown));
}

std::int32_t TreeView::Index(TreeItem item) const {
    mItems.at(item);
    return static_cast<std::int32_t>(std::distance(mItems.begin(), mItems.find(item))) + 1;
}

void TreeView::Expand(TreeItem item) {
    const Flagged atWork(mIsProgramAtWork);
    ShowAdded();
    mItems.at(item).isExpanded = true;
    ExpandShown(mItems.at(item).shown);
}

// An item without children waits for the first one: expanded before, it would not show it.
void TreeView::ExpandShown(HTREEITEM item) {
    const bool hasChildren = Send(TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item)) != 0;
    TVITEMW state = {};
    state.mask = TVIF_HANDLE | TVIF_STATE;
    state.hItem = item;
    state.stateMask = TVIS_EXPANDED;
    Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&state));
    if (hasChildren && (state.state & TVIS_EXPANDED) == 0) {
        Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    }
}

void TreeView::Select(TreeItem item) {
    const Flagged atWork(mIsProgramAtWork);
    ShowAdded();
    SelectShown(mItems.at(item).shown);
    mSelected = item;
}

void TreeView::SelectShown(HTREEITEM item) {
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

LRESULT TreeView::Notify(NMHDR& header) {
    if (header.code == TVN_ITEMEXPANDEDW) {
        const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
        const auto item = mItems.find(ItemOf(change.itemNew.lParam));
        if (item != mItems.end()) {
            item->second.isExpanded = change.action == TVE_EXPAND;
        }
        if (change.action == TVE_COLLAPSE && !mIsProgramAtWork) {
            ParentWindow().Later([this] { FollowSelection(); });
        }
    } else if (header.code == TVN_SELCHANGEDW && !mIsProgramAtWork) {
        mSelected = ItemOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.lParam);
        RaiseClick(mSelected);
    } else if (header.code == NM_CLICK) {
        Clicked();
    } else if (header.code == NM_CUSTOMDRAW) {
        return Draw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    }
    return 0;
}

// Without the focus the control would set the selected item apart so faintly that nobody sees it.
LRESULT TreeView::Draw(NMTVCUSTOMDRAW& drawing) const {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    const bool isSelected = ItemOf(drawing.nmcd.lItemlParam) == mSelected;
    if (drawing.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && isSelected && GetFocus() != Handle()) {
        const COLORREF paper = GetSysColor(COLOR_WINDOW);
        const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
        const auto quarter = [](int from, int to) { return from + (to - from) / 4; };
        drawing.clrText = text;
        drawing.clrTextBk = RGB(quarter(GetRValue(paper), GetRValue(text)), quarter(GetGValue(paper), GetGValue(text)),
                                quarter(GetBValue(paper), GetBValue(text)));
    }
    return CDRF_DODEFAULT;
}

// Not every system tells that it has selected what was collapsed in place of what that hides.
void TreeView::FollowSelection() {
    const auto shown = std::bit_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET));
    const auto item =
        std::find_if(mItems.begin(), mItems.end(), [shown](const auto& each) { return each.second.shown == shown; });
    if (item != mItems.end() && item->first != mSelected) {
        mSelected = item->first;
        RaiseClick(mSelected);
    }
}

// A click on the item that is selected changes no selection, so nothing else tells of it.
void TreeView::Clicked() {
    TVHITTESTINFO hit = {};
    hit.pt = mClick;
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    const auto selected = mItems.find(mSelected);
    if ((hit.flags & TVHT_ONITEM) != 0 && selected != mItems.end() && hit.hItem == selected->second.shown) {
        RaiseClick(mSelected);
    }
}

// The control is still at work with the item, which the handler may remove.
void TreeView::RaiseClick(TreeItem item) {
    ParentWindow().Later([this, item] {
        if (mItems.contains(item)) {
            const FocusEvents::Command command(ParentWindow().focus, FocusEvents::Keyboard::Stays);
            Raise(onNodeClick, item);
        }
    });
}

LRESULT TreeView::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN) {
        mClick = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    } else if (message == WM_MOUSEMOVE && !std::exchange(mHasToolTips, true)) {
        // Their window takes its time: it is made when the mouse could first ask for one.
        SetWindowLongW(Handle(), GWL_STYLE, GetWindowLongW(Handle(), GWL_STYLE) & ~TVS_NOTOOLTIPS);
    }
    if (message != WM_SETFOCUS) {
        return Default(message, wParam, lParam);
    }
    // With the focus the control selects its first item where none is selected: no user did that.
    const Flagged atWork(mIsProgramAtWork);
    const LRESULT result = Default(message, wParam, lParam);
    if (mSelected == TreeItem::None) {
        SelectShown(nullptr);
    }
    return result;
}

TreeView::Items::const_iterator TreeView::Position(std::int32_t index) const {
    if (index < 1 || static_cast<std::size_t>(index) > mItems.size()) {
        throw std::out_of_range("no item has this index");
    }
    return std::next(mItems.begin(), index - 1);
}

} // namespace tessaly::win32
