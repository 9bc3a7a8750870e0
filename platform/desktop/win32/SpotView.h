// What is set apart in the text: the line of the caret, brackets, blanks, characters that a save would lose. It is laid
// over what the control has painted.
#pragma once

#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/Tint.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/ViewFormat.h"

namespace tessaly::win32 {

class SpotView {
public:
    // All of them outlive this. `lines` are those that the control shows.
    SpotView(HWND control, const ViewFormat& lines, const tessaly::RichTextBox& pane);

    // Paints over this region of the client area, which was painted anew. `height` is that of a line.
    void Paint(HRGN region, LONG height) const;

    // The line, from 0, is to be painted again; it may be gone.
    void Repaint(std::size_t line) const;

private:
    void PaintLine(HDC target, std::size_t line, const RECT& place) const;
    static void Lay(HDC target, const RECT& place, const Tint& tint);

    HWND mControl;
    const ViewFormat& mLines;
    const tessaly::RichTextBox& mPane;
};

} // namespace tessaly::win32
