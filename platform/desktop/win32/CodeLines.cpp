// A line ends with CR, as in the control's own text.
#include "platform/desktop/win32/CodeLines.h"

#include "platform/text/ControlPictures.h"

#include <algorithm>

namespace tessaly::win32 {

namespace {

// wchar_t has 16 bits on Windows, but is a type of its own.
std::u16string_view Units(std::wstring_view text) {
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

} // namespace

CodeLines::CodeLines(std::wstring_view text) {
    const auto add = [this](std::size_t start) {
        mLines.emplace_back();
        mLines.back().start = start;
    };
    add(0);
    for (std::size_t found = text.find(L'\r'); found != std::wstring_view::npos; found = text.find(L'\r', found + 1)) {
        add(found + 1);
    }
    SetAllFresh();
}

void CodeLines::Edit(std::wstring_view text, std::size_t start, std::size_t end, std::size_t breaksBefore) {
    const std::size_t first = LineAt(start);
    std::vector<Line> added;
    for (std::size_t place = start; place < end; ++place) {
        if (text[place] == L'\r') {
            added.emplace_back();
            added.back().start = place + 1;
        }
    }
    const auto place = mLines.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    mLines.insert(mLines.erase(place, place + static_cast<std::ptrdiff_t>(breaksBefore)), added.begin(), added.end());
    mLines[first].isFormatted = false;
    mLines[first].isFresh = false;
    const std::size_t behind = first + added.size() + 1; // the first line that is only moved
    MoveStarts(text, behind);
    if (mScanned <= first + breaksBefore + 1) {
        mScanned = std::min(mScanned, first + 1);
        return;
    }
    // Scans on until a line goes on with the same as before: then all the others do, too.
    const std::size_t known = mScanned + added.size() - breaksBefore;
    for (mScanned = first + 1; mScanned < known; ++mScanned) {
        const CLineState state = StateBehind(text, mScanned - 1);
        Line& line = mLines[mScanned];
        if (mScanned >= behind && line.before == state) {
            mScanned = known;
            return;
        }
        line.isFormatted = false;
        line.before = state;
    }
}

LineSpan CodeLines::SpanOf(std::wstring_view text, std::size_t line) const {
    return {mLines[line].start, line + 1 < mLines.size() ? mLines[line + 1].start - 1 : text.size()};
}

void CodeLines::Tokens(std::wstring_view text, std::size_t line, std::vector<CToken>& tokens) {
    ScanTo(text, line + 1);
    ScanCLine(Units(TextOf(text, line)), mLines[line].before, tokens);
}

void CodeLines::ScanTo(std::wstring_view text, std::size_t end) {
    for (; mScanned < std::min(end, mLines.size()); ++mScanned) {
        mLines[mScanned].before = StateBehind(text, mScanned - 1);
    }
}

void CodeLines::SetFormatted(std::size_t line) {
    mLines[line].isFormatted = true;
    mLines[line].hasTabStops = true;
    mLines[line].isFresh = false;
}

void CodeLines::SetNoneFormatted() {
    for (Line& line : mLines) {
        line.isFresh = line.isFresh && !line.isFormatted;
        line.isFormatted = false;
        line.hasTabStops = false;
    }
}

void CodeLines::SetAllFresh() {
    for (Line& line : mLines) {
        line.isFresh = true;
        line.isFormatted = false;
        line.hasTabStops = false;
    }
}

std::size_t CodeLines::LineAt(std::size_t place) const {
    const auto behind = std::upper_bound(mLines.begin(), mLines.end(), place,
                                         [](std::size_t wanted, const Line& line) { return wanted < line.start; });
    return static_cast<std::size_t>(behind - mLines.begin()) - 1;
}

// The lines from `first` on have all moved by the same.
void CodeLines::MoveStarts(std::wstring_view text, std::size_t first) {
    if (first >= mLines.size()) {
        return;
    }
    const std::size_t start = text.find(L'\r', mLines[first - 1].start) + 1;
    const std::size_t before = mLines[first].start;
    for (std::size_t line = first; line < mLines.size(); ++line) {
        mLines[line].start = mLines[line].start - before + start;
    }
}

CLineState CodeLines::StateBehind(std::wstring_view text, std::size_t line) {
    return ScanCLine(Units(TextOf(text, line)), mLines[line].before, mTokens);
}

bool ShowControlCharacters(std::wstring& text) {
    bool hasPictures = false;
    for (wchar_t& character : text) {
        if (character == L'\n') {
            character = L'\r';
        } else if (HasControlPicture(character)) {
            character = ControlPicture(character);
            hasPictures = true;
        }
    }
    return hasPictures;
}

std::u16string ToUnits(std::wstring_view text, bool hasPictures) {
    std::u16string units(text.begin(), text.end());
    for (char16_t& character : units) {
        if (character == u'\r') {
            character = u'\n';
        } else if (hasPictures) {
            character = WithoutControlPicture(character);
        }
    }
    return units;
}

} // namespace tessaly::win32
