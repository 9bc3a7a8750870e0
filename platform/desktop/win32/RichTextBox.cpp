// The control knows more than plain text; what would bring formats or objects into it is turned off or caught here.
#include "platform/desktop/win32/RichTextBox.h"

#include "platform/desktop/win32/CodeLines.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Spoken.h"
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
      mMargin(Handle(), mFormat, Marks()),
      mSpots(Handle(), mFormat, *this) {
    SetUpControl();
    ApplyFont();
    Send(EM_SETEVENTMASK, 0, ENM_CHANGE | ENM_SELCHANGE);
}

void RichTextBox::SetUpControl() {
    constexpr LPARAM noWordWrap = 1;
    constexpr LPARAM noLimit = 0x7FFFFFFE;
    Send(EM_SETTARGETDEVICE, 0, noWordWrap);
    Send(EM_EXLIMITTEXT, 0, noLimit);
    Send(EM_SETUNDOLIMIT, 0); // the pane has a history of its own
    // One font and one keyboard for all that is typed.
    const LRESULT options = Send(EM_GETLANGOPTIONS);
    Send(EM_SETLANGOPTIONS, 0, options & ~LRESULT{IMF_AUTOKEYBOARD | IMF_DUALFONT | IMF_AUTOFONTSIZEADJUST});
    LibraryFunction<decltype(&RevokeDragDrop)>(L"ole32.dll", "RevokeDragDrop")(Handle());
}

// The control measures in twips of the resolution that Windows was started with, whatever its window's is. Its own zoom
// does not reach text that is there already on every system.
float RichTextBox::Scale() const {
    return static_cast<float>(ParentWindow().Dpi()) / static_cast<float>(SystemDpi()) * static_cast<float>(Zoom()) /
           100;
}

void RichTextBox::ApplyFont() {
    mFormat.SetFont(CodeFontName(), std::lround(FontHeight * Scale()));
    mMargin.SetFont(TextFont(Zoom()));
}

