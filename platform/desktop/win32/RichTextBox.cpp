// The control knows more than plain text; what would bring formats or objects into it is turned off or caught here.
#include "platform/desktop/win32/RichTextBox.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/EditKeys.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/PlainText.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr float FontHeight = 200; // in twips: 10 points

std::size_t CountBreaks(std::wstring_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), L'\r'));
}

// Streams a text into the control.
DWORD CALLBACK Stream(DWORD_PTR cookie, BYTE* buffer, LONG room, LONG* count) {
    std::wstring_view& left = *std::bit_cast<std::wstring_view*>(cookie);
    const std::size_t units = std::min(static_cast<std::size_t>(room) / sizeof(wchar_t), left.size());
    std::memcpy(buffer, left.data(), units * sizeof(wchar_t));
    left.remove_prefix(units);
    *count = static_cast<LONG>(units * sizeof(wchar_t));
    return 0;
}

const wchar_t* RichEditClass() {
    LoadSystemLibrary(L"msftedit.dll");
    return MSFTEDIT_CLASS;
}

} // namespace

RichTextBox::RichTextBox(Parent& parent)
    : Control(parent, {RichEditClass(),
                       ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL | ES_WANTRETURN |
                           ES_NOOLEDRAGDROP | ES_DISABLENOSCROLL | WS_VSCROLL | WS_HSCROLL,
                       WS_EX_CLIENTEDGE, ControlId::FuncBody}),
      mFormat(Handle()),
      mMargin(Handle(), mFormat, Marks()) {
    SetUpControl();
    ApplyFont();
    Send(EM_EMPTYUNDOBUFFER);
    Send(EM_SETEVENTMASK, 0, ENM_CHANGE);
}

void RichTextBox::SetUpControl() {
    constexpr LPARAM noWordWrap = 1;
    constexpr LPARAM noLimit = 0x7FFFFFFE;
    Send(EM_SETTARGETDEVICE, 0, noWordWrap);
    Send(EM_EXLIMITTEXT, 0, noLimit);
    // One font and one keyboard for all that is typed.
    const LRESULT options = Send(EM_GETLANGOPTIONS);
    Send(EM_SETLANGOPTIONS, 0, options & ~LRESULT{IMF_AUTOKEYBOARD | IMF_DUALFONT | IMF_AUTOFONTSIZEADJUST});
    LibraryFunction<decltype(&RevokeDragDrop)>(L"ole32.dll", "RevokeDragDrop")(Handle());
}

// The control measures in twips of the resolution that Windows was started with, whatever its window's is.
void RichTextBox::ApplyFont() {
    const float scale = static_cast<float>(ParentWindow().Dpi()) / static_cast<float>(SystemDpi());
    mFormat.SetFont(CodeFontName(), std::lround(FontHeight * scale));
    mMargin.SetFont(TextFont());
}

