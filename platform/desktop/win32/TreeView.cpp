// Events that the program itself causes in the control are told apart from the user's.
#include "platform/desktop/win32/TreeView.h"

#include "platform/desktop/Flagged.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/desktop/win32/Spoken.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace tessaly::win32 {

namespace {

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

void* TreeView::Insert(TreeItem item, TreeItem parent, std::string_view text) {
    const Flagged atWork(mIsProgramAtWork);
    HoldLayout();
    std::wstring wide = ToWide(text);
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent == TreeItem::None ? TVI_ROOT : static_cast<HTREEITEM>(Node(parent));
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = wide.data();
    insert.item.lParam = static_cast<LPARAM>(item);
    const LRESULT node = Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert));
    if (parent != TreeItem::None && IsExpanded(parent)) {
        ExpandShown(Node(parent));
    }
    return std::bit_cast<void*>(node);
}

// Of many items in a row the control would lay out all that stands below each one.
void TreeView::HoldLayout() {
    HoldDrawing();
    if (!std::exchange(mIsLayoutHeld, true)) {
        Send(WM_SETREDRAW, FALSE);
    }
}

void TreeView::LayOut() {
    if (std::exchange(mIsLayoutHeld, false)) {
        Send(WM_SETREDRAW, TRUE);
    }
}

void TreeView::DrawAgain() {
    LayOut();
    Control::DrawAgain();
}

// The control would select another item for one that goes.
void TreeView::RemoveNode(void* node, bool isSelected) {
    const Flagged atWork(mIsProgramAtWork);
    if (isSelected) {
        SelectNode(nullptr);
    }
    if (node != nullptr) {
        HoldDrawing();
        LayOut();
    } else {
        HoldLayout();
    }
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(node != nullptr ? node : TVI_ROOT));
}

// The picture is the state's, as only items that have one make room for it.
void TreeView::ShowLook(void* node, const Look& look) {
    if (!mPictures && (look.mark != Mark::None || !look.description.empty())) {
        ShowPictures();
        SetWindowLongW(Handle(), GWL_STYLE, GetWindowLongW(Handle(), GWL_STYLE) | TVS_INFOTIP);
    }
    std::wstring text = ToWide(look.text);
    TVITEMW shown = {};
    shown.mask = TVIF_HANDLE | TVIF_STATE | TVIF_TEXT;
    shown.hItem = static_cast<HTREEITEM>(node);
    shown.pszText = text.data();
    shown.stateMask = TVIS_STATEIMAGEMASK;
    shown.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(look.mark));
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&shown));
    DescribeItem(Handle(), shown.hItem, ToWide(look.description));
    if (const std::optional<RECT> line = PlaceOf(node, false)) { // italics are no state of the control's
        InvalidateRect(Handle(), &*line, FALSE);
    }
}

void TreeView::ShowPictures() {
    mPictures = PicturesOfMarks(static_cast<int>(Send(TVM_GETITEMHEIGHT)) * 3 / 4);
    Send(TVM_SETIMAGELIST, TVSIL_STATE, reinterpret_cast<LPARAM>(mPictures.get()));
}

void TreeView::Rescale() {
    mItalicFont.reset();
    Control::Rescale();
    ColoursChanged();
}

void TreeView::ColoursChanged() {
    if (mPictures) {
        const ImageListOwner before = std::move(mPictures); // the control has it until there is another one
        ShowPictures();
    }
}

// An item without children waits for the first one: expanded before, it would not show it.
void TreeView::ExpandShown(void* node) {
    const bool hasChildren = Send(TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(node)) != 0;
    const LRESULT state = Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(node), TVIS_EXPANDED);
    if (hasChildren && (state & TVIS_EXPANDED) == 0) {
        Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(node));
    }
}

void TreeView::ExpandNode(void* node) {
    const Flagged atWork(mIsProgramAtWork);
    HoldDrawing();
    LayOut();
    ExpandShown(node);
}

void TreeView::SelectNode(void* node) {
    const Flagged atWork(mIsProgramAtWork);
    HoldDrawing();
    LayOut();
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node));
}

// The control is still at work with the item, which the handler may remove.
void TreeView::ClickLater() {
    ParentWindow().loop.Later([this, item = Selected()] { RaiseClick(item); });
}

LRESULT TreeView::Notify(NMHDR& header) {
    if (header.code == TVN_ITEMEXPANDEDW) {
        const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
        if (const TreeItem item = ItemOf(change.itemNew.lParam); AllItems().contains(item)) {
            SetExpanded(item, change.action == TVE_EXPAND);
        }
        if (change.action == TVE_COLLAPSE && !mIsProgramAtWork) {
            ParentWindow().loop.Later([this] { FollowSelection(); });
        }
    } else if (header.code == TVN_SELCHANGEDW && !mIsProgramAtWork) {
        SetSelected(ItemOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.lParam));
        ClickLater();
    } else if (header.code == NM_CLICK) {
        Clicked();
    } else if (header.code == TVN_GETINFOTIPW) {
        Describe(reinterpret_cast<NMTVGETINFOTIPW&>(header));
    } else if (header.code == NM_CUSTOMDRAW) {
        return Draw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    }
    return 0;
}

