// Changes are done from the last to the first, so that places in front of them stay what they are.
#include "tests/unit/editing/TextModel.h"

#include <stdexcept>

namespace tessaly {

namespace {

constexpr char16_t AnchorMark = u'▯';
constexpr char16_t CaretMark = u'▮';

} // namespace

TextModel::TextModel(std::string_view written) {
    std::u16string text = ToUtf16(written);
    const auto take = [&text](char16_t mark) {
        const std::size_t at = text.find(mark);
        if (at != std::u16string::npos) {
            text.erase(at, 1);
        }
        return at;
    };
    std::size_t caret = text.find(CaretMark);
    std::size_t anchor = take(AnchorMark);
    caret = take(CaretMark);
    if (caret == std::u16string::npos) {
        throw std::invalid_argument("no caret: " + std::string(written));
    }
    anchor = anchor == std::u16string::npos ? caret : anchor > caret ? anchor - 1 : anchor;
    SetText(text);
    const auto place = [this](std::size_t position) {
        std::size_t line = 0;
        while (position > mLines[line].size()) {
            position -= mLines[line++].size() + 1;
        }
        return Place{line, position};
    };
    mSelection = {place(anchor), place(caret)};
}

void TextModel::SetText(std::u16string_view text) {
    mLines = {u""};
    for (const char16_t unit : text) {
        if (unit == u'\n') {
            mLines.emplace_back();
        } else {
            mLines.back() += unit;
        }
    }
}

std::u16string TextModel::Whole() const {
    std::u16string whole = mLines.front();
    for (std::size_t line = 1; line < mLines.size(); ++line) {
        whole += u"\n" + mLines[line];
    }
    return whole;
}

CLineState TextModel::StateBefore(std::size_t index) const {
    CLineState state = CLineState::Code;
    std::vector<CToken> tokens;
    for (std::size_t line = 0; line < index; ++line) {
        state = ScanCLine(mLines[line], state, tokens);
    }
    return state;
}

std::size_t TextModel::Position(Place place) const {
    std::size_t position = 0;
    for (std::size_t line = 0; line < place.line; ++line) {
        position += mLines.at(line).size() + 1;
    }
    if (place.column > mLines.at(place.line).size()) {
        throw std::out_of_range("column " + std::to_string(place.column) + " of line " + std::to_string(place.line));
    }
    return position + place.column;
}

void TextModel::Do(const Edit& edit) {
    std::u16string text = Whole();
    std::size_t limit = text.size() + 1;
    for (auto change = edit.changes.rbegin(); change != edit.changes.rend(); ++change) {
        const std::size_t begin = Position(change->begin);
        const std::size_t end = Position(change->end);
        if (begin > end || end > limit || (end == limit && begin == end)) {
            throw std::out_of_range("changes that are not apart, or not in order");
        }
        limit = begin;
        text.replace(begin, end - begin, change->text);
    }
    SetText(text);
    Position(edit.after.anchor); // is there
    Position(edit.after.caret);
    mSelection = edit.after;
}

void TextModel::Type(std::u16string_view text) {
    const Place begin = mSelection.Begin();
    const Place after = {begin.line, begin.column + text.size()};
    Do({{{begin, mSelection.End(), std::u16string(text)}}, {after, after}});
}

void TextModel::TakeBack() {
    if (mSelection.IsEmpty() && mSelection.caret.column > 0) {
        --mSelection.anchor.column;
    } else if (mSelection.IsEmpty() && mSelection.caret.line > 0) {
        const std::size_t line = mSelection.caret.line - 1;
        mSelection.anchor = {line, mLines[line].size()};
    }
    Type(u"");
}

std::string TextModel::Written() const {
    std::u16string text = Whole();
    const std::size_t anchor = Position(mSelection.anchor);
    const std::size_t caret = Position(mSelection.caret);
    text.insert(caret, 1, CaretMark);
    if (anchor != caret) {
        text.insert(anchor > caret ? anchor + 1 : anchor, 1, AnchorMark);
    }
    return ToUtf8(text);
}

std::string TextModel::Text() const {
    return ToUtf8(Whole());
}

} // namespace tessaly
