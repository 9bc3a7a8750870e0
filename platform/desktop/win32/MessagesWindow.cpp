// The pages are siblings of the control with their names, in front of it. It tells only where they stand.
#include "platform/desktop/win32/MessagesWindow.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <string>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr DWORD FrameStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;
constexpr DWORD ListStyle = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_TABSTOP;
constexpr DWORD TextStyle =
    ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP;
constexpr DWORD PagesStyle = WS_CLIPSIBLINGS | TCS_FOCUSNEVER;

constexpr int TextColumn = 3;
constexpr float LeastTextWidth = 3000; // in twips
constexpr float AroundHead = 300;

Extent InTwips(const RECT& rect, int dpi) {
    return {ToTwips(rect.left, dpi), ToTwips(rect.top, dpi), ToTwips(rect.right - rect.left, dpi),
            ToTwips(rect.bottom - rect.top, dpi)};
}

// The control wants CR LF.
std::wstring Lines(std::string_view text) {
    std::string lines;
    for (const char character : text) {
        lines += character == '\n' ? "\r\n" : std::string_view(&character, 1);
    }
    return ToWide(lines);
}

LONG HeadWidth(HWND list, int number) {
    std::array<wchar_t, 200> text = {};
    LVCOLUMNW head = {};
    head.mask = LVCF_TEXT;
    head.pszText = text.data();
    head.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(&head));
    return static_cast<LONG>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.data())));
}

bool IsInput(UINT message) {
    const auto isIn = [message](UINT first, UINT last) { return message >= first && message <= last; };
    return isIn(WM_KEYFIRST, WM_KEYLAST) || isIn(WM_LBUTTONDOWN, WM_MOUSELAST) ||
           isIn(WM_NCLBUTTONDOWN, WM_NCMBUTTONDBLCLK);
}

// The clipboard is another program's for moments, and then keeps what it has.
void Copy(HWND window, const std::string& text) {
    const std::wstring units = ToWide(text);
    Owner<HGLOBAL, &GlobalFree> memory(GlobalAlloc(GMEM_MOVEABLE, (units.size() + 1) * sizeof(wchar_t)));
    auto* const copied = memory ? static_cast<wchar_t*>(GlobalLock(memory.get())) : nullptr;
    if (copied == nullptr) {
        return;
    }
    units.copy(copied, units.size());
    copied[units.size()] = L'\0';
    GlobalUnlock(memory.get());
    if (OpenClipboard(window) != 0) {
        EmptyClipboard();
        if (SetClipboardData(CF_UNICODETEXT, memory.get()) != nullptr) {
            static_cast<void>(memory.release()); // the system's from here on
        }
        CloseClipboard();
    }
}

// In the order of MessageKind.
ImageListOwner MakePictures(int dpi) {
    const int size = GetSystemMetrics(SM_CXSMICON) * dpi / SystemDpi();
    ImageListOwner pictures(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 3, 0));
    for (const auto* const name : {IDI_ERROR, IDI_WARNING, IDI_INFORMATION}) {
        const auto icon = static_cast<HICON>(LoadImageW(nullptr, name, IMAGE_ICON, size, size, LR_SHARED));
        ImageList_ReplaceIcon(pictures.get(), -1, icon);
    }
    return pictures;
}

} // namespace

MessagesWindow::MessagesWindow(Window& owner, const tessaly::Control& pane)
    : tessaly::MessagesWindow(owner, pane),
      Parent(owner.loop, mControls),
      mFrame(owner),
      mMainFilter(MakeFrame()),
      mRowsLabel(*this, {WC_STATICW, SS_NOPREFIX, 0, ControlId::RowsLabel}, Keyboard::Unused),
      mRows(*this, {WC_LISTVIEWW, ListStyle, 0, ControlId::Rows}, Keyboard::Used),
      mPrintedLabel(*this, {WC_STATICW, SS_NOPREFIX, 0, ControlId::PrintedLabel}, Keyboard::Unused),
      mPrinted(*this, {WC_EDITW, TextStyle, 0, ControlId::Printed}, Keyboard::Used),
      mPages(*this, {WC_TABCONTROLW, PagesStyle, 0, ControlId::Pages}, Keyboard::Unused) {
    constexpr DWORD listLook = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    SendMessageW(mRows.Handle(), LVM_SETEXTENDEDLISTVIEWSTYLE, listLook, listLook);
    for (int column = 0; column <= TextColumn; ++column) {
        LVCOLUMNW head = {};
        head.mask = LVCF_SUBITEM;
        head.iSubItem = column;
        SendMessageW(mRows.Handle(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&head));
    }
    for (int page = 0; page < 2; ++page) {
        TCITEMW item = {};
        SendMessageW(mPages.Handle(), TCM_INSERTITEMW, static_cast<WPARAM>(page), reinterpret_cast<LPARAM>(&item));
    }
    SendMessageW(mPrinted.Handle(), EM_SETLIMITTEXT, 0, 0); // as much as it can
    Rescale(Dpi());
    ShowPage(Page::Printed);
    loop.mainFilter = [this](MSG& message) {
        mIsComing = mIsComing && !IsInput(message.message);
        const bool isHere = message.hwnd == Handle() || IsChild(Handle(), message.hwnd) != 0;
        return isHere ? TakeKey(message) : mMainFilter(message);
    };
    mFrame.onEnabled = [this](bool isEnabled) { EnableWindow(Handle(), isEnabled ? TRUE : FALSE); };
}

