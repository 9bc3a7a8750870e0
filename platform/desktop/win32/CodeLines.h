// The C text of the control and its lines: their starts, the state that each begins in, and whether it is shown as it
// should be. They are scanned as far as somebody has looked. And the way from the program's text to that one and back.
#pragma once

#include "platform/desktop/LineMarks.h"
#include "syntax/CSyntax.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

// Line breaks are single CRs.
class CodeLines {
public:
    // A text that is new.
    explicit CodeLines(std::wstring text);

    const std::wstring& Text() const { return mText; }

    // Puts `now` in place of the text from `start` to before `end`. The line there, the new lines and those that now
    // begin in another state need formatting again. Returns whether lines have come or gone.
    bool Replace(std::size_t start, std::size_t end, std::wstring_view now);

    std::size_t Count() const { return mLines.size(); }
    std::size_t Start(std::size_t line) const { return mLines[line].start; }

    // The line that the character at `place` is in.
    std::size_t LineAt(std::size_t place) const;

    // Both without its line break.
    LineSpan SpanOf(std::size_t line) const;
    std::wstring_view TextOf(std::size_t line) const {
        const LineSpan span = SpanOf(line);
        return std::wstring_view(mText).substr(span.begin, span.end - span.begin);
    }

    // The tokens of a line; scans the lines in front of it that nobody has looked at yet.
    void Tokens(std::size_t line, std::vector<CToken>& tokens);

    // What a line begins in; scans likewise.
    CLineState StateBefore(std::size_t line) {
        ScanTo(line + 1);
        return mLines[line].before;
    }

    // Scans the lines in front of `end`, so that it is known which of them are shown as they should be.
    void ScanTo(std::size_t end);

    // Whether a line is shown as it should be, has the right tab stops, or was never formatted or edited and so has no
    // colours.
    bool IsFormatted(std::size_t line) const { return mLines[line].isFormatted; }
    bool HasTabStops(std::size_t line) const { return mLines[line].hasTabStops; }
    bool IsFresh(std::size_t line) const { return mLines[line].isFresh; }
    void SetFormatted(std::size_t line);
    void SetNoneFormatted();
    void SetAllFresh();

private:
    struct Line {
        std::size_t start = 0;
        CLineState before = CLineState::Code;
        bool isFormatted = false;
        bool hasTabStops = false;
        bool isFresh = true;
    };

    void MoveStarts(std::size_t first);
    CLineState StateBehind(std::size_t line);

    std::wstring mText;
    std::vector<Line> mLines;
    std::size_t mScanned = 1; // how many lines, from the first, have the right `before`
    std::vector<CToken> mTokens;
};

// Makes of a text whose line breaks are LFs one for the control. Returns whether there are pictures in it now.
bool ShowControlCharacters(std::wstring& text);

// The same the other way, for some of the text.
std::u16string ToUnits(std::wstring_view text, bool hasPictures);

} // namespace tessaly::win32
