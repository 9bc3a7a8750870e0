// The control does not tell when it scrolls, but paints then: where its lines stand is looked up after each painting.
#include "platform/desktop/win32/PaneViews.h"

#include "platform/desktop/Flagged.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Library.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tessaly::win32 {

namespace {

// A window's client area, from the corner of the window.
RECT ClientPlace(HWND window) {
    RECT outer = {};
    GetWindowRect(window, &outer);
    RECT client = {};
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -outer.left, -outer.top);
    return client;
}

void Fill(HDC target, const RECT& place, COLORREF colour) {
    SetBkColor(target, colour);
    ExtTextOutW(target, 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
}

// From `left` to `right`, its lowest points in front of `bottom`.
void DrawWave(HDC target, LONG left, LONG right, LONG bottom, LONG step) {
    std::vector<POINT> points;
    for (LONG x = left; x <= right + step; x += step) {
        const bool isLow = (x - left) / step % 2 == 0;
        points.push_back({std::min(x, right), isLow ? bottom - 1 : bottom - 1 - step});
    }
    Polyline(target, points.data(), static_cast<int>(points.size()));
}

} // namespace

MarginView::MarginView(HWND control, const ViewFormat& lines, const LineMarks& marks)
    : mControl(control),
      mLines(lines),
      mMarks(marks) {}

void MarginView::SetFont(const LOGFONTW& font) {
    mFont.reset(CreateFontIndirectW(&font));
    LayOut(mIsAvailable ? mLines.Lines().Count() : 1);
}

