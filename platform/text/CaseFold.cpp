// Case folding over a table of runs of case pairs.
#include "platform/text/CaseFold.h"

#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tessaly {

namespace {

struct CaseRun {
    char32_t firstCapital;
    char32_t lastCapital;
    std::uint32_t step;
    std::int32_t distance;
};

constexpr CaseRun CaseRuns[] = {
#include "platform/text/CasePairs.inc"
};

char32_t FoldCharacter(char32_t character) {
    const auto* run =
        std::lower_bound(std::begin(CaseRuns), std::end(CaseRuns), character,
                         [](const CaseRun& entry, char32_t wanted) { return entry.lastCapital < wanted; });
    const bool capital =
        run != std::end(CaseRuns) && character >= run->firstCapital && (character - run->firstCapital) % run->step == 0;
    return capital ? static_cast<char32_t>(static_cast<std::int64_t>(character) + run->distance) : character;
}

} // namespace

std::string FoldCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const std::string_view ascii = text.substr(0, AsciiPrefix(text));
        const std::size_t begin = folded.size();
        folded.resize(begin + ascii.size());
        std::transform(ascii.begin(), ascii.end(), folded.begin() + static_cast<std::ptrdiff_t>(begin), SmallLetter);
        text.remove_prefix(ascii.size());
        if (!text.empty()) {
            std::size_t end = 0;
            const char32_t character = ReadUtf8(text, end);
            if (character == NotACharacter) {
                folded += text.front();
            } else {
                AppendUtf8(FoldCharacter(character), folded);
            }
            text.remove_prefix(end);
        }
    }
    return folded;
}

bool ContainsKey(std::string_view text, std::string_view key) {
    // Keys end in "=", which is rare in a line and quickly found.
    for (std::size_t end = text.find(key.back()); end != std::string_view::npos; end = text.find(key.back(), end + 1)) {
        if (end + 1 >= key.size() && EqualsIgnoringCase(text.substr(end + 1 - key.size(), key.size()), key)) {
            return true;
        }
    }
    return false;
}

} // namespace tessaly