LOGFONTW RichTextBox::TextFont(int zoom) const {
    LOGFONTW font = {};
    font.lfHeight = -ToPixels(FontHeight * static_cast<float>(zoom) / 100, ParentWindow().Dpi());
    CodeFontName().copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

// What is painted for the last line goes on to the lower edge.
RECT RichTextBox::LineOf(std::size_t position) const {
    RECT line = mFormat.LineRect(position);
    line.bottom = std::min(line.bottom, line.top + mMargin.LineHeight());
    return line;
}

RECT RichTextBox::CharacterPlace(tessaly::Place place) const {
    const LineSpan span = SpanOf(place.line + 1);
    const std::size_t position = std::min(span.begin + place.column, span.end);
    RECT character = LineOf(position);
    character.left = character.right = mFormat.PlaceOf(position).x;
    MapWindowPoints(Handle(), nullptr, reinterpret_cast<POINT*>(&character), 2);
    return character;
}

// Below the caret.
std::optional<POINT> RichTextBox::MenuPlace() const {
    if (!mFuncBodyAvailable) {
        return std::nullopt;
    }
    const std::size_t caret = SelectedEnds().caret;
    return NearestPlace({mFormat.PlaceOf(caret).x, LineOf(caret).bottom});
}

// What is nearest may be far away, or below a scroll bar.
std::optional<tessaly::Place> RichTextBox::PlaceUnder(POINT point) const {
    RECT client = {};
    GetClientRect(Handle(), &client);
    const bool isInMargin = point.x < 0;
    const std::size_t position = mFormat.PositionAt({std::max<LONG>(point.x, 0), point.y});
    const RECT line = LineOf(position);
    const LONG reach = line.bottom - line.top; // wider than a character
    if (point.x >= client.right || point.y >= client.bottom || point.y < line.top || point.y >= line.bottom ||
        (!isInMargin && std::abs(mFormat.PlaceOf(position).x - point.x) > reach)) {
        return std::nullopt;
    }
    const std::size_t number = LineAt(position);
    return tessaly::Place{number, position - SpanOf(number + 1).begin};
}

void RichTextBox::ShowSpots(std::optional<std::size_t> line) {
    if (line) {
        mSpots.Repaint(*line);
    } else {
        InvalidateRect(Handle(), nullptr, TRUE);
        mMargin.Paint();
    }
}

float RichTextBox::CharacterWidth() const {
    const LOGFONTW font = TextFont(100);
    const FontOwner made(CreateFontIndirectW(&font));
    return ToTwips(MeasureFont(made.get()).tmAveCharWidth, ParentWindow().Dpi());
}

void RichTextBox::ShowTabStops() {
    const float scale = Scale();
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

std::string RichTextBox::ShownText() const {
    const bool isThere = mFuncBodyAvailable && Handle() != nullptr && mIsEdited;
    const std::u16string units = ToUnits(isThere ? TextIn(0, ShownLength()) : mFormat.Lines().Text(), mHasPictures);
    return ToUtf8({reinterpret_cast<const wchar_t*>(units.data()), units.size()});
}

void RichTextBox::SetText(std::string_view text) {
    HoldDrawing();
    BreakList breaks;
    std::wstring wide = ToWide(breaks.Set(text));
    const bool hasPictures = ShowControlCharacters(wide);
    CodeLines lines(std::move(wide));
    if (mFuncBodyAvailable) {
        if (ShownLength() == 0) {
            mMargin.LayOut(lines.Count());
        }
        PutInOrBack(lines.Text());
        Send(EM_SETREADONLY, FALSE); // if it came to the worst before
    }
    mFormat.Reset(std::move(lines));
    mHasPictures = hasPictures;
    mIsEdited = false;
    mSelected = {};
    mMargin.FollowEdit();
    NoteNewText(std::move(breaks));
}

// The text of an unavailable pane is kept, but not shown.
void RichTextBox::ShowAvailable(bool available) {
    HoldDrawing();
    if (!available) {
        if (mIsEdited) {
            mFormat.Reset(CodeLines(TextIn(0, ShownLength())));
        }
        mSelected = SelectedEnds();
    } else {
        mMargin.LayOut(Count());
    }
    PutInOrBack(available ? std::wstring_view(mFormat.Lines().Text()) : std::wstring_view());
    mFormat.ForgetFormats();
    mFuncBodyAvailable = available;
    Send(EM_SETREADONLY, available ? FALSE : TRUE);
    mMargin.SetAvailable(available);
    if (!available) {
        mMargin.LayOut(1);
    }
    ShowBackground();
    ShowScrollBars();
    if (available) {
        SelectEnds(mSelected);
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
    const CHARRANGE selection = SelectedRange();
    if (PutIn(text)) {
        return;
    }
    mIsEdited = false; // what it shows may be less than the text
    const bool isBack = PutIn(mFuncBodyAvailable ? std::wstring_view(mFormat.Lines().Text()) : std::wstring_view());
    mFormat.ForgetFormats();
    Send(EM_SETREADONLY, mFuncBodyAvailable && isBack ? FALSE : TRUE);
    SelectRange(selection);
    throw std::runtime_error("the pane cannot show the text");
}

// By a stream: the messages that take a whole text can be slow beyond measure. Returns whether all of it is there.
bool RichTextBox::PutIn(std::wstring_view text) {
    if (text.empty() && ShownLength() == 0) {
        return true;
    }
    const LRESULT events = Send(EM_SETEVENTMASK, 0, 0);
    std::wstring_view left = text;
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&left), 0, Stream};
    Send(EM_STREAMIN, SF_TEXT | SF_UNICODE, reinterpret_cast<LPARAM>(&stream));
    SelectRange({});
    Send(EM_SCROLLCARET);
    Send(EM_SETEVENTMASK, 0, events);
    return stream.dwError == 0 && static_cast<std::size_t>(ShownLength()) == text.size();
}

std::u16string RichTextBox::Line(std::size_t index) const {
    return ToUnits(mFormat.Lines().TextOf(index), mHasPictures);
}

// The control does not tell at which end the caret is, but it has not moved where the program put it. All that there
// is to select has one character more than the text.
Ends RichTextBox::SelectedEnds() const {
    if (!mFuncBodyAvailable) {
        return mSelected;
    }
    const CHARRANGE range = SelectedRange();
    const std::size_t length = mFormat.Lines().Text().size();
    const Ends ends = {std::min(static_cast<std::size_t>(range.cpMin), length),
                       std::min(static_cast<std::size_t>(range.cpMax), length)};
    return mSelected == Ends{ends.caret, ends.anchor} ? mSelected : ends;
}

void RichTextBox::SelectEnds(const Ends& ends) {
    mSelected = ends;
    if (mFuncBodyAvailable) {
        const auto [first, last] = std::minmax(ends.anchor, ends.caret);
        SelectRange({static_cast<LONG>(first), static_cast<LONG>(last)});
        Send(EM_SCROLLCARET);
    }
}

PaneScroll RichTextBox::Scrolled() const {
    POINT scrolled = {};
    Send(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
    return mFuncBodyAvailable ? PaneScroll{mFormat.FirstInView(), scrolled.x} : PaneScroll();
}

void RichTextBox::ScrollTo(const PaneScroll& scroll) {
    if (mFuncBodyAvailable) {
        Send(EM_LINESCROLL, 0, static_cast<LPARAM>(scroll.firstLine) - static_cast<LPARAM>(mFormat.FirstInView()));
        Send(WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, scroll.across));
    }
}

void RichTextBox::ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) {
    std::wstring wide(text.begin(), text.end());
    mHasPictures = ShowControlCharacters(wide) || mHasPictures;
    const LRESULT events = Send(EM_SETEVENTMASK, 0, 0);
    SelectRange({static_cast<LONG>(start), static_cast<LONG>(end)});
    Send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide.c_str()));
    Send(EM_SETEVENTMASK, 0, events);
    mIsEdited = true;
    mFormat.Replace(start, end, wide);
}

