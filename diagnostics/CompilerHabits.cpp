// Compilers are told apart by trying: what they quote must stand where they say.
#include "diagnostics/Diagnostics.h"
#include "diagnostics/MessageForms.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

// How many messages decide which habit the output shows, and how far a line is searched for it.
constexpr std::size_t MostVoters = 200;
constexpr std::size_t LongestSearch = 4096;

bool ContainsName(std::string_view text, std::string_view name) {
    text = text.substr(0, LongestSearch);
    for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        if ((at == 0 || !IsNameCharacter(text[at - 1])) && (end == text.size() || !IsNameCharacter(text[end]))) {
            return true;
        }
    }
    return false;
}

// Which counting puts more of the names in `message` into line `line`. Positive: a lone CR is a line end. Negative: it
// is a blank. 0: a tie.
int Vote(const CFileLines& lines, std::string_view message, std::size_t line) {
    const std::string_view ended = lines.Text(line, LineCounting::LoneCrEndsLine);
    const std::string_view blank = lines.Text(line, LineCounting::LoneCrIsBlank);
    int difference = 0;
    std::size_t at = 0;
    for (std::string_view name = NextQuotedName(message, at); !name.empty(); name = NextQuotedName(message, at)) {
        difference += (ContainsName(ended, name) ? 1 : 0) - (ContainsName(blank, name) ? 1 : 0);
    }
    return std::clamp(difference, -1, 1);
}

// The messages about the C file at the front of `output`. `visit(position, message)` returns false to see no more.
void ForEachVoter(const BuildMap& map, std::string_view output, const auto& visit) {
    for (std::size_t voters = 0; !output.empty() && voters < MostVoters;) {
        const std::string_view line = TakeLine(output);
        const std::optional<FilePosition> position = FindPosition(map.File(), line, 0);
        if (!position || (position->begin > 0 && !IsLinkerPrefix(line.substr(0, position->begin)))) {
            continue;
        }
        if (!visit(*position, line.substr(position->end, LongestSearch))) {
            return;
        }
        ++voters;
    }
}

} // namespace

LineCounting CountingOf(const BuildMap& map, std::string_view output) {
    int votes = 0;
    ForEachVoter(map, output, [&](const FilePosition& position, std::string_view message) {
        votes = position.hasColonColumn ? 0 : votes + Vote(map.Lines(), message, position.line);
        return !position.hasColonColumn;
    });
    return votes >= 0 ? LineCounting::LoneCrEndsLine : LineCounting::LoneCrIsBlank;
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
    ForEachVoter(map, output, [&](const FilePosition& position, std::string_view message) {
        std::size_t at = 0;
        const std::string_view name = position.hasColonColumn ? NextQuotedName(message, at) : std::string_view();
        for (Candidate& candidate : candidates) {
            const std::size_t offset = map.OffsetInLine(position.line, counting, position.column, candidate.unit);
            const std::string_view text = map.Lines().Text(position.line, counting);
            candidate.votes += !name.empty() && text.substr(std::min(offset, text.size())).starts_with(name) ? 1 : 0;
        }
        return true;
    });
    return std::max_element(candidates.begin(), candidates.end(),
                            [](const Candidate& a, const Candidate& b) { return a.votes < b.votes; })
        ->unit;
}

} // namespace tessaly
