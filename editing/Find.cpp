// Both texts are folded where case does not matter: that changes neither the number of characters nor where lines end.
#include "editing/Find.h"

#include "platform/text/Ascii.h"
#include "platform/text/CaseFold.h"

namespace tessaly {

namespace {

// Continuation bytes of UTF-8 are no unit, and what needs four bytes is two units.
std::size_t Units(std::string_view text) {
    std::size_t units = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        units += (value & 0xC0U) == 0x80U ? 0U : value >= 0xF0U ? 2U : 1U;
    }
    return units;
}

bool IsInWord(char byte) {
    return IsLetter(byte) || IsDigit(byte) || byte == '_' || static_cast<unsigned char>(byte) >= 0x80U;
}

bool IsWholeWord(std::string_view text, std::size_t begin, std::size_t end) {
    return (begin == 0 || !IsInWord(text[begin - 1])) && (end == text.size() || !IsInWord(text[end]));
}

// Goes through a text once, from position to position.
class LineWalk {
public:
    explicit LineWalk(std::string_view text) : mText(text), mLineEnd(LineLength(text)) {}

    Place PlaceAt(std::size_t position) {
        while (position > mLineEnd) {
            mAt = mLineEnd + (mText.substr(mLineEnd, 2) == "\r\n" ? 2 : 1);
            mPlace = {mPlace.line + 1, 0};
            mLineEnd = mAt + LineLength(mText.substr(mAt));
        }
        mPlace.column += Units(mText.substr(mAt, position - mAt));
        mAt = position;
        return mPlace;
    }

private:
    std::string_view mText;
    std::size_t mAt = 0;
    Place mPlace; // of mAt
    std::size_t mLineEnd;
};

} // namespace

std::vector<Match> FindAll(std::string_view text, std::string_view pattern, FindOptions options) {
    if (pattern.empty() || pattern.find_first_of("\r\n") != std::string_view::npos) {
        return {};
    }
    const std::string folded = options.isCaseSensitive ? "" : FoldCase(text);
    const std::string wanted = options.isCaseSensitive ? std::string(pattern) : FoldCase(pattern);
    const std::string_view searched = options.isCaseSensitive ? text : folded;
    const std::size_t length = Units(wanted);
    LineWalk walk(searched);
    std::vector<Match> matches;
    std::size_t at = searched.find(wanted);
    while (at != std::string_view::npos) {
        const std::size_t end = at + wanted.size();
        const bool isMatch = !options.isWholeWord || IsWholeWord(searched, at, end);
        if (isMatch) {
            matches.push_back({walk.PlaceAt(at), length});
        }
        at = searched.find(wanted, isMatch ? end : at + 1);
    }
    return matches;
}

std::size_t NextMatch(const std::vector<Match>& matches, Place place, bool isForward) {
    if (isForward) {
        const auto next =
            std::find_if(matches.begin(), matches.end(), [&](const Match& m) { return !(m.begin < place); });
        return next == matches.end() ? 0 : static_cast<std::size_t>(next - matches.begin());
    }
    const auto next =
        std::find_if(matches.rbegin(), matches.rend(), [&](const Match& m) { return !(place < m.End()); });
    return matches.size() - 1 - (next == matches.rend() ? 0 : static_cast<std::size_t>(next - matches.rbegin()));
}

Edit ReplaceAll(const std::vector<Match>& matches, const std::u16string& replacement) {
    Edit edit;
    std::size_t line = 0;
    std::ptrdiff_t moved = 0; // by the changes in front of it in its line
    for (const Match& match : matches) {
        edit.changes.push_back({match.begin, match.End(), replacement});
        moved = match.begin.line == line ? moved : 0;
        line = match.begin.line;
        const auto begin = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(match.begin.column) + moved);
        edit.after = {{line, begin}, {line, begin + replacement.size()}};
        moved += static_cast<std::ptrdiff_t>(replacement.size()) - static_cast<std::ptrdiff_t>(match.length);
    }
    return edit;
}

} // namespace tessaly
