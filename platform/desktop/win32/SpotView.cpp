// All lines are equally high, so only those that were painted are looked at, and no others are asked for their places.
#include "platform/desktop/win32/SpotView.h"

#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Library.h"

#include <algorithm>

namespace tessaly::win32 {

SpotView::SpotView(HWND control, const ViewFormat& lines, const tessaly::RichTextBox& pane)
    : mControl(control),
      mLines(lines),
      mPane(pane) {}

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
    for (const Spot& spot : mPane.SpotsOf(line)) {
        RECT spotted = place;
        spotted.left = mLines.PlaceOf(mLines.Lines().Start(line) + spot.begin).x;
        spotted.right = mLines.PlaceOf(mLines.Lines().Start(line) + spot.end).x;
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