void RichTextBox::ShowZoom() {
    ApplyFont();
    ShowTabStops();
}

void RichTextBox::ShowDescription(const std::string& description) {
    if (mHasReader) {
        DescribeControl(Handle(), CHILDID_SELF, ToWide(description));
    }
}

// While an edit is being done the text is not yet what the control has.
LRESULT RichTextBox::Notify(NMHDR& header) {
    if (header.code == EN_SELCHANGE && !mEdit) {
        LookAtCaret();
    }
    return 0;
}

void RichTextBox::Rescale() {
    Move();
    ApplyFont();
    ShowTabStops();
}

// Where the edit tells its place only what it touched is read, and what is behind it moved. Some of that may be as
// before.
void RichTextBox::Command(int /*id*/, int code) {
    if (code != EN_CHANGE) {
        return;
    }
    mIsEdited = true;
    const std::wstring& text = mFormat.Lines().Text();
    const LONG grown = ShownLength() - static_cast<LONG>(text.size());
    LONG end = SelectedRange().cpMax;
    LONG start = mEdit ? std::min(mEdit->start.value_or(0), end) : 0;
    if (!mEdit || !mEdit->start || end - grown < start || end - grown > static_cast<LONG>(text.size())) {
        start = 0;
        end = static_cast<LONG>(text.size()) + grown;
    }
    const std::wstring read = TextIn(start, end);
    std::wstring_view now = read;
    std::wstring_view before(text.data() + start, static_cast<std::size_t>(end - grown - start));
    const auto front = std::mismatch(before.begin(), before.end(), now.begin(), now.end()).first - before.begin();
    before.remove_prefix(static_cast<std::size_t>(front));
    now.remove_prefix(static_cast<std::size_t>(front));
    const auto back = std::mismatch(before.rbegin(), before.rend(), now.rbegin(), now.rend()).first - before.rbegin();
    before.remove_suffix(static_cast<std::size_t>(back));
    now.remove_suffix(static_cast<std::size_t>(back));
    const auto changed = static_cast<std::size_t>(start + front);
    std::u16string removed = ToUnits(before, mHasPictures);
    mFormat.Replace(changed, changed + before.size(), now);
    NoteEdit(changed, std::move(removed), ToUnits(now, mHasPictures));
    if (!mEdit) {
        ParentWindow().loop.Later([this] { mMargin.FollowEdit(); });
    }
    Raise(onChange);
}

std::wstring RichTextBox::TextIn(LONG start, LONG end) const {
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

CHARRANGE RichTextBox::SelectedRange() const {
    CHARRANGE selection = {};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
    return selection;
}

void RichTextBox::SelectRange(CHARRANGE range) const {
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

} // namespace tessaly::win32
