// The font has a fixed pitch, so blanks make the columns of the list.
#include "platform/desktop/win32/Suggestions.h"

#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr std::size_t MostRowsInView = 8;
constexpr std::size_t BetweenColumns = 2; // blanks
constexpr int Margin = 3;                 // round the text of a hint, in pixels
constexpr DWORD NamesStyle = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL;

bool IsMousePress(UINT message) {
    const auto isIn = [message](UINT first, UINT last) { return message >= first && message <= last; };
    return (isIn(WM_LBUTTONDOWN, WM_MOUSELAST) && message != WM_LBUTTONUP && message != WM_RBUTTONUP &&
            message != WM_MBUTTONUP) ||
           isIn(WM_NCLBUTTONDOWN, WM_NCMBUTTONDBLCLK);
}

// In columns of characters.
std::vector<std::wstring> RowsOf(const std::vector<SuggestedName>& names) {
    std::vector<std::wstring> rows;
    std::size_t widest = 0;
    for (const SuggestedName& name : names) {
        rows.push_back(ToWide(name.name));
        widest = std::max(widest, rows.back().size());
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!names[i].declaration.empty()) {
            rows[i].resize(widest + BetweenColumns, L' ');
            rows[i] += ToWide(names[i].declaration);
        }
    }
    return rows;
}

} // namespace

NameList::NameList(Parent& parent) : Control(parent, {L"LISTBOX", NamesStyle}, Keyboard::Unused) {}

LRESULT NameList::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
        const LRESULT item = Default(LB_ITEMFROMPOINT, 0, lParam);
        if (HIWORD(item) == 0) {
            ParentWindow().loop.Later([this, row = LOWORD(item)] { onClick(row); }); // it hides the list
        }
        return 0;
    }
    return Default(message, wParam, lParam);
}

Popup::Popup(Window& frame, const wchar_t* className) : Parent(frame.loop, mNoControls), mFrame(frame) {
    Create(className, WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, {}, frame.Handle());
}

void Popup::Rescale() {
    if (!mCodeFont || Dpi() != mFrame.Dpi()) {
        SetDpi(mFrame.Dpi());
        mCodeFont = MakeCodeFont(Dpi());
    }
}

void Popup::ShowBeside(const RECT& character, SIZE client, Beside wished) {
    const RECT work = WorkArea(mFrame.Handle());
    const int frame = 2 * GetSystemMetrics(SM_CYBORDER);
    const int width = std::min<int>(client.cx + frame, work.right - work.left);
    const int height = client.cy + frame;
    const auto area = [](const RECT& rect) {
        const auto whole = [](LONG value) { return static_cast<int>(value); };
        return ScreenArea{whole(rect.left), whole(rect.top), whole(rect.right), whole(rect.bottom)};
    };
    const auto [x, y] = PlaceBeside(area(character), area(work), width, height, wished);
    SetWindowPos(Handle(), HWND_TOP, x, y, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

LRESULT Popup::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_MOUSEACTIVATE ? MA_NOACTIVATE : DefWindowProcW(Handle(), message, wParam, lParam);
}

void HintPopup::Show(const HintText& hint, const RECT& character) {
    Rescale();
    mFront = ToWide(std::string_view(hint.text).substr(0, hint.begin));
    mStrong = ToWide(std::string_view(hint.text).substr(hint.begin, hint.end - hint.begin));
    mBack = ToWide(std::string_view(hint.text).substr(hint.end));
    SetWindowTextW(Handle(), (mFront + mStrong + mBack).c_str());
    HDC screen = GetDC(Handle());
    const SIZE size = Draw(screen, true);
    ReleaseDC(Handle(), screen);
    ShowBeside(character, size, Beside::Above);
    InvalidateRect(Handle(), nullptr, TRUE);
}

// What stands out does so by a line below it, which takes no more room.
SIZE HintPopup::Draw(HDC target, bool isMeasured) const {
    HGDIOBJ before = SelectObject(target, CodeFont());
    SIZE all = {Margin, 0};
    for (const std::wstring* const text : {&mFront, &mStrong, &mBack}) {
        const auto draw = [&](LONG left, UINT how) {
            RECT place = {left, Margin, left, Margin};
            DrawTextW(target, text->c_str(), static_cast<int>(text->size()), &place, DT_NOPREFIX | DT_NOCLIP | how);
            return SIZE{place.right - place.left, place.bottom - place.top};
        };
        const SIZE size = draw(all.cx, DT_CALCRECT);
        if (!isMeasured) {
            draw(all.cx, 0);
        }
        if (!isMeasured && text == &mStrong && !mStrong.empty()) { // drawn twice it is bold, and as wide as it was
            draw(all.cx + 1, 0);
        }
        all.cx += size.cx;
        all.cy = std::max(all.cy, size.cy);
    }
    SelectObject(target, before);
    return {all.cx + Margin, all.cy + 2 * Margin};
}

void HintPopup::Paint() {
    PAINTSTRUCT paint = {};
    HDC target = BeginPaint(Handle(), &paint);
    RECT client = {};
    GetClientRect(Handle(), &client);
    FillRect(target, &client, GetSysColorBrush(COLOR_INFOBK));
    SetBkMode(target, TRANSPARENT);
    SetTextColor(target, GetSysColor(COLOR_INFOTEXT));
    Draw(target, false);
    EndPaint(Handle(), &paint);
}

LRESULT HintPopup::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    return Popup::Message(message, wParam, lParam);
}

