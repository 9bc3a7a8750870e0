// The user beside the caret of the pane of the Windows desktop.
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

namespace tessaly {

namespace {

RECT RowPlace(HWND list, std::size_t row) {
    RECT place = {};
    SendMessageW(list, LB_GETITEMRECT, row, reinterpret_cast<LPARAM>(&place));
    return place;
}

} // namespace

// Null while it is not shown.
HWND Win32Driver::NameList() const {
    const HWND popup = Owned(L"Suggestions");
    return popup != nullptr && IsWindowVisible(popup) != 0 ? GetWindow(popup, GW_CHILD) : nullptr;
}

// Two blanks at least are between the columns, and none in a name.
std::vector<std::string> Win32Driver::NamesSuggested() {
    Settle();
    std::vector<std::string> rows;
    const HWND list = NameList();
    const LRESULT count = list != nullptr ? SendMessageW(list, LB_GETCOUNT, 0, 0) : 0;
    for (LRESULT row = 0; row < count; ++row) {
        const auto number = static_cast<WPARAM>(row);
        std::wstring text(static_cast<std::size_t>(SendMessageW(list, LB_GETTEXTLEN, number, 0)) + 1, L'\0');
        SendMessageW(list, LB_GETTEXT, number, reinterpret_cast<LPARAM>(text.data()));
        text.pop_back();
        const std::size_t end = std::min(text.find(L' '), text.size());
        const std::size_t second = std::min(text.find_first_not_of(L' ', end), text.size());
        const bool isSelected = SendMessageW(list, LB_GETCURSEL, 0, 0) == row;
        rows.push_back(win32::ToUtf8(text.substr(0, end) + L"|" + text.substr(second)) + (isSelected ? "*" : ""));
    }
    return rows;
}

bool Win32Driver::IsSuggestionInView(std::size_t row) {
    Settle();
    RECT client = {};
    GetClientRect(NameList(), &client);
    const RECT place = RowPlace(NameList(), row);
    return place.top >= client.top && place.bottom <= client.bottom;
}

void Win32Driver::ClickSuggestion(std::size_t row) {
    Settle();
    const RECT place = RowPlace(NameList(), row);
    Click(NameList(), {place.left + 5, (place.top + place.bottom) / 2});
}

std::string Win32Driver::HintShown() {
    Settle();
    const HWND hint = Owned(L"ParameterHint");
    return hint != nullptr && IsWindowVisible(hint) != 0 ? win32::ToUtf8(win32::WindowText(hint)) : "";
}

// The system tells after a while that the mouse rests.
std::string Win32Driver::TipShown(Place place) {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    const LRESULT line = SendMessageW(pane, EM_LINEINDEX, place.line, 0);
    POINTL character = {};
    SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&character), line + static_cast<LRESULT>(place.column));
    const LPARAM mouse = MAKELPARAM(character.x + 1, character.y + 3);
    Post(pane, WM_MOUSEMOVE, 0, mouse - 1);
    Post(pane, WM_MOUSEHOVER, 0, mouse);
    return TipNow();
}

std::string Win32Driver::MarginTipShown(std::size_t line) {
    Settle();
    const HWND pane = Control(win32::ControlId::FuncBody);
    POINTL character = {};
    SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&character), SendMessageW(pane, EM_LINEINDEX, line, 0));
    RECT outer = {};
    GetWindowRect(pane, &outer);
    const RECT margin = MarginPlace();
    POINT point = {0, character.y + 3};
    ClientToScreen(pane, &point);
    point.x = outer.left + (margin.left + margin.right) / 2;
    const LPARAM mouse = MAKELPARAM(point.x, point.y);
    const LRESULT hit = SendMessageW(pane, WM_NCHITTEST, 0, mouse);
    Post(pane, WM_NCMOUSEMOVE, static_cast<WPARAM>(hit), mouse - 1);
    Post(pane, WM_NCMOUSEHOVER, static_cast<WPARAM>(hit), mouse);
    return TipNow();
}

std::string Win32Driver::TipNow() {
    Settle();
    const HWND tip = Owned(L"NameTip");
    return tip != nullptr && IsWindowVisible(tip) != 0 ? win32::ToUtf8(win32::WindowText(tip)) : "";
}

} // namespace tessaly