MessagesWindow::~MessagesWindow() {
    loop.mainFilter = mMainFilter;
    mFrame.onEnabled = nullptr;
}

// Before the controls are, which stand in it.
EventLoop::Filter MessagesWindow::MakeFrame() {
    Create(L"Messages", FrameStyle, 0, {}, mFrame.Handle());
    return loop.mainFilter;
}

HWND MessagesWindow::PageInFront() const {
    const bool isRows = SendMessageW(mPages.Handle(), TCM_GETCURSEL, 0, 0) == 0;
    return isRows ? mRows.Handle() : mPrinted.Handle();
}

void MessagesWindow::ShowTexts(const MessageTexts& texts) {
    SetWindowTextW(Handle(), ToWide(texts.caption).c_str());
    for (int column = 0; column <= TextColumn; ++column) {
        std::wstring text = ToWide(texts.heads.at(static_cast<std::size_t>(column)));
        LVCOLUMNW head = {};
        head.mask = LVCF_TEXT;
        head.pszText = text.data();
        SendMessageW(mRows.Handle(), LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&head));
    }
    const std::pair<const Part*, std::wstring> pages[] = {{&mRowsLabel, ToWide(texts.messagesPage)},
                                                          {&mPrintedLabel, ToWide(texts.printedPage)}};
    WPARAM page = 0;
    for (auto [label, text] : pages) {
        SetWindowTextW(label->Handle(), text.c_str());
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text.data();
        SendMessageW(mPages.Handle(), TCM_SETITEMW, page++, reinterpret_cast<LPARAM>(&item));
    }
    SetWindowTextW(mRows.Handle(), pages[0].second.c_str());
    FitColumns();
}