LOGFONTW RichTextBox::TextFont() const {
    LOGFONTW font = {};
    font.lfHeight = -ToPixels(FontHeight, ParentWindow().Dpi());
    CodeFontName().copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

float RichTextBox::CharacterWidth() const {
    const LOGFONTW font = TextFont();
    const FontOwner made(CreateFontIndirectW(&font));
    return ToTwips(MeasureFont(made.get()).tmAveCharWidth, ParentWindow().Dpi());
}

void RichTextBox::ShowTabStops() {
    const float scale = static_cast<float>(ParentWindow().Dpi()) / static_cast<float>(SystemDpi());
    std::vector<LONG> stops;
    for (const float stop : mTabStops) {
        if (stop > 0) { // at the edge itself there can be none
            stops.push_back(std::lround(stop * scale));
        }
    }
    mFormat.SetTabStops(stops);
}

void RichTextBox::ShowBackground() {
    Send(EM_SETBKGNDCOLOR, mFuncBodyAvailable ? 1 : 0, static_cast<LPARAM>(GetSysColor(COLOR_BTNFACE)));
}

std::string RichTextBox::Text() const {
    return mBreaks.Apply(
        PlainText(mFuncBodyAvailable && Handle() != nullptr && mIsEdited ? ShownText() : mText, mHasPictures));
}

void RichTextBox::SetText(std::string_view text) {
    BreakList breaks;
    std::wstring wide = ToWide(breaks.Set(text));
    const bool hasPictures = ShowControlCharacters(wide);
    if (mFuncBodyAvailable) {
        if (ShownLength() == 0) {
            mMargin.LayOut(CountBreaks(wide) + 1);
        }
        PutInOrBack(wide);
        Send(EM_SETREADONLY, FALSE); // if it came to the worst before
    }
    mBreaks = std::move(breaks);
    mText = std::move(wide);
    mHasPictures = hasPictures;
    mIsEdited = false;
    mHiddenSelection = {};
    mMargin.FollowEdit();
    ForgetMarks();
    Raise(onChange);
}

// The text of an unavailable pane is kept, but not shown.
void RichTextBox::ShowAvailable(bool available) {
    if (!available) {
        mText = mIsEdited ? ShownText() : std::move(mText);
        mHiddenSelection = Selection();
    } else {
        mMargin.LayOut(CountBreaks(mText) + 1);
    }
    PutInOrBack(available ? std::wstring_view(mText) : std::wstring_view());
    mFuncBodyAvailable = available;
    Send(EM_SETREADONLY, available ? FALSE : TRUE);
    mMargin.SetAvailable(available);
    if (!available) {
        mMargin.LayOut(1);
    }
    ShowBackground();
    ShowScrollBars();
    if (available) {
        Select(mHiddenSelection);
    }
}

// Both are there as long as text can be seen: where one comes while something is typed, all of the text is laid out
// again. Without text they take long to draw at the start, for nothing.
void RichTextBox::ShowScrollBars() {
    if (!mFuncBodyAvailable) {
        ShowScrollBar(Handle(), SB_BOTH, FALSE); // both in one step
    }
    for (const int bar : {SB_HORZ, SB_VERT}) {
        Send(EM_SHOWSCROLLBAR, static_cast<WPARAM>(bar), mFuncBodyAvailable ? TRUE : FALSE);
    }
    if (mFuncBodyAvailable) {
        ShowScrollBar(Handle(), SB_BOTH, TRUE); // the message brings none that has nothing to do yet
    }
}

// A control that has not taken all of a text gets the old one back. If it does not take that one either, nobody may
// edit what it shows.
void RichTextBox::PutInOrBack(std::wstring_view text) {
    CodeLines lines(text);
    const CHARRANGE selection = Selection();
    if (PutIn(text)) {
        mFormat.Reset(std::move(lines));
        return;
    }
    mIsEdited = false; // what it shows may be less than `mText`
    const bool isBack = PutIn(mFuncBodyAvailable ? std::wstring_view(mText) : std::wstring_view());
    mFormat.ForgetFormats();
    Send(EM_SETREADONLY, mFuncBodyAvailable && isBack ? FALSE : TRUE);
    Select(selection);
    throw std::runtime_error("the pane cannot show the text");
}

// By a stream: the messages that take a whole text can be slow beyond measure. Returns whether all of it is there.
bool RichTextBox::PutIn(std::wstring_view text) {
    if (text.empty() && ShownLength() == 0) {
        Send(EM_EMPTYUNDOBUFFER);
        return true;
    }
    const LRESULT events = Send(EM_SETEVENTMASK, 0, 0);
    Send(WM_SETREDRAW, FALSE);
    std::wstring_view left = text;
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&left), 0, Stream};
    Send(EM_STREAMIN, SF_TEXT | SF_UNICODE, reinterpret_cast<LPARAM>(&stream));
    Select({});
    Send(EM_SCROLLCARET);
    Send(EM_EMPTYUNDOBUFFER);
    Send(WM_SETREDRAW, TRUE);
    Send(EM_SETEVENTMASK, 0, events);
    InvalidateRect(Handle(), nullptr, TRUE);
    return stream.dwError == 0 && static_cast<std::size_t>(ShownLength()) == text.size();
}

void RichTextBox::MoveCaret(std::size_t position) {
    const auto place = static_cast<LONG>(std::min(position, mText.size()));
    mHiddenSelection = {place, place};
    if (mFuncBodyAvailable) {
        Select(mHiddenSelection);
        Send(EM_SCROLLCARET);
    }
}

void RichTextBox::ShowMarks() {
    InvalidateRect(Handle(), nullptr, FALSE);
    mMargin.Paint();
}

void RichTextBox::Command(int /*id*/, int code) {
    if (code == EN_CHANGE) {
        Changed();
    }
}

void RichTextBox::Rescale() {
    Move();
    ApplyFont();
    ShowTabStops();
}

