// The user in the messages window of the Windows desktop.
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace tessaly {

namespace {

std::string PageName(HWND pages, int page) {
    std::array<wchar_t, 200> text = {};
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(pages, TCM_GETITEMW, static_cast<WPARAM>(page), reinterpret_cast<LPARAM>(&item));
    const bool isInFront = SendMessageW(pages, TCM_GETCURSEL, 0, 0) == page;
    return win32::ToUtf8(item.pszText) + (isInFront ? "*" : "");
}

// What a head draws beside its text, in pixels: measured.
constexpr LRESULT BesideHead = 16;

std::string Head(HWND list, int number) {
    std::array<wchar_t, 200> text = {};
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT;
    column.pszText = text.data();
    column.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(&column));
    const LRESULT width = SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(number), 0);
    const LRESULT needed = SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(column.pszText));
    return win32::ToUtf8(column.pszText) + (width < needed + BesideHead ? " cut off" : "");
}

std::string Cell(HWND list, int row, int column) {
    std::array<wchar_t, 1000> text = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return win32::ToUtf8(item.pszText);
}

} // namespace

// Null where there is none.
HWND Win32Driver::Owned(const wchar_t* className) const {
    HWND window = nullptr;
    do {
        window = FindWindowExW(nullptr, window, className, nullptr);
    } while (window != nullptr && GetWindow(window, GW_OWNER) != mFrame);
    return window;
}

SeenMessages Win32Driver::Messages() const {
    const HWND list = InMessages(win32::ControlId::Rows);
    const HWND pages = InMessages(win32::ControlId::Pages);
    SeenMessages seen;
    seen.isVisible = IsWindowVisible(MessagesFrame()) != 0;
    seen.caption = win32::ToUtf8(win32::WindowText(MessagesFrame()));
    seen.pages = {PageName(pages, 0), PageName(pages, 1)};
    for (int column = 0; column < 4; ++column) {
        seen.heads.push_back(Head(list, column));
    }
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        const auto place = static_cast<WPARAM>(row);
        const bool isSelected = SendMessageW(list, LVM_GETITEMSTATE, place, LVIS_SELECTED) != 0;
        seen.rows.push_back(Cell(list, row, 0) + "|" + Cell(list, row, 1) + "|" + Cell(list, row, 2) + "|" +
                            Cell(list, row, 3) + (isSelected ? "*" : ""));
        if (isSelected) {
            const auto top = static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0));
            const auto inPage = static_cast<int>(SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0));
            seen.isSelectedInView = row >= top && row < top + std::max(inPage, 1);
        }
    }
    seen.printed = win32::ToUtf8(win32::WindowText(InMessages(win32::ControlId::Printed)));
    std::erase(seen.printed, '\r');
    seen.hasKeyboard = GetActiveWindow() == MessagesFrame();
    return seen;
}

void Win32Driver::GoToMessages() {
    Settle();
    ASSERT_TRUE(IsWindowVisible(MessagesFrame())) << "an action in the messages window, which is not shown";
    ASSERT_TRUE(IsWindowEnabled(MessagesFrame()));
    SetActiveWindow(MessagesFrame());
    Settle();
}

POINT Win32Driver::PlaceOfMessage(std::size_t row) const {
    const HWND list = InMessages(win32::ControlId::Rows);
    SendMessageW(list, LVM_ENSUREVISIBLE, row, FALSE);
    RECT rect = {LVIR_LABEL, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(&rect));
    return {rect.left + 3, (rect.top + rect.bottom) / 2};
}

void Win32Driver::ClickMessage(std::size_t row) {
    GoToMessages();
    Click(InMessages(win32::ControlId::Rows), PlaceOfMessage(row));
}

void Win32Driver::DoubleClickMessage(std::size_t row) {
    ClickMessage(row);
    const POINT place = PlaceOfMessage(row);
    Post(InMessages(win32::ControlId::Rows), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(place.x, place.y));
    Post(InMessages(win32::ControlId::Rows), WM_LBUTTONUP, 0, MAKELPARAM(place.x, place.y));
    Settle();
}

void Win32Driver::PressKeyInMessages(int keyCode, int shift) {
    GoToMessages();
    PressKey(keyCode, shift);
}

void Win32Driver::CloseMessages() {
    GoToMessages();
    Post(MessagesFrame(), WM_SYSCOMMAND, SC_CLOSE);
    Settle();
}

Size Win32Driver::SizeOfMessages() const {
    RECT rect = {};
    GetWindowRect(MessagesFrame(), &rect);
    const int dpi = win32::WindowDpi(MessagesFrame());
    return {win32::ToTwips(rect.right - rect.left, dpi), win32::ToTwips(rect.bottom - rect.top, dpi)};
}

void Win32Driver::ResizeMessages(const Size& size) {
    GoToMessages();
    const int dpi = win32::WindowDpi(MessagesFrame());
    SetWindowPos(MessagesFrame(), nullptr, 0, 0, win32::ToPixels(size.width, dpi), win32::ToPixels(size.height, dpi),
                 SWP_NOMOVE | SWP_NOZORDER);
    Settle();
}

bool Win32Driver::IsCovered(tessaly::Control& control) const {
    RECT place = {};
    GetWindowRect(HandleOf(control), &place);
    RECT over = {};
    GetWindowRect(MessagesFrame(), &over);
    RECT both = {};
    return IsWindowVisible(MessagesFrame()) != 0 && IntersectRect(&both, &place, &over) != 0;
}

void Win32Driver::FillScreen() {
    const RECT work = win32::WorkArea(mFrame);
    SetWindowPos(mFrame, nullptr, work.left, work.top, work.right - work.left, work.bottom - work.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Settle();
}

} // namespace tessaly
