// A line ends with CR, as in the control's own text.
#include "platform/desktop/win32/CodeLines.h"

#include "platform/text/ControlPictures.h"

#include <algorithm>
#include <utility>

namespace tessaly::win32 {

namespace {

// wchar_t has 16 bits on Windows, but is a type of its own.
std::u16string_view Units(std::wstring_view text) {
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

} // namespace

CodeLines::CodeLines(std::wstring text) : mText(std::move(text)) {
    mLines.push_back({.start = 0});
    for (std::size_t found = mText.find(L'\r'); found != std::wstring::npos; found = mText.find(L'\r', found + 1)) {
        mLines.push_back({.start = found + 1});
    }
}

bool CodeLines::Replace(std::size_t start, std::size_t end, std::wstring_view now) {
    const std::size_t first = LineAt(start);
    const std::size_t breaksBefore = LineAt(end) - first;
    mText.replace(start, end - start, now);
    std::vector<Line> added;
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (now[i] == L'\r') {
            added.push_back({.start = start + i + 1, .isFresh = false});
        }
    }
    const auto place = mLines.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    mLines.insert(mLines.erase(place, place + static_cast<std::ptrdiff_t>(breaksBefore)), added.begin(), added.end());
    mLines[first].isFormatted = false;
    mLines[first].isFresh = false;
    const std::size_t behind = first + added.size() + 1; // the first line that is only moved
    MoveStarts(behind);
    const bool areOthers = breaksBefore != 0 || !added.empty();
    if (mScanned <= first + breaksBefore + 1) {
        mScanned = std::min(mScanned, first + 1);
        return areOthers;
    }
    // Scans on until a line goes on with the same as before: then all the others do, too.
    const std::size_t known = mScanned + added.size() - breaksBefore;
    for (mScanned = first + 1; mScanned < known; ++mScanned) {
        const CLineState state = StateBehind(mScanned - 1);
        Line& line = mLines[mScanned];
        if (mScanned >= behind && line.before == state) {
            mScanned = known;
            break;
        }
        line.isFormatted = false;
        line.before = state;
    }
    return areOthers;
}

LineSpan CodeLines::SpanOf(std::size_t line) const {
    return {mLines[line].start, line + 1 < mLines.size() ? mLines[line + 1].start - 1 : mText.size()};
}

void CodeLines::Tokens(std::size_t line, std::vector<CToken>& tokens) {
    ScanTo(line + 1);
    ScanCLine(Units(TextOf(line)), mLines[line].before, tokens);
}

void CodeLines::ScanTo(std::size_t end) {
    for (; mScanned < std::min(end, mLines.size()); ++mScanned) {
        mLines[mScanned].before = StateBehind(mScanned - 1);
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
void CodeLines::MoveStarts(std::size_t first) {
    if (first >= mLines.size()) {
        return;
    }
    const std::size_t start = mText.find(L'\r', mLines[first - 1].start) + 1;
    const std::size_t before = mLines[first].start;
    for (std::size_t line = first; line < mLines.size(); ++line) {
        mLines[line].start = mLines[line].start - before + start;
    }
}

CLineState CodeLines::StateBehind(std::size_t line) {
    return ScanCLine(Units(TextOf(line)), mLines[line].before, mTokens);
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