// The tool tip of an item. Without a mark it is the control's own.
void TreeView::Describe(NMTVGETINFOTIPW& tip) const {
    const auto item = AllItems().find(ItemOf(tip.lParam));
    const std::wstring text = item != AllItems().end() ? ToWide(LookOf(item->second).description) : L"";
    if (!text.empty()) {
        const std::size_t count = text.copy(tip.pszText, static_cast<std::size_t>(tip.cchTextMax) - 1);
        tip.pszText[count] = L'\0';
    }
}

// Without the focus the control would set the selected item apart so faintly that nobody sees it.
LRESULT TreeView::Draw(NMTVCUSTOMDRAW& drawing) {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return CDRF_DODEFAULT;
    }
    const TreeItem item = ItemOf(drawing.nmcd.lItemlParam);
    if (item == Selected() && GetFocus() != Handle()) {
        const COLORREF paper = GetSysColor(COLOR_WINDOW);
        const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
        const auto quarter = [](int from, int to) { return from + (to - from) / 4; };
        drawing.clrText = text;
        drawing.clrTextBk = RGB(quarter(GetRValue(paper), GetRValue(text)), quarter(GetGValue(paper), GetGValue(text)),
                                quarter(GetBValue(paper), GetBValue(text)));
    }
    const auto found = AllItems().find(item);
    if (found == AllItems().end() || !found->second.isItalic) {
        return CDRF_DODEFAULT;
    }
    SelectObject(drawing.nmcd.hdc, ItalicFont());
    return CDRF_NEWFONT;
}

HFONT TreeView::ItalicFont() {
    if (!mItalicFont) {
        LOGFONTW font = {};
        GetObjectW(ParentWindow().Font(), sizeof font, &font);
        font.lfItalic = TRUE;
        mItalicFont.reset(CreateFontIndirectW(&font));
    }
    return mItalicFont.get();
}

// The collapsed item is selected in place of a hidden one. Not every system tells so.
void TreeView::FollowSelection() {
    const auto* const shown = std::bit_cast<const void*>(Send(TVM_GETNEXTITEM, TVGN_CARET));
    const auto item = std::find_if(AllItems().begin(), AllItems().end(),
                                   [shown](const auto& each) { return each.second.node == shown; });
    if (item != AllItems().end() && item->first != Selected()) {
        SetSelected(item->first);
        RaiseClick(item->first);
    }
}

// A click on the item that is selected changes no selection, so nothing else tells of it.
void TreeView::Clicked() {
    if (Selected() != TreeItem::None && NodeAt(mClick) == Node(Selected())) {
        ClickLater();
    }
}

// As the left button does it. The control itself would select nothing for long.
void TreeView::RightPressed(POINT place) {
    TakeKeyboard();
    mClick = place;
    if (HTREEITEM node = NodeAt(place); node != nullptr) {
        Clicked();
        Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node));
    }
}

// Null where there is none.
HTREEITEM TreeView::NodeAt(POINT place) const {
    TVHITTESTINFO hit = {};
    hit.pt = place;
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & TVHT_ONITEM) != 0 ? hit.hItem : nullptr;
}

// Below the selected item.
std::optional<POINT> TreeView::MenuPlace() const {
    const std::optional<RECT> text = Selected() != TreeItem::None ? PlaceOf(Node(Selected()), true) : std::nullopt;
    return NearestPlace(text ? POINT{text->left, text->bottom} : POINT{});
}

// No value for what a collapsed item hides.
std::optional<RECT> TreeView::PlaceOf(void* node, bool ofText) const {
    RECT place = {};
    std::memcpy(&place, &node, sizeof node); // so the message wants it
    const bool isShown = Send(TVM_GETITEMRECT, ofText ? TRUE : FALSE, reinterpret_cast<LPARAM>(&place)) != 0;
    return isShown ? std::optional(place) : std::nullopt;
}

LRESULT TreeView::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN) {
        mClick = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    } else if (message == WM_RBUTTONDOWN) {
        RightPressed({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        return 0;
    } else if (message == WM_MOUSEMOVE && !std::exchange(mHasToolTips, true)) {
        // Their window takes its time: it is made when the mouse could first ask for one.
        SetWindowLongW(Handle(), GWL_STYLE, GetWindowLongW(Handle(), GWL_STYLE) & ~TVS_NOTOOLTIPS);
    }
    if (message != WM_SETFOCUS) {
        return Default(message, wParam, lParam);
    }
    // A control without a selection selects its first item when it gets the focus. No user did that.
    const Flagged atWork(mIsProgramAtWork);
    const LRESULT result = Default(message, wParam, lParam);
    if (Selected() == TreeItem::None) {
        SelectNode(nullptr);
    }
    return result;
}

} // namespace tessaly::win32
