// Positions are found by the base name of the file, which all spellings of its path end with; then what stands to the
// left and to the right of it decides.
#include "diagnostics/MessageForms.h"

#include "platform/text/Ascii.h"

#include <algorithm>
#include <string>

namespace tessaly {

namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::string_view Separators = "/\\";

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

// The last byte of an opening quote and the first of a closing one, the typographic ones in UTF-8 among them.
bool IsOpeningQuote(char character) {
    return std::string_view("'`\"\x98\x9C").find(character) != std::string_view::npos;
}

bool IsClosingQuote(char character) {
    return std::string_view("'\"\xE2").find(character) != std::string_view::npos;
}

// Moves `at` behind `text`. False when that is not there.
bool Skip(std::string_view line, std::string_view text, std::size_t& at) {
    const bool found = line.substr(std::min(at, line.size())).starts_with(text);
    at += found ? text.size() : 0;
    return found;
}

// The forms in words, with the file's name in quotes or not.
bool ReadWords(std::string_view line, FilePosition& position) {
    std::size_t at = position.end;
    const bool isQuoted = Skip(line, "\"", at) || Skip(line, "'", at);
    const bool hasWord = Skip(line, ", line ", at);
    if (!hasWord && !(isQuoted && Skip(line, ",", at))) {
        return false;
    }
    Skip(line, "= ", at); // of lldb
    position.line = ReadNumber(line, at);
    position.end = at;
    position.isQuoted = isQuoted;
    return position.line > 0;
}

} // namespace

bool ReadNumbers(std::string_view line, FilePosition& position) {
    const bool parenthesis = HasAt(line, position.end, '(');
    if (!parenthesis && !HasAt(line, position.end, ':')) {
        return ReadWords(line, position);
    }
    ++position.end;
    position.line = ReadNumber(line, position.end);
    std::size_t columnEnd = position.end + 1;
    const bool mayHaveColumn = HasAt(line, position.end, parenthesis ? ',' : ':');
    position.column = mayHaveColumn ? ReadNumber(line, columnEnd) : 0;
    if (position.column > 0) {
        position.hasColonColumn = !parenthesis;
        position.end = columnEnd;
    }
    if (parenthesis && !HasAt(line, position.end, ')')) {
        return false;
    }
    position.end += parenthesis ? 1 : 0;
    return position.line > 0;
}

std::optional<FilePosition> FindPosition(const FileSpellings& file, std::string_view line, std::size_t from) {
    const std::string& name = file.BaseName();
    std::size_t at = name.empty() ? std::string_view::npos : line.find(name, from);
    for (; at != std::string_view::npos; at = line.find(name, at + 1)) {
        FilePosition position;
        position.end = at + name.size();
        const bool isPosition =
            ReadNumbers(line, position) && (position.end == line.size() || !IsNameCharacter(line[position.end]));
        const std::optional<std::size_t> begin = isPosition ? file.FindBegin(line, at + name.size()) : std::nullopt;
        if (begin) {
            const bool isQuoted = position.isQuoted && *begin > 0 && IsOpeningQuote(line[*begin - 1]);
            position.begin = *begin - (isQuoted ? 1 : 0);
            return position;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> MessageBehind(std::string_view line, std::size_t end) {
    std::string_view rest = line.substr(end);
    if (line[end - 1] == ')' && rest.starts_with(" :")) {
        rest.remove_prefix(1);
    }
    const bool message = rest.starts_with(": ") || rest == ":";
    return message ? std::optional(rest) : std::nullopt;
}

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

std::size_t FindName(std::string_view text, std::string_view name, std::size_t from) {
    if (name.empty()) {
        return std::string_view::npos;
    }
    for (std::size_t at = text.find(name, from); at != std::string_view::npos; at = text.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        if ((at == 0 || !IsNameCharacter(text[at - 1])) && (end == text.size() || !IsNameCharacter(text[end]))) {
            return at;
        }
    }
    return std::string_view::npos;
}

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

} // namespace tessaly
