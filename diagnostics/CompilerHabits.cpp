// Compilers are told apart by trying: what they quote must stand where they say.
#include "diagnostics/CompilerHabits.h"

#include "diagnostics/MessageForms.h"
#include "platform/text/Ascii.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

// How many messages decide which habit the output shows, and how far a line is searched for it.
constexpr std::size_t MostVoters = 200;
constexpr std::size_t LongestSearch = 4096;

bool ContainsName(std::string_view text, std::string_view name) {
    return FindName(text.substr(0, LongestSearch), name) != std::string_view::npos;
}

// Which counting puts more of the names in `message` into line `line`. Positive: a lone CR is a line end. Negative: it
// is a blank. 0: a tie.
int Vote(const BuildMap& map, std::string_view message, std::size_t line) {
    const std::string_view ended = map.FileLine(line, LineCounting::LoneCrEndsLine);
    const std::string_view blank = map.FileLine(line, LineCounting::LoneCrIsBlank);
    int difference = 0;
    std::size_t at = 0;
    for (std::string_view name = NextQuotedName(message, at); !name.empty(); name = NextQuotedName(message, at)) {
        difference += (ContainsName(ended, name) ? 1 : 0) - (ContainsName(blank, name) ? 1 : 0);
    }
    return std::clamp(difference, -1, 1);
}

// The position that a line about the C file begins with.
std::optional<FilePosition> VoterOf(const BuildMap& map, std::string_view line) {
    const std::optional<FilePosition> position = FindPosition(map.File(), line, 0);
    const bool isVoter = position && (position->begin == 0 || IsLinkerPrefix(line.substr(0, position->begin)));
    return isVoter ? position : std::nullopt;
}

std::string_view MessageAt(std::string_view line, const FilePosition& position) {
    return line.substr(position.end, LongestSearch);
}

} // namespace

bool CountingVotes::Add(const BuildMap& map, std::string_view line) {
    if (mIsDecided || mVoters == MostVoters) {
        return false;
    }
    if (const std::optional<FilePosition> position = VoterOf(map, line)) {
        mIsDecided = position->hasColonColumn;
        mVotes += Vote(map, MessageAt(line, *position), position->line);
        ++mVoters;
    }
    return true;
}

LineCounting CountingVotes::Result() const {
    return mIsDecided || mVotes >= 0 ? LineCounting::LoneCrEndsLine : LineCounting::LoneCrIsBlank;
}

LineCounting CountingOf(const BuildMap& map, std::string_view output) {
    CountingVotes votes;
    while (!output.empty() && votes.Add(map, TakeLine(output))) {
    }
    return votes.Result();
}

ColumnUnit ColumnUnitOf(const BuildMap& map, std::string_view output, LineCounting counting) {
    struct Candidate {
        ColumnUnit unit;
        int votes = 0;
    };
    const bool isGcc = output.find(": In function ") != std::string_view::npos ||
                       output.find(": At top level:") != std::string_view::npos;
    std::array candidates = {Candidate{isGcc ? ColumnUnit::CellOfLfLine : ColumnUnit::Byte},
                             Candidate{isGcc ? ColumnUnit::Byte : ColumnUnit::CellOfLfLine},
                             Candidate{ColumnUnit::Cell}};
    for (std::size_t voters = 0; !output.empty() && voters < MostVoters;) {
        const std::string_view line = TakeLine(output);
        const std::optional<FilePosition> position = VoterOf(map, line);
        if (!position || !position->hasColonColumn) {
            continue;
        }
        ++voters;
        std::size_t at = 0;
        const std::string_view name = NextQuotedName(MessageAt(line, *position), at);
        const std::string_view text = map.FileLine(position->line, counting);
        for (Candidate& candidate : candidates) {
            const std::size_t offset = map.OffsetInLine(position->line, counting, position->column, candidate.unit);
            candidate.votes += !name.empty() && text.substr(std::min(offset, text.size())).starts_with(name) ? 1 : 0;
        }
    }
    return std::max_element(candidates.begin(), candidates.end(),
                            [](const Candidate& a, const Candidate& b) { return a.votes < b.votes; })
        ->unit;
}

} // namespace tessaly