LRESULT RichTextBox::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
        return Key(message, wParam, lParam);
    case WM_PASTE:
        return Paste();
    case WM_CUT:
    case WM_CLEAR:
        return DefaultOfEdit(message, wParam, lParam, EditPlace::AtSelection);
    case WM_UNDO:
    case EM_UNDO:
    case EM_REDO:
        return DefaultOfEdit(message, wParam, lParam, EditPlace::Anywhere);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        return mFuncBodyAvailable ? Default(message, wParam, lParam) : 0;
    case WM_PAINT:
        return Paint(wParam, lParam);
    default:
        return EdgeMessage(message, wParam, lParam);
    }
}

// The margin is in the edge of the window, where a click is one into the pane and no more.
LRESULT RichTextBox::EdgeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT mouse = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    if (message == WM_NCHITTEST && mMargin.IsHit(mouse)) {
        return HTBORDER;
    }
    if (message == WM_NCLBUTTONDOWN && mMargin.IsHit(mouse)) {
        if (mFuncBodyAvailable) {
            TakeKeyboard();
        }
        return 0;
    }
    if ((message == WM_WINDOWPOSCHANGED || message == WM_SIZE) && mMargin.IsFollowing()) {
        return 0;
    }
    const LRESULT result = Default(message, wParam, lParam);
    if (message == WM_NCCALCSIZE) {
        // A rectangle stands in front of whatever else there is.
        mMargin.NcCalcSize(
            *reinterpret_cast<RECT*>(lParam)); // NOLINT(performance-no-int-to-ptr): so the message has it
    } else if (message == WM_NCPAINT) {
        mMargin.Paint();
    } else if (message == WM_PRINT && (lParam & PRF_NONCLIENT) != 0) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): so the message has it
        mMargin.PaintOn(reinterpret_cast<HDC>(wParam), mMargin.Place());
    } else if (message == WM_MOUSEWHEEL || message == EM_SETZOOM) {
        mMargin.FollowEdit(); // the text may have another size
    }
    return result;
}

LRESULT RichTextBox::Key(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isChar = message == WM_CHAR;
    if (!isChar && IsPasteKey(wParam)) {
        return Paste();
    }
    // The characters that belong to keys with Ctrl: the keys themselves have done their work.
    const bool isCommand = isChar && IsControlAlone() && wParam < L' ';
    if (isCommand || (!isChar && IsFormattingKey(wParam))) {
        return 0;
    }
    const auto place = !isChar && IsUndoKey(wParam) ? EditPlace::Anywhere : EditPlace::AtSelection;
    if (wParam == VK_RETURN && IsDown(VK_SHIFT)) { // else it would break the line without ending the paragraph
        const WithoutShift released;
        return DefaultOfEdit(message, wParam, lParam, place);
    }
    return DefaultOfEdit(message, wParam, lParam, place);
}

// Plain text, whatever else the clipboard holds.
LRESULT RichTextBox::Paste() {
    return mFuncBodyAvailable ? DefaultOfEdit(EM_PASTESPECIAL, CF_UNICODETEXT, 0, EditPlace::AtSelection) : 0;
}

// While the control is at work with an edit it would paint what has not been read and coloured yet, too much of it, and
// then nothing any more when it has been.
LRESULT RichTextBox::DefaultOfEdit(UINT message, WPARAM wParam, LPARAM lParam, EditPlace place) {
    if (mEdit) {
        return Default(message, wParam, lParam);
    }
    const Sight before = WhatIsSeen();
    const bool isAllPainted = GetUpdateRect(Handle(), nullptr, FALSE) == 0;
    mEdit.emplace();
    if (place == EditPlace::AtSelection) {
        mEdit->start = before.selection.cpMin;
    }
    const LRESULT result = Default(message, wParam, lParam);
    const RegionOwner toPaint = std::move(mEdit->toPaint);
    mEdit.reset();
    if (toPaint) {
        if (isAllPainted && place == EditPlace::AtSelection && IsInOneLine(before, WhatIsSeen())) {
            const RECT line = mFormat.LineRect(static_cast<std::size_t>(before.selection.cpMin));
            const RegionOwner lineRegion(CreateRectRgnIndirect(&line));
            CombineRgn(toPaint.get(), toPaint.get(), lineRegion.get(), RGN_AND);
        }
        InvalidateRgn(Handle(), toPaint.get(), TRUE);
    }
    if (mFormat.LineCount() != before.lines) {
        mMargin.FollowEdit();
    }
    return result;
}