Suggestions::Suggestions(Window& frame, RichTextBox& pane)
    : mFrame(frame),
      mPane(pane),
      mMainFilter(frame.loop.mainFilter) {
    frame.loop.mainFilter = [this](MSG& message) { return TakeMessage(message) || mMainFilter(message); };
}

Suggestions::~Suggestions() {
    mFrame.loop.mainFilter = mMainFilter;
}

void Suggestions::MakeWindows() {
    if (!mWindows) {
        mWindows = std::make_unique<Windows>(mFrame);
        mWindows->list.onClick = [this](std::size_t row) { TellPick(row); };
    }
}

bool Suggestions::TakeMessage(const MSG& message) {
    FollowMouse(message);
    return mWindows && TakeMouse(message);
}

// A tip goes as soon as the user does anything. The system tells when the mouse rests.
void Suggestions::FollowMouse(const MSG& message) {
    const bool isInEdge = message.message == WM_NCMOUSEMOVE || message.message == WM_NCMOUSEHOVER;
    const bool isMove = message.message == WM_MOUSEMOVE || message.message == WM_NCMOUSEMOVE;
    const bool isSamePlace = isMove && message.lParam == mTipPlace;
    if (mWindows && mWindows->tip.IsShown() && !isSamePlace &&
        (isMove || IsMousePress(message.message) || message.message == WM_KEYDOWN ||
         message.message == WM_SYSKEYDOWN)) {
        mWindows->tip.Hide();
    }
    if (message.hwnd != mPane.Handle() || mPane.Handle() == nullptr) {
        return;
    }
    if (isMove) {
        const DWORD where = isInEdge ? TME_NONCLIENT : 0U;
        TRACKMOUSEEVENT track = {sizeof track, TME_HOVER | where, mPane.Handle(), HOVER_DEFAULT};
        TrackMouseEvent(&track);
    } else if (message.message == WM_MOUSEHOVER || message.message == WM_NCMOUSEHOVER) {
        mTipPlace = message.lParam;
        POINT mouse = {static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
        if (isInEdge) { // in pixels of the screen
            ScreenToClient(mPane.Handle(), &mouse);
        }
        ShowTip(mouse);
    }
}

void Suggestions::ShowTip(POINT mouse) {
    const std::optional<Place> place = mPane.PlaceUnder(mouse);
    const std::string tip = place ? AskTip(*place, mouse.x < 0) : "";
    if (!tip.empty()) {
        MakeWindows();
        mWindows->tip.Show({tip, 0, 0}, mPane.CharacterPlace(*place));
    }
}

// The wheel's messages go to the control with the keyboard, wherever the mouse is.
bool Suggestions::TakeMouse(const MSG& message) {
    if (!IsMousePress(message.message)) {
        return false;
    }
    const bool isWheel = message.message == WM_MOUSEWHEEL;
    if ((isWheel ? WindowFromPoint(message.pt) : message.hwnd) != mWindows->list.Handle()) {
        TellElsewhere();
        return false;
    }
    if (isWheel) {
        SendMessageW(mWindows->list.Handle(), message.message, message.wParam, message.lParam);
    }
    return isWheel;
}

void Suggestions::ShowNames(const std::vector<SuggestedName>& names, Place place) {
    MakeWindows();
    if (names.empty()) {
        mWindows->listPopup.Hide();
        return;
    }
    Popup& popup = mWindows->listPopup;
    HWND list = mWindows->list.Handle();
    popup.Rescale();
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(popup.CodeFont()), FALSE);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    std::size_t longest = 0;
    for (const std::wstring& row : RowsOf(names)) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.c_str()));
        longest = std::max(longest, row.size());
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    const RECT work = WorkArea(mFrame.Handle());
    const TEXTMETRICW font = MeasureFont(popup.CodeFont());
    const auto rowHeight = static_cast<LONG>(SendMessageW(list, LB_GETITEMHEIGHT, 0, 0));
    const LONG wanted = (static_cast<LONG>(longest) + 1) * font.tmAveCharWidth + GetSystemMetrics(SM_CXVSCROLL);
    const SIZE size = {std::min(wanted, (work.right - work.left) * 2 / 3),
                       rowHeight * static_cast<LONG>(std::min(names.size(), MostRowsInView))};
    SetWindowPos(list, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    popup.ShowBeside(mPane.CharacterPlace(place), size, Beside::Below);
    InvalidateRect(list, nullptr, TRUE);
}

void Suggestions::ShowSelected(std::size_t row) {
    SendMessageW(mWindows->list.Handle(), LB_SETCURSEL, row, 0);
}

void Suggestions::ShowHintText(const HintText& hint, Place place) {
    MakeWindows();
    if (hint.text.empty()) {
        mWindows->hint.Hide();
    } else {
        mWindows->hint.Show(hint, mPane.CharacterPlace(place));
    }
}

} // namespace tessaly::win32
