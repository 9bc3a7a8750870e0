// A line without brackets is not looked at further: reading what is code in it takes most of the time.
#include "editing/Brackets.h"

#include <string_view>

namespace tessaly {

namespace {

constexpr std::u16string_view Opening = u"([{";
constexpr std::u16string_view Closing = u")]}";

constexpr std::size_t LinesLookedThrough = 1000; // in each direction: every key that is pressed asks

bool IsOpening(char16_t character) {
    return Opening.find(character) != std::u16string_view::npos;
}

bool IsClosing(char16_t character) {
    return Closing.find(character) != std::u16string_view::npos;
}

// Goes over the brackets of one part in one direction until the one is found that closes what is open.
class BracketWalk {
public:
    BracketWalk(const TextLines& lines, CPart part, bool isForward)
        : mLines(lines),
          mPart(part),
          mIsForward(isForward) {}

    // `open` is the bracket that looks for its partner.
    std::optional<Place> Find(Place from, char16_t open) {
        mOpen = {open};
        if (const std::optional<Place> found = WalkLine(from.line, from.column)) {
            return mIsMatch ? found : std::nullopt;
        }
        if (mPart == CPart::Preprocessor) {
            return std::nullopt;
        }
        std::size_t line = from.line;
        for (std::size_t count = 0; mIsForward ? ++line < mLines.Count() : line-- > 0; ++count) {
            if (count == LinesLookedThrough) {
                mHasGivenUp = true;
                return std::nullopt;
            }
            if (const std::optional<Place> found = WalkLine(line, std::u16string::npos)) {
                return mIsMatch ? found : std::nullopt;
            }
        }
        return std::nullopt;
    }

    // Its partner may be further away than anybody looks.
    bool HasGivenUp() const { return mHasGivenUp; }

private:
    // From behind `column` on, or in front of it; npos is the whole line. Returns the bracket that ends the search.
    std::optional<Place> WalkLine(std::size_t line, std::size_t column) {
        const std::u16string text = mLines.Line(line);
        if (text.find_first_of(u"()[]{}") == std::u16string::npos) {
            return std::nullopt;
        }
        const std::vector<CPart> parts = PartsOf(mLines, line);
        const bool isWhole = column == std::u16string::npos;
        const std::size_t count = mIsForward ? text.size() - (isWhole ? 0 : column + 1)
                                  : isWhole  ? text.size()
                                             : column;
        for (std::size_t step = 0; step < count; ++step) {
            const std::size_t at = mIsForward ? text.size() - count + step : count - 1 - step;
            if (parts[at] == mPart && IsEnd(text[at])) {
                return Place{line, at};
            }
        }
        return std::nullopt;
    }

    bool IsEnd(char16_t character) {
        if (mIsForward ? IsOpening(character) : IsClosing(character)) {
            mOpen.push_back(character);
            return false;
        }
        if (!(mIsForward ? IsClosing(character) : IsOpening(character))) {
            return false;
        }
        const std::u16string_view own = mIsForward ? Opening : Closing;
        const std::u16string_view other = mIsForward ? Closing : Opening;
        mIsMatch = own.find(mOpen.back()) == other.find(character);
        mOpen.pop_back();
        return !mIsMatch || mOpen.empty();
    }

    const TextLines& mLines;
    CPart mPart;
    bool mIsForward;
    bool mIsMatch = false;
    bool mHasGivenUp = false;
    std::u16string mOpen;
};

std::optional<BracketPair> PairAt(const TextLines& lines, Place place) {
    const std::u16string text = lines.Line(place.line);
    if (place.column >= text.size() || (!IsOpening(text[place.column]) && !IsClosing(text[place.column]))) {
        return std::nullopt;
    }
    const CPart part = PartsOf(lines, place.line)[place.column];
    if (part == CPart::Hidden) {
        return std::nullopt;
    }
    BracketWalk walk(lines, part, IsOpening(text[place.column]));
    const BracketPair pair{place, walk.Find(place, text[place.column])};
    return walk.HasGivenUp() ? std::nullopt : std::optional(pair);
}

} // namespace

std::vector<CPart> PartsOf(const TextLines& lines, std::size_t line) {
    const std::u16string text = lines.Line(line);
    std::vector<CToken> tokens;
    ScanCLine(text, lines.StateBefore(line), tokens);
    std::vector<CPart> parts(text.size(), CPart::Code);
    for (const CToken& token : tokens) {
        const bool isHidden = token.kind == CTokenKind::String || token.kind == CTokenKind::Comment;
        if (isHidden || token.kind == CTokenKind::Preprocessor) {
            const auto begin = parts.begin() + static_cast<std::ptrdiff_t>(token.start);
            std::fill_n(begin, token.length, isHidden ? CPart::Hidden : CPart::Preprocessor);
        }
    }
    return parts;
}

std::optional<BracketPair> FindBracket(const TextLines& lines, Place caret) {
    std::optional<BracketPair> pair = PairAt(lines, caret);
    if (!pair && caret.column > 0) {
        pair = PairAt(lines, {caret.line, caret.column - 1});
    }
    return pair;
}

std::optional<Place> FindOpenBrace(const TextLines& lines, Place place) {
    return BracketWalk(lines, CPart::Code, false).Find(place, u'}');
}

} // namespace tessaly
