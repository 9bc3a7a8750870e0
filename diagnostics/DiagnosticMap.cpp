// Positions are found by the base name of the C file, which all spellings of its path end with; then what stands
// to the left and to the right of it decides.
#include "diagnostics/DiagnosticMap.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::string_view Separators = "/\\";

// How many messages decide which counting the output has, and how far a line is searched for it.
constexpr std::size_t MostVoters = 200;
constexpr std::size_t LongestSearch = 4096;

std::string_view TrimFront(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text;
}

// Reads a number of up to nine digits and moves `at` behind it. 0 when there is none.
std::size_t ReadNumber(std::string_view line, std::size_t& at) {
    std::size_t number = 0;
    const std::size_t limit = std::min(line.size(), at + 9);
    for (; at < limit && IsDigit(line[at]); ++at) {
        number = number * 10 + static_cast<std::size_t>(line[at] - '0');
    }
    return number;
}

bool HasAt(std::string_view line, std::size_t at, char character) {
    return at < line.size() && line[at] == character;
}

// What stands behind a position at the front of a line, from the colon on; no value when that is no message.
std::optional<std::string_view> MessageBehind(std::string_view line, std::size_t end) {
    std::string_view rest = line.substr(end);
    if (line[end - 1] == ')' && rest.starts_with(" :")) {
        rest.remove_prefix(1);
    }
    const bool message = rest.starts_with(": ") || rest == ":";
    return message ? std::optional(rest) : std::nullopt;
}

// Whether `prefix` is the name of a linker in front of what it says, such as "/usr/bin/ld: ".
bool IsLinkerPrefix(std::string_view prefix) {
    const std::size_t end = prefix.find(": ");
    if (end == std::string_view::npos) {
        return false;
    }
    const std::string_view program = prefix.substr(0, end);
    const std::string_view name = program.substr(program.find_last_of(Separators) + 1);
    const std::string_view severity = prefix.substr(end + 2);
    return name.find("ld") != std::string_view::npos && name.find_first_of(Blanks) == std::string_view::npos &&
           (severity.empty() || severity == "error: " || severity == "warning: ");
}

// Whether the tools themselves give the position between `prefix` and `rest`. It is not at the front of a line, and
// might stand in the source that they quote.
bool IsInsidePosition(std::string_view prefix, std::string_view rest) {
    const std::string_view words = TrimFront(prefix);
    if (words == "In file included from " || words == "from ") {
        return rest == ":" || rest == ",";
    }
    return (IsLinkerPrefix(prefix) && rest.starts_with(": ")) || rest == ": first defined here" ||
           prefix == ">>> referenced by " || prefix == ">>> defined at ";
}

bool IsNameCharacter(char character) {
    return IsLetter(character) || IsDigit(character) || character == '_';
}

// The last byte of an opening quote and the first of a closing one, the typographic ones in UTF-8 among them.
bool IsOpeningQuote(char character) {
    return std::string_view("'`\"\x98\x9C").find(character) != std::string_view::npos;
}

bool IsClosingQuote(char character) {
    return std::string_view("'\"\xE2").find(character) != std::string_view::npos;
}

// The name that begins at or behind `at` in quotes; `at` moves behind it. "" when there is none.
std::string_view NextQuotedName(std::string_view message, std::size_t& at) {
    while (at < message.size()) {
        const std::size_t begin = at;
        while (at < message.size() && IsNameCharacter(message[at])) {
            ++at;
        }
        const bool quoted =
            begin > 0 && IsOpeningQuote(message[begin - 1]) && at < message.size() && IsClosingQuote(message[at]);
        if (at > begin && quoted) {
            return message.substr(begin, at - begin);
        }
        at += at == begin ? 1 : 0;
    }
    return {};
}

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

// Takes the first line off `output`, without its LF.
std::string_view TakeLine(std::string_view& output) {
    const std::size_t end = std::min(output.find('\n'), output.size());
    const std::string_view line = output.substr(0, end);
    output.remove_prefix(std::min(end + 1, output.size()));
    return line;
}

} // namespace

DiagnosticMap::DiagnosticMap(const VornSrcObj& document, std::string psfPath, const std::string& cFilePath)
    : mLines(document),
      mFunctionCount(document.GetFunctionCount()),
      mPsfPath(std::move(psfPath)),
      mFile(cFilePath) {
    for (const CCodeOrigin& member : AllMembers(document)) {
        mMemberNames.push_back(MemberName(document, member));
    }
}

std::string DiagnosticMap::Rewrite(std::string_view output) const {
    const LineCounting counting = Counting(output);
    std::string result;
    result.reserve(output.size() + output.size() / 4);
    while (!output.empty()) {
        const std::size_t size = output.size();
        std::string_view line = TakeLine(output);
        const bool hasLf = line.size() + output.size() < size;
        const bool hasCr = line.ends_with('\r');
        line.remove_suffix(hasCr ? 1 : 0);
        RewriteLine(line, counting, result);
        result.append(hasCr ? "\r" : "").append(hasLf ? "\n" : "");
    }
    return result;
}