void MarginView::LayOut(std::size_t lines) {
    const TEXTMETRICW metrics = MeasureFont(mFont.get());
    mLineHeight = metrics.tmHeight;
    const Margin before = std::exchange(mMargin, LayOutMargin(lines, metrics.tmAveCharWidth, mLineHeight));
    if (mMargin.width != before.width) {
        SetWindowPos(mControl, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
    if (mMargin.side != before.side) {
        mPictures = PicturesOfMarks(mMargin.side);
    }
    mPainted.reset();
}

void MarginView::FollowEdit() {
    const Flagged following(mIsFollowing);
    LayOut(mIsAvailable ? mLines.Lines().Count() : 1);
}

void MarginView::ColoursChanged() {
    mPictures = PicturesOfMarks(mMargin.side);
    Paint();
}

void MarginView::SetAvailable(bool available) {
    mIsAvailable = available;
    Paint();
}

RECT MarginView::Place() const {
    RECT place = ClientPlace(mControl);
    place.right = place.left;
    place.left -= mMargin.width;
    return place;
}

bool MarginView::IsHit(POINT screen) const {
    RECT outer = {};
    GetWindowRect(mControl, &outer);
    const RECT place = Place();
    return PtInRect(&place, {screen.x - outer.left, screen.y - outer.top}) != 0;
}

// In memory first, so that nothing flickers.
void MarginView::Paint() {
    mPainted.reset();
    if ((GetWindowLongW(mControl, GWL_STYLE) & WS_VISIBLE) == 0) {
        return;
    }
    const RECT place = Place();
    const RECT buffered = {0, 0, place.right - place.left, place.bottom - place.top};
    HDC target = GetWindowDC(mControl);
    HDC drawing = CreateCompatibleDC(target);
    const BitmapOwner bitmap(CreateCompatibleBitmap(target, buffered.right, buffered.bottom));
    HGDIOBJ before = SelectObject(drawing, bitmap.get());
    PaintOn(drawing, buffered);
    BitBlt(target, place.left, place.top, buffered.right, buffered.bottom, drawing, 0, 0, SRCCOPY);
    SelectObject(drawing, before);
    DeleteDC(drawing);
    if ((GetWindowLongW(mControl, GWL_STYLE) & WS_HSCROLL) != 0) { // what is beside the scroll bar
        RECT corner = {place.left, place.bottom, place.right, place.bottom + GetSystemMetrics(SM_CYHSCROLL)};
        Fill(target, corner, GetSysColor(COLOR_BTNFACE));
    }
    ReleaseDC(mControl, target);
    mPainted = WhatIsSeen();
}

void MarginView::PaintOn(HDC target, const RECT& place) const {
    if (!mIsAvailable) {
        Fill(target, place, GetSysColor(COLOR_BTNFACE));
        return;
    }
    const MarginColours colours = ColoursOfMargin(PaperColour(), InkColour(), IsHighContrast());
    const int state = SaveDC(target);
    IntersectClipRect(target, place.left, place.top, place.right, place.bottom);
    Fill(target, place, Turned(colours.paper));
    SelectObject(target, mFont.get());
    SetTextColor(target, Turned(colours.number));
    SetBkMode(target, TRANSPARENT);
    SetTextAlign(target, TA_RIGHT | TA_TOP);
    const auto [first, end] = mLines.LinesSeen();
    for (std::size_t line = first; line < end; ++line) {
        const std::wstring number = std::to_wstring(line + 1);
        const int top = place.top + mLines.TopOf(line);
        ExtTextOutW(target, place.left + mMargin.numberEnd, top, 0, nullptr, number.data(),
                    static_cast<UINT>(number.size()), nullptr);
        if (const Mark mark = mMarks.On(line + 1); mark != Mark::None) {
            ImageList_Draw(mPictures.get(), static_cast<int>(mark), target, place.left + mMargin.picture,
                           top + (mLineHeight - mMargin.side) / 2, ILD_NORMAL);
        }
    }
    RestoreDC(target, state);
}

void MarginView::Follow() {
    if (mIsAvailable && mPainted != WhatIsSeen()) {
        Paint();
    }
}

MarginView::Sight MarginView::WhatIsSeen() const {
    const auto [first, end] = mLines.LinesSeen();
    return {mLines.Lines().Count(), first, mLines.TopOf(first), mLines.TopOf(end - 1)};
}

void MarginView::PaintUnderlines(HRGN region) const {
    if (!mIsAvailable || mMarks.AreNone()) {
        return;
    }
    const auto [first, behind] = mLines.LinesSeen();
    const LONG step = std::max(WindowDpi(mControl) / 64, 1);
    HDC target = GetDC(mControl);
    SelectClipRgn(target, region);
    for (const LineMark& mark : mMarks.All()) {
        if (mark.begin == mark.end || mark.line <= first || mark.line > behind) {
            continue;
        }
        const POINTL begin = mLines.PlaceOf(mark.begin);
        const POINTL end = mLines.PlaceOf(mark.end);
        HPEN pen = CreatePen(PS_SOLID, std::max(WindowDpi(mControl) / 96, 1), Turned(ColourOf(mark.mark)));
        HGDIOBJ before = SelectObject(target, pen);
        DrawWave(target, begin.x, end.x, begin.y + mLineHeight, step);
        SelectObject(target, before);
        DeleteObject(pen);
    }
    ReleaseDC(mControl, target);
}

SpotView::SpotView(HWND control, const ViewFormat& lines, const tessaly::RichTextBox& pane)
    : mControl(control),
      mLines(lines),
      mPane(pane) {}

// All lines are equally high, so only those that were painted are looked at, and no others are asked for their places.
void SpotView::Paint(HRGN region, LONG height) const {
    RECT painted = {};
    if (!mPane.FuncBodyAvailable() || GetRgnBox(region, &painted) == NULLREGION) {
        return;
    }
    const std::size_t first = mLines.FirstInView();
    const RECT top = mLines.RectOfLine(first);
    const auto skipped = static_cast<std::size_t>(std::max<LONG>(painted.top - top.top, 0) / height);
    const auto end = static_cast<std::size_t>(std::max<LONG>(painted.bottom - top.top, 0) / height + 1);
    HDC target = GetDC(mControl);
    SelectClipRgn(target, region);
    for (std::size_t line = first + skipped; line < std::min(first + end, mLines.Lines().Count()); ++line) {
        RECT place = top;
        place.top += static_cast<LONG>(line - first) * height;
        place.bottom = place.top + height;
        PaintLine(target, line, place);
    }
    ReleaseDC(mControl, target);
}

void SpotView::PaintLine(HDC target, std::size_t line, const RECT& place) const {
    const bool isHighContrast = IsHighContrast();
    if (line == mPane.CurrentLine()) {
        Lay(target, place, TintOfCurrentLine(InkColour(), isHighContrast));
    }
    const std::size_t start = mLines.Lines().Start(line);
    const auto columnAt = [&](LONG x) {
        return std::max(mLines.PositionAt({x, (place.top + place.bottom) / 2}), start) - start;
    };
    const auto seen = [&] { return LineSpan{columnAt(place.left), columnAt(place.right)}; };
    for (const Spot& spot : mPane.SpotsOf(line, seen)) {
        RECT spotted = place;
        spotted.left = mLines.PlaceOf(start + spot.begin).x;
        spotted.right = mLines.PlaceOf(start + spot.end).x;
        Lay(target, spotted, TintOf(spot.kind, InkColour(), isHighContrast));
    }
}

// One pixel of the colour is drawn as wide and high as the place. Some systems take long to make what a pixel is drawn
// from, or one like those of the screen.
void SpotView::Lay(HDC target, const RECT& place, const Tint& tint) {
    static const auto blend = LibraryFunction<decltype(&GdiAlphaBlend)>(L"gdi32.dll", "GdiAlphaBlend");
    static HDC drawing = CreateCompatibleDC(nullptr);
    const BitmapOwner pixel(CreateBitmap(1, 1, 1, 32, &tint.colour));
    HGDIOBJ before = SelectObject(drawing, pixel.get());
    blend(target, place.left, place.top, place.right - place.left, place.bottom - place.top, drawing, 0, 0, 1, 1,
          {AC_SRC_OVER, 0, tint.opacity, 0});
    SelectObject(drawing, before);
    if (tint.hasFrame) {
        HBRUSH brush = CreateSolidBrush(Turned(InkColour()));
        FrameRect(target, &place, brush);
        DeleteObject(brush);
    }
}

void SpotView::Repaint(std::size_t line) const {
    if (line < mLines.Lines().Count()) {
        const RECT place = mLines.RectOfLine(line);
        InvalidateRect(mControl, &place, TRUE);
    }
}

} // namespace tessaly::win32
