// The control's text object model could format, too, but under some systems each of its calls goes through the whole
// text. What can be undone is none of the control's business.
#include "platform/desktop/win32/ViewFormat.h"

#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Screen.h"
#include "syntax/Palette.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <utility>

namespace tessaly::win32 {

namespace {

// Where the character at `index` stands, in pixels of the client area; far outside where it is out of sight.
POINTL PlaceOf(HWND control, std::size_t index) {
    POINTL place = {};
    SendMessageW(control, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), static_cast<LPARAM>(index));
    return place;
}

// As long as it lives, formatting raises no event, is not painted, and may move the selection. What was to be painted
// before is so afterwards, and nothing else: turning the drawing on again would have all of the control painted, the
// scroll bars, too.
//
// `mayScroll`: to select what is formatted scrolls there, which nobody is to see. To turn the drawing off and on takes
// some systems as long as all else about a key, so it is left on otherwise.
class Formatting {
public:
    Formatting(HWND control, bool mayScroll, bool& isAtWork)
        : mControl(control),
          mMayScroll(mayScroll),
          mIsAtWork(isAtWork) {
        mIsAtWork = true;
        mEvents = SendMessageW(control, EM_SETEVENTMASK, 0, 0);
        RedrawWindow(control, nullptr, nullptr, RDW_ERASENOW | RDW_NOCHILDREN); // the frame, where it is due
        GetUpdateRgn(control, mToPaint.get(), FALSE);
        SendMessageW(control, EM_HIDESELECTION, TRUE, 0); // else it would be painted wherever it goes
        if (mMayScroll) {
            SendMessageW(control, WM_SETREDRAW, FALSE, 0);
        }
        SendMessageW(control, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&mSelection));
        SendMessageW(control, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&mScroll));
        mTextPlace = PlaceOf(control, 0);
    }
    Formatting(const Formatting&) = delete;
    Formatting& operator=(const Formatting&) = delete;
    ~Formatting() {
        SendMessageW(mControl, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&mSelection));
        ScrollBack();
        if (mMayScroll) {
            SendMessageW(mControl, WM_SETREDRAW, TRUE, 0);
        }
        SendMessageW(mControl, EM_HIDESELECTION, FALSE, 0);
        SendMessageW(mControl, EM_SETEVENTMASK, 0, mEvents);
        RedrawWindow(mControl, nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE | RDW_NOFRAME | RDW_NOCHILDREN);
        InvalidateRgn(mControl, mToPaint.get(), FALSE);
        mIsAtWork = false;
    }

private:
    // To select a line that is not whole in view scrolls there. Of texts that are higher than 65,535 pixels the place
    // is told scaled down to 16 bits; not everywhere is it taken so, but in pixels.
    void ScrollBack() const {
        constexpr LONG inexactness = 8; // of a scaled place, in pixels; less than the height of a line
        if (HowFarMoved() == 0) {
            return;
        }
        SendMessageW(mControl, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&mScroll));
        if (HowFarMoved() >= inexactness) {
            RECT area = {};
            SendMessageW(mControl, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
            const POINT pixels = {area.left - mTextPlace.x, area.top - mTextPlace.y};
            SendMessageW(mControl, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&pixels));
        }
    }

    LONG HowFarMoved() const {
        const POINTL place = PlaceOf(mControl, 0);
        return std::max(std::abs(place.x - mTextPlace.x), std::abs(place.y - mTextPlace.y));
    }

    HWND mControl;
    bool mMayScroll;
    bool& mIsAtWork;
    RegionOwner mToPaint{CreateRectRgn(0, 0, 0, 0)};
    LRESULT mEvents = 0;
    CHARRANGE mSelection = {};
    POINT mScroll = {};
    POINTL mTextPlace = {};
};

} // namespace

ViewFormat::ViewFormat(HWND control) : mControl(control) {
    mParagraph.cbSize = sizeof mParagraph;
    mParagraph.dwMask = PFM_TABSTOPS;
    ReadColours();
}

void ViewFormat::ReadColours() {
    mHasColours = !IsHighContrast();
    mIsDark = IsDark(PaperColour());
    mLines.SetNoneFormatted();
    mLastLine.reset();
    InvalidateRect(mControl, nullptr, FALSE);
}

// An empty text still has its end: what is typed there has that one's font, not the default one.
void ViewFormat::SetFont(const std::wstring& name, LONG height) {
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    format.dwMask = CFM_FACE | CFM_SIZE | CFM_CHARSET;
    format.yHeight = height;
    format.bCharSet = DEFAULT_CHARSET;
    std::wcsncpy(format.szFaceName, name.c_str(), LF_FACESIZE - 1);
    const Formatting formatting(mControl, true, mIsAtWork);
    for (const WPARAM of : {WPARAM{SCF_DEFAULT}, WPARAM{SCF_ALL}}) {
        SendMessageW(mControl, EM_SETCHARFORMAT, of, reinterpret_cast<LPARAM>(&format));
    }
    InvalidateRect(mControl, nullptr, TRUE);
}

