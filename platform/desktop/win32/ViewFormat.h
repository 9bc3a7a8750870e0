// The colours of C code, and the tab stops, in a rich edit control. Only lines that come into view are formatted, and
// of those only the ones that changed, so that it costs the same in a text of any length. Nothing of it can be undone,
// raises an event or moves what the user sees.
#pragma once

#include "platform/desktop/win32/CodeLines.h"
#include "platform/desktop/win32/Headers.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly::win32 {

class ViewFormat {
public:
    // `control` is a rich edit control that outlives this.
    explicit ViewFormat(HWND control);

    // The user has chosen other colours.
    void ReadColours();

    // Formats all text, also what is typed later.
    void SetFont(const std::wstring& name, LONG height);
    void SetTabStops(const std::vector<LONG>& stops);

    // The text; the control shows it, or nothing for the time being.
    const CodeLines& Lines() const { return mLines; }
    CLineState StateBefore(std::size_t line) { return mLines.StateBefore(line); }

    // There is a new text.
    void Reset(CodeLines lines);

    // The control shows the text as if it were new.
    void ForgetFormats();

    // The control shows `now` in place of the text from `start` to before `end`.
    void Replace(std::size_t start, std::size_t end, std::wstring_view now);

    // Formats the lines in view that are not yet. Must be called before they are painted. After an edit it formats only
    // a few, so as not to hold up who types. Returns where the next one stands: painting there later formats it.
    std::optional<RECT> FormatView();

    // While it formats, nothing that the control wants to paint is to be painted.
    bool IsAtWork() const { return mIsAtWork; }

    // The lines that can be seen: the first one, and the one behind the last.
    std::pair<std::size_t, std::size_t> LinesSeen() const;

    // Where a character or a line stands, in pixels of the client area; far outside where it is scrolled.
    POINTL PlaceOf(std::size_t place) const;

    // The character that is nearest to a point.
    std::size_t PositionAt(POINT point) const;

    LONG TopOf(std::size_t line) const;

    // The first line that is seen, and where a line stands.
    std::size_t FirstInView() const;
    RECT RectOfLine(std::size_t line) const { return LinesRect(line, line + 1); }

    // Where the line with the character at `place` stands in the control, in pixels of its client area.
    RECT LineRect(std::size_t place) const;

private:
    // One for each character: a CTokenKind or one of those below.
    using Colours = std::vector<signed char>;
    static constexpr signed char NoColour = -1; // that of the user's windows
    static constexpr signed char Unknown = -2;
    static constexpr signed char AnyColour = -3; // of what cannot be seen

    static constexpr std::size_t LinesAtOnce = 3; // after an edit

    struct Stretch {
        std::size_t start;
        std::size_t end;
        signed char colour;
    };

    void FormatLines(std::size_t first, std::size_t end, LONG lineHeight);
    std::vector<Stretch> StretchesToColour(std::size_t first, std::size_t end);
    static std::vector<Stretch> Differences(const Colours& wanted, const Colours& shown);
    Colours WantedColours(std::size_t line);
    Colours ShownColours(std::wstring_view lineText, std::size_t line) const;
    void SetColour(std::size_t start, std::size_t end, signed char colour) const;
    bool AreInView(const std::vector<Stretch>& stretches, LONG lineHeight) const;
    RECT LinesRect(std::size_t first, std::size_t end) const;
    void Select(std::size_t start, std::size_t end) const;
    std::size_t LinesInView(std::size_t first) const;

    HWND mControl;
    bool mHasColours = false;
    bool mIsDark = false; // what the colours are for
    PARAFORMAT2 mParagraph = {};
    CodeLines mLines{L""};
    bool mIsAtWork = false;
    bool mIsTyping = false; // not all is formatted yet since an edit
    std::vector<CToken> mTokens;

    // The line that was coloured last: most often it is the one that is being typed in, and little of it changes.
    std::optional<std::size_t> mLastLine;
    std::wstring mLastText;
    Colours mLastColours;
};

} // namespace tessaly::win32
