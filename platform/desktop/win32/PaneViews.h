// What is painted beside the text of the pane and over it.
#pragma once

#include "platform/desktop/LineMarks.h"
#include "platform/desktop/Margin.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/Tint.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/ViewFormat.h"

#include <algorithm>
#include <optional>

namespace tessaly::win32 {

// The margin and the wavy lines under the text. The margin belongs to the edge of the window: there the control neither
// scrolls, nor paints, nor sees the mouse.
class MarginView {
public:
    // All of them outlive this. `lines` are those that the control shows.
    MarginView(HWND control, const ViewFormat& lines, const LineMarks& marks);

    // The font of the text.
    void SetFont(const LOGFONTW& font);

    // Makes the margin as wide as it must be for so many lines and the font. The control lays out all of its text then,
    // which takes some systems long: to be called while there is none.
    void LayOut(std::size_t lines);

    // The same for the lines that there are, but the control is not told that its client area is some digits narrower.
    // It learns it with its next text or place. Not to be called while it is at work with an edit.
    void FollowEdit();
    bool IsFollowing() const { return mIsFollowing; }

    // The user has chosen other colours.
    void ColoursChanged();

    // An unavailable pane has a grey margin without anything in it.
    void SetAvailable(bool available);

    // Of the text, in pixels.
    int LineHeight() const { return mLineHeight; }

    // Where it is, from the corner of the window, in pixels.
    RECT Place() const;

    // For the messages of these names: takes the margin from the control's own part of the window, and tells whether
    // a point of the screen is in it.
    void NcCalcSize(RECT& client) const { client.left = std::min(client.left + mMargin.width, client.right); }
    bool IsHit(POINT screen) const;

    // Paints all of it at once, on the screen or elsewhere.
    void Paint();
    void PaintOn(HDC target, const RECT& place) const;

    // Paints it if its lines have moved since.
    void Follow();

    // Underlines marked text that stands in this region of the client area.
    void PaintUnderlines(HRGN region) const;

private:
    // What decides what is to be painted, beside the marks.
    struct Sight {
        std::size_t lines = 0;
        std::size_t first = 0;
        LONG firstTop = 0;
        LONG lastTop = 0;

        bool operator==(const Sight&) const = default;
    };

    Sight WhatIsSeen() const;

    HWND mControl;
    const ViewFormat& mLines;
    const LineMarks& mMarks;
    FontOwner mFont;          // zoomed
    ImageListOwner mPictures; // of marks
    int mLineHeight = 0;
    Margin mMargin;
    std::optional<Sight> mPainted;
    bool mIsAvailable = true;
    bool mIsFollowing = false; // an edit with the width
};

// What is set apart in the text: the line of the caret, brackets, blanks, characters that a save would lose. It is laid
// over what the control has painted.
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