void ViewFormat::SetTabStops(const std::vector<LONG>& stops) {
    mParagraph.cTabCount = static_cast<SHORT>(std::min<std::size_t>(stops.size(), MAX_TAB_STOPS));
    std::copy_n(stops.begin(), mParagraph.cTabCount, mParagraph.rgxTabs);
    mLines.SetNoneFormatted();
    InvalidateRect(mControl, nullptr, FALSE);
}

void ViewFormat::Reset(CodeLines lines) {
    mLines = std::move(lines);
    ForgetFormats();
}

void ViewFormat::ForgetFormats() {
    mIsTyping = false;
    mLines.SetAllFresh();
    mLastLine.reset();
    InvalidateRect(mControl, nullptr, FALSE);
}

void ViewFormat::Replace(std::size_t start, std::size_t end, std::wstring_view now) {
    mIsTyping = true;
    if (mLines.Replace(start, end, now)) { // it may be another one's number now
        mLastLine.reset();
    }
}

std::optional<RECT> ViewFormat::FormatView() {
    std::size_t first = std::min(FirstInView(), mLines.Count() - 1);
    std::size_t end = std::min(first + LinesInView(first), mLines.Count());
    mLines.ScanTo(end);
    while (first < end && mLines.IsFormatted(first)) {
        ++first;
    }
    while (first < end && mLines.IsFormatted(end - 1)) {
        --end;
    }
    if (first == end) {
        return std::nullopt;
    }
    mIsTyping = mIsTyping && end - first > LinesAtOnce;
    if (mIsTyping) {
        end = first + LinesAtOnce;
    }
    // Only these: to paint all that is in view takes longer than everything else about a keystroke.
    const RECT lines = LinesRect(first, end);
    FormatLines(first, end, (lines.bottom - lines.top) / static_cast<LONG>(end - first));
    InvalidateRect(mControl, &lines, FALSE);
    return mIsTyping ? std::optional<RECT>(LinesRect(end, end + 1)) : std::nullopt;
}

std::pair<std::size_t, std::size_t> ViewFormat::LinesSeen() const {
    RECT client = {};
    GetClientRect(mControl, &client);
    const std::size_t first = std::min(FirstInView(), mLines.Count() - 1);
    std::size_t end = std::min(first + LinesInView(first), mLines.Count());
    while (end > first + 1 && TopOf(end - 1) >= client.bottom) {
        --end;
    }
    return {first, end};
}

POINTL ViewFormat::PlaceOf(std::size_t place) const {
    return win32::PlaceOf(mControl, place);
}

std::size_t ViewFormat::PositionAt(POINT point) const {
    POINTL wanted = {point.x, point.y};
    return static_cast<std::size_t>(SendMessageW(mControl, EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&wanted)));
}

RECT ViewFormat::LineRect(std::size_t place) const {
    const std::size_t line = mLines.LineAt(place);
    return LinesRect(line, line + 1);
}

RECT ViewFormat::LinesRect(std::size_t first, std::size_t end) const {
    RECT rect = {};
    GetClientRect(mControl, &rect);
    rect.top = TopOf(first);
    if (end < mLines.Count()) {
        rect.bottom = TopOf(end);
    }
    return rect;
}

LONG ViewFormat::TopOf(std::size_t line) const {
    return PlaceOf(mLines.Start(line)).y;
}

void ViewFormat::FormatLines(std::size_t first, std::size_t end, LONG lineHeight) {
    std::size_t withStops = first;
    while (withStops < end && mLines.HasTabStops(withStops)) {
        ++withStops;
    }
    const std::vector<Stretch> stretches = StretchesToColour(first, end);
    if (withStops < end || !stretches.empty()) {
        const Formatting formatting(mControl, withStops < end || !AreInView(stretches, lineHeight), mIsAtWork);
        if (withStops < end) {
            Select(mLines.Start(withStops), mLines.Start(end - 1) + mLines.TextOf(end - 1).size());
            SendMessageW(mControl, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&mParagraph));
        }
        for (const Stretch& stretch : stretches) {
            SetColour(stretch.start, stretch.end, stretch.colour);
        }
    }
    for (std::size_t line = first; line < end; ++line) {
        mLines.SetFormatted(line);
    }
}

// Each stretch that has not the colour that it should have; or all of it in one go and then what stands out of it,
// where that takes fewer steps.
std::vector<ViewFormat::Stretch> ViewFormat::StretchesToColour(std::size_t first, std::size_t end) {
    Colours wanted;
    Colours shown;
    for (std::size_t line = first; line < end; ++line) {
        const Colours wantedHere = WantedColours(line);
        const Colours shownHere = mLines.IsFormatted(line) ? wantedHere : ShownColours(mLines.TextOf(line), line);
        wanted.insert(wanted.end(), wantedHere.begin(), wantedHere.end());
        shown.insert(shown.end(), shownHere.begin(), shownHere.end());
        wanted.push_back(AnyColour); // the line break
        shown.push_back(AnyColour);
    }
    wanted.pop_back();
    shown.pop_back();
    const std::size_t start = mLines.Start(first);
    std::vector<Stretch> stretches = Differences(wanted, shown);
    std::vector<Stretch> standingOut = Differences(wanted, Colours(wanted.size(), NoColour));
    if (standingOut.size() + 1 < stretches.size()) {
        stretches = std::move(standingOut);
        stretches.insert(stretches.begin(), {0, wanted.size(), NoColour});
    }
    for (Stretch& stretch : stretches) {
        stretch.start += start;
        stretch.end += start;
    }
    mLastLine = end - 1;
    mLastText = mLines.TextOf(end - 1);
    mLastColours = WantedColours(end - 1);
    return stretches;
}