// Windows has a window painted when nothing else is to be done: what is left over waits for that, and no key for it.
LRESULT RichTextBox::Paint(WPARAM wParam, LPARAM lParam) {
    if (mEdit) {
        HoldPaintingBack();
        return 0;
    }
    const std::optional<RECT> left = mFuncBodyAvailable ? mFormat.FormatView(mText) : std::nullopt;
    const RegionOwner painted(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(Handle(), painted.get(), FALSE);
    const LRESULT result = Default(WM_PAINT, wParam, lParam);
    mMargin.PaintUnderlines(painted.get());
    mMargin.Follow();
    if (left) {
        InvalidateRect(Handle(), &*left, FALSE);
    }
    return result;
}

void RichTextBox::HoldPaintingBack() {
    RegionOwner asked(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(Handle(), asked.get(), FALSE);
    ValidateRect(Handle(), nullptr);
    if (mEdit->toPaint) {
        CombineRgn(asked.get(), asked.get(), mEdit->toPaint.get(), RGN_OR);
    }
    mEdit->toPaint = std::move(asked);
}

RichTextBox::Sight RichTextBox::WhatIsSeen() const {
    return {mFormat.LineCount(), Selection(), mFormat.PlaceOf(0)};
}

bool RichTextBox::IsInOneLine(const Sight& before, const Sight& now) {
    const auto isCaret = [](const CHARRANGE& selection) { return selection.cpMin == selection.cpMax; };
    return before.lines == now.lines && isCaret(before.selection) && isCaret(now.selection) &&
           before.text.x == now.text.x && before.text.y == now.text.y;
}

// Where the edit tells its place only what it touched is read and compared, and what is behind it moved.
void RichTextBox::Changed() {
    mIsEdited = true;
    const LONG before = static_cast<LONG>(mText.size());
    const LONG end = Selection().cpMax;
    const std::optional<LONG> knownStart = mEdit ? mEdit->start : std::nullopt;
    const LONG start = std::min(knownStart.value_or(0), end);
    const LONG endBefore = end - (ShownLength() - before);
    if (knownStart && endBefore >= start && endBefore <= before) {
        TakeOver(static_cast<std::size_t>(start), static_cast<std::size_t>(endBefore), ShownText(start, end));
    } else {
        TakeOver(0, mText.size(), ShownText());
    }
    if (!mEdit) {
        ParentWindow().Later([this] { mMargin.FollowEdit(); });
    }
    Raise(onChange);
}

// `now` stands in place of the text from `start` to before `end`; some of it may be as before.
void RichTextBox::TakeOver(std::size_t start, std::size_t end, std::wstring_view now) {
    std::wstring_view before = std::wstring_view(mText).substr(start, end - start);
    const auto front = std::mismatch(before.begin(), before.end(), now.begin(), now.end()).first - before.begin();
    before.remove_prefix(static_cast<std::size_t>(front));
    now.remove_prefix(static_cast<std::size_t>(front));
    const auto back = std::mismatch(before.rbegin(), before.rend(), now.rbegin(), now.rend()).first - before.rbegin();
    before.remove_suffix(static_cast<std::size_t>(back));
    now.remove_suffix(static_cast<std::size_t>(back));
    start += static_cast<std::size_t>(front);
    const std::size_t removed = CountBreaks(before);
    const std::size_t line = mFormat.LineAt(start);
    const std::size_t added = CountBreaks(now);
    mBreaks.Replace(line, removed, added);
    mText.replace(start, before.size(), now);
    mFormat.Edit(mText, start, start + now.size(), removed);
    FollowEdit({start, before.size(), now.size(), line + 1, removed, added});
}

std::wstring RichTextBox::ShownText(LONG start, LONG end) const {
    std::wstring text(static_cast<std::size_t>(end - start) + 1, L'\0');
    TEXTRANGEW request = {{start, end}, text.data()};
    text.resize(
        static_cast<std::size_t>(end > start ? Send(EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&request)) : 0));
    return text;
}

LONG RichTextBox::ShownLength() const {
    GETTEXTLENGTHEX request = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    return static_cast<LONG>(Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&request)));
}

CHARRANGE RichTextBox::Selection() const {
    CHARRANGE selection = {};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
    return selection;
}

void RichTextBox::Select(CHARRANGE selection) const {
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection));
}

} // namespace tessaly::win32