void MessagesWindow::ShowRows(const std::vector<MessageRow>& rows) {
    HWND list = mRows.Handle();
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        LVITEMW item = {};
        item.iItem = static_cast<int>(row);
        for (int column = 0; column <= TextColumn; ++column) {
            std::wstring text = ToWide(rows[row].cells.at(static_cast<std::size_t>(column)));
            item.mask = LVIF_TEXT | (column == 0 ? LVIF_IMAGE : 0U);
            item.iSubItem = column;
            item.pszText = text.data();
            item.iImage = static_cast<int>(rows[row].kind);
            SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    FitColumns();
}

void MessagesWindow::ShowSelected(std::size_t row) {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = item.stateMask;
    SendMessageW(mRows.Handle(), LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
    SendMessageW(mRows.Handle(), LVM_ENSUREVISIBLE, row, FALSE);
}

// The view stays where it is when more comes.
void MessagesWindow::ShowPrinted(std::string_view text, std::size_t unchanged) {
    HWND control = mPrinted.Handle();
    const LRESULT first = unchanged > 0 ? SendMessageW(control, EM_GETFIRSTVISIBLELINE, 0, 0) : 0;
    SetWindowTextW(control, Lines(text).c_str());
    SendMessageW(control, EM_LINESCROLL, 0, first);
}

void MessagesWindow::ShowPage(Page page) {
    const bool hadKeyboard = GetFocus() != nullptr && GetFocus() == PageInFront();
    SendMessageW(mPages.Handle(), TCM_SETCURSEL, page == Page::Messages ? 0 : 1, 0);
    ShowWindow(mRows.Handle(), page == Page::Messages ? SW_SHOW : SW_HIDE);
    ShowWindow(mPrinted.Handle(), page == Page::Printed ? SW_SHOW : SW_HIDE);
    if (hadKeyboard) {
        SetFocus(PageInFront());
    }
}

// A window that is minimised stands nowhere.
std::optional<tessaly::MessagesWindow::Surroundings> MessagesWindow::Around() const {
    if (IsIconic(mFrame.Handle()) != 0) {
        return std::nullopt;
    }
    RECT owner = {};
    GetWindowRect(mFrame.Handle(), &owner);
    RECT client = {};
    GetClientRect(mFrame.Handle(), &client);
    MapWindowPoints(mFrame.Handle(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    RECT own = {};
    GetWindowRect(Handle(), &own);
    const int dpi = mFrame.Dpi();
    return Surroundings{
        InTwips(WorkArea(mFrame.Handle()), dpi), InTwips(owner, dpi), InTwips(client, dpi), {}, InTwips(own, dpi)};
}

void MessagesWindow::MoveTo(const Extent& place) {
    const int dpi = mFrame.Dpi();
    SetWindowPos(Handle(), nullptr, ToPixels(place.left, dpi), ToPixels(place.top, dpi), ToPixels(place.width, dpi),
                 ToPixels(place.height, dpi), SWP_NOZORDER | SWP_NOACTIVATE);
}

void MessagesWindow::ShowFrame(bool isVisible) {
    if (isVisible) {
        mIsComing = true;
    } else if (GetActiveWindow() == Handle()) {
        SetActiveWindow(mFrame.Handle());
    }
    ShowWindow(Handle(), isVisible ? SW_SHOWNOACTIVATE : SW_HIDE);
}

// F10 would open the menu of the window, and Ctrl with Tab turns the page.
bool MessagesWindow::TakeKey(const MSG& message) {
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) {
        return false;
    }
    const auto key = static_cast<int>(message.wParam);
    const int shift = ShiftState();
    if (const std::optional<std::string> text = CopiedBy(key, shift)) {
        Copy(Handle(), *text);
        return true;
    }
    const bool turnsPage = (shift & 2) != 0 && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT);
    if (turnsPage) {
        TurnPage();
    }
    return turnsPage || TellKey(key, shift) || key == VK_F10;
}

void MessagesWindow::TurnPage() {
    const Page page = PageInFront() == mRows.Handle() ? Page::Printed : Page::Messages;
    ShowPage(page);
    TellPage(page);
}

LRESULT MessagesWindow::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        Hide();
        return 0;
    case WM_MOUSEACTIVATE: // Wine asks this for a window manager that gives the keyboard to each new window
        if (LOWORD(lParam) == HTMENU && std::exchange(mIsComing, false)) {
            return MA_NOACTIVATE;
        }
        return DefWindowProcW(Handle(), message, wParam, lParam);
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_SETFOCUS:
        SetFocus(PageInFront());
        return 0;
    case WM_NOTIFY:
        return Notified(*std::bit_cast<const NMHDR*>(lParam));
    case WM_DPICHANGED: {
        const RECT& place = *std::bit_cast<const RECT*>(lParam);
        Rescale(HIWORD(wParam));
        SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    default:
        return DefWindowProcW(Handle(), message, wParam, lParam);
    }
}

LRESULT MessagesWindow::Notified(const NMHDR& header) {
    if (header.hwndFrom == mPages.Handle() && header.code == TCN_SELCHANGE) {
        const Page page = PageInFront() == mRows.Handle() ? Page::Messages : Page::Printed;
        ShowPage(page);
        TellPage(page);
    } else if (header.hwndFrom == mRows.Handle() && header.code == LVN_ITEMCHANGED) {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
        if ((change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0) {
            TellSelected(static_cast<std::size_t>(change.iItem));
        }
    } else if (header.hwndFrom == mRows.Handle() && header.code == NM_DBLCLK) {
        const int row = reinterpret_cast<const NMITEMACTIVATE&>(header).iItem;
        if (row >= 0) { // behind the message: what it leads to may change the list
            loop.Later([this, row] { TellDoubleClick(static_cast<std::size_t>(row)); });
        }
    }
    return 0;
}

void MessagesWindow::Rescale(int dpi) {
    SetDpi(dpi);
    FontOwner made = MakeCodeFont(dpi);
    SendMessageW(mPrinted.Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), TRUE);
    mCodeFont = std::move(made);
    ImageListOwner pictures = MakePictures(dpi);
    SendMessageW(mRows.Handle(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(pictures.release()));
    Arrange();
}

void MessagesWindow::Arrange() {
    if (Children().empty() || Children().back() != &mPages) { // not made yet
        return;
    }
    RECT client = {};
    GetClientRect(Handle(), &client);
    SetWindowPos(mPages.Handle(), nullptr, 0, 0, client.right, client.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT page = client;
    SendMessageW(mPages.Handle(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    for (HWND inPage : {mRows.Handle(), mPrinted.Handle()}) {
        SetWindowPos(inPage, nullptr, page.left, page.top, std::max<LONG>(page.right - page.left, 0),
                     std::max<LONG>(page.bottom - page.top, 0), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    FitColumns();
}

// The last column takes what the others leave.
void MessagesWindow::FitColumns() {
    HWND list = mRows.Handle();
    RECT client = {};
    GetClientRect(list, &client);
    LONG left = client.right;
    for (int number = 0; number < TextColumn; ++number) {
        const auto column = static_cast<WPARAM>(number);
        SendMessageW(list, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE_USEHEADER);
        // Not every system leaves its own head room.
        const auto width = static_cast<LONG>(SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0));
        const LONG wanted = std::max(width, HeadWidth(list, number) + ToPixels(AroundHead, Dpi()));
        if (wanted > width) {
            SendMessageW(list, LVM_SETCOLUMNWIDTH, column, wanted);
        }
        left -= wanted;
    }
    SendMessageW(list, LVM_SETCOLUMNWIDTH, TextColumn, std::max<LONG>(left, ToPixels(LeastTextWidth, Dpi())));
}

} // namespace tessaly::win32