// To select them scrolls nothing, nor does what is selected now. A character is less wide than high.
bool ViewFormat::AreInView(const std::vector<Stretch>& stretches, LONG lineHeight) const {
    CHARRANGE selection = {};
    SendMessageW(mControl, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
    RECT area = {};
    SendMessageW(mControl, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    const auto isInView = [&](std::size_t place) {
        const POINTL at = PlaceOf(place);
        return at.x >= area.left && at.x + lineHeight <= area.right && at.y >= area.top &&
               at.y + lineHeight <= area.bottom;
    };
    return isInView(static_cast<std::size_t>(selection.cpMax)) &&
           std::all_of(stretches.begin(), stretches.end(), [&](const Stretch& each) { return isInView(each.end); });
}

// As few as possible: one goes on over what has its colour already, or may have any.
std::vector<ViewFormat::Stretch> ViewFormat::Differences(const Colours& wanted, const Colours& shown) {
    std::vector<Stretch> stretches;
    signed char current = Unknown; // what the last stretch can go on with
    for (std::size_t place = 0; place < wanted.size(); ++place) {
        const signed char colour = wanted[place];
        if (colour == AnyColour) {
            continue;
        }
        if (shown[place] == colour) {
            current = current == colour ? current : Unknown;
            continue;
        }
        if (current != colour) {
            stretches.push_back({place, place, colour});
            current = colour;
        }
        stretches.back().end = place + 1;
    }
    return stretches;
}

ViewFormat::Colours ViewFormat::WantedColours(std::size_t line) {
    const std::wstring_view lineText = mLines.TextOf(line);
    Colours colours(lineText.size(), NoColour);
    if (mHasColours) {
        mLines.Tokens(line, mTokens);
        for (const CToken& token : mTokens) {
            std::fill_n(colours.begin() + static_cast<std::ptrdiff_t>(token.start), token.length,
                        static_cast<signed char>(token.kind));
        }
    }
    for (std::size_t place = 0; place < lineText.size(); ++place) {
        if (lineText[place] == L' ' || lineText[place] == L'\t') {
            colours[place] = AnyColour;
        }
    }
    return colours;
}

// What is in front of an edit and behind it keeps its colours; what a new character has is the control's secret.
ViewFormat::Colours ViewFormat::ShownColours(std::wstring_view lineText, std::size_t line) const {
    if (mLastLine != line) {
        return Colours(lineText.size(), mLines.IsFresh(line) ? NoColour : Unknown);
    }
    Colours colours(lineText.size(), Unknown);
    const std::size_t shorter = std::min(lineText.size(), mLastText.size());
    std::size_t front = 0;
    while (front < shorter && lineText[front] == mLastText[front]) {
        colours[front] = mLastColours[front];
        ++front;
    }
    for (std::size_t back = 1; back <= shorter - front; ++back) {
        if (lineText[lineText.size() - back] != mLastText[mLastText.size() - back]) {
            break;
        }
        colours[lineText.size() - back] = mLastColours[mLastText.size() - back];
    }
    return colours;
}

void ViewFormat::SetColour(std::size_t start, std::size_t end, signed char colour) const {
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.dwEffects = colour == NoColour ? CFE_AUTOCOLOR : 0;
    format.crTextColor = colour == NoColour ? 0 : Turned(TokenColour(static_cast<CTokenKind>(colour), mIsDark));
    Select(start, end);
    SendMessageW(mControl, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

void ViewFormat::Select(std::size_t start, std::size_t end) const {
    CHARRANGE range = {static_cast<LONG>(start), static_cast<LONG>(end)};
    SendMessageW(mControl, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

std::size_t ViewFormat::FirstInView() const {
    const auto first = static_cast<std::size_t>(SendMessageW(mControl, EM_GETFIRSTVISIBLELINE, 0, 0));
    return std::min(first, mLines.Count() - 1);
}

// Rather a few more than one too few.
std::size_t ViewFormat::LinesInView(std::size_t first) const {
    constexpr LONG smallestHeight = 8; // of a line, in pixels
    RECT client = {};
    GetClientRect(mControl, &client);
    LONG height = 0;
    if (first + 1 < mLines.Count()) {
        height = TopOf(first + 1) - TopOf(first);
    }
    return static_cast<std::size_t>(client.bottom / std::max(height, smallestHeight)) + 2;
}

} // namespace tessaly::win32