LineCounting DiagnosticMap::Counting(std::string_view output) const {
    int votes = 0;
    for (std::size_t voters = 0; !output.empty() && voters < MostVoters;) {
        const std::string_view line = TakeLine(output);
        const std::optional<Position> position = FindPosition(line, 0);
        if (!position || (position->begin > 0 && !IsLinkerPrefix(line.substr(0, position->begin)))) {
            continue;
        }
        if (position->hasColonColumn) {
            return LineCounting::LoneCrEndsLine;
        }
        votes += Vote(line.substr(position->end), position->line);
        ++voters;
    }
    return votes >= 0 ? LineCounting::LoneCrEndsLine : LineCounting::LoneCrIsBlank;
}

void DiagnosticMap::RewriteLine(std::string_view line, LineCounting counting, std::string& result) const {
    const std::optional<Position> position = FindPosition(line, 0);
    if (position && position->begin == 0) {
        const std::optional<std::string_view> message = MessageBehind(line, position->end);
        const std::optional<std::string> mapped = MapPosition(*position, counting);
        if (message && mapped) {
            result.append(*mapped);
            RewriteInside(*message, counting, result);
            result.append(" (").append(line.substr(0, position->end)).append(")");
            return;
        }
    }
    RewriteInside(line, counting, result);
}

void DiagnosticMap::RewriteInside(std::string_view line, LineCounting counting, std::string& result) const {
    std::size_t copied = 0;
    std::optional<Position> position = FindPosition(line, 0);
    for (; position; position = FindPosition(line, position->end)) {
        const std::size_t begin = position->begin;
        const std::size_t end = position->end;
        if (!IsInsidePosition(line.substr(0, begin), line.substr(end))) {
            continue;
        }
        if (const std::optional<std::string> mapped = MapPosition(*position, counting)) {
            result.append(line.substr(copied, begin - copied)).append(*mapped);
            result.append(" (").append(line.substr(begin, end - begin)).append(")");
            copied = end;
        }
    }
    result.append(line.substr(copied));
}

std::optional<std::string> DiagnosticMap::MapPosition(const Position& position, LineCounting counting) const {
    const std::optional<MemberLine> place = mLines.Find(position.line, counting);
    if (!place) {
        return std::nullopt;
    }
    return mPsfPath + ":" + NameOf(place->origin) + ":" + std::to_string(place->line);
}

const std::string& DiagnosticMap::NameOf(CCodeOrigin member) const {
    std::int32_t index = 0; // of the references
    if (member.kind == CCodeOrigin::Kind::Function) {
        index = 1 + member.index;
    } else if (member.kind == CCodeOrigin::Kind::Event) {
        index = 1 + mFunctionCount + member.index;
    }
    return mMemberNames.at(static_cast<std::size_t>(index));
}

// Reads what follows the file name that `position` ends with. False when that is no line number.
bool DiagnosticMap::ReadNumbers(std::string_view line, Position& position) {
    const bool parenthesis = HasAt(line, position.end, '(');
    if (!parenthesis && !HasAt(line, position.end, ':')) {
        return false;
    }
    ++position.end;
    position.line = ReadNumber(line, position.end);
    std::size_t columnEnd = position.end + 1;
    if (HasAt(line, position.end, parenthesis ? ',' : ':') && ReadNumber(line, columnEnd) > 0) {
        position.hasColonColumn = !parenthesis;
        position.end = columnEnd;
    }
    if (parenthesis && !HasAt(line, position.end, ')')) {
        return false;
    }
    position.end += parenthesis ? 1 : 0;
    return position.line > 0;
}

// The first position in the C file whose base name begins at or behind `from`.
std::optional<DiagnosticMap::Position> DiagnosticMap::FindPosition(std::string_view line, std::size_t from) const {
    const std::string& name = mFile.BaseName();
    std::size_t at = name.empty() ? std::string_view::npos : line.find(name, from);
    for (; at != std::string_view::npos; at = line.find(name, at + 1)) {
        Position position;
        position.end = at + name.size();
        const std::optional<std::size_t> begin =
            ReadNumbers(line, position) ? mFile.FindBegin(line, at + name.size()) : std::nullopt;
        if (begin) {
            position.begin = *begin;
            return position;
        }
    }
    return std::nullopt;
}

// Which counting puts more of the names in `message` into line `line`. Positive: a lone CR is a line end. Negative: it
// is a blank. 0: a tie.
int DiagnosticMap::Vote(std::string_view message, std::size_t line) const {
    const std::string_view ended = mLines.Text(line, LineCounting::LoneCrEndsLine);
    const std::string_view blank = mLines.Text(line, LineCounting::LoneCrIsBlank);
    int difference = 0;
    std::size_t at = 0;
    message = message.substr(0, LongestSearch);
    for (std::string_view name = NextQuotedName(message, at); !name.empty(); name = NextQuotedName(message, at)) {
        difference += (ContainsName(ended, name) ? 1 : 0) - (ContainsName(blank, name) ? 1 : 0);
    }
    return std::clamp(difference, -1, 1);
}

} // namespace tessaly
