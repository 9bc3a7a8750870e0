// A message is what stands behind "error:" and its like; in front of that stands where it is.
#include "diagnostics/Diagnostics.h"

#include "diagnostics/CompilerHabits.h"
#include "diagnostics/LinkerMessages.h"
#include "diagnostics/Lint.h"
#include "diagnostics/MessageForms.h"
#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "platform/text/TerminalText.h"
#include "platform/text/Utf8.h"

#include <array>
#include <unordered_set>
#include <utility>

namespace tessaly {

namespace {

// A place and a kind of message are looked for in this much of a line.
constexpr std::size_t LongestFront = 4096;

// Such as LNK2019.
constexpr std::size_t LongestCode = 8;

struct KindWord {
    std::string_view word;
    DiagnosticKind kind;
};

constexpr std::array KindWords = std::to_array<KindWord>({
    {"error", DiagnosticKind::Error},
    {"fatal error", DiagnosticKind::Error},
    {"internal compiler error", DiagnosticKind::Error},
    {"sorry, unimplemented", DiagnosticKind::Error},
    {"runtime error", DiagnosticKind::Error},
    {"Error", DiagnosticKind::Error}, // the assembler's
    {"Fatal error", DiagnosticKind::Error},
    {"Command line error", DiagnosticKind::Error}, // cl's
    {"warning", DiagnosticKind::Warning},
    {"Warning", DiagnosticKind::Warning},
    {"Command line warning", DiagnosticKind::Warning},
    {"note", DiagnosticKind::Note},
    {"NOTE", DiagnosticKind::Note}, // the linker's
    {"remark", DiagnosticKind::Note},
    {"Fehler", DiagnosticKind::Error},
    {"schwerwiegender Fehler", DiagnosticKind::Error},
    {"interner Compiler-Fehler", DiagnosticKind::Error},
    {"Warnung", DiagnosticKind::Warning},
    {"Anmerkung", DiagnosticKind::Note},
});

// A line of output as a message. `where` and `text` are parts of the line.
struct Message {
    DiagnosticKind kind = DiagnosticKind::Error;
    std::string_view where;
    std::string_view text;
    bool hasCode = false; // such as C2065
};

// Takes the kind off the front of `text`, as "error: " or "error C2065: ".
std::optional<DiagnosticKind> TakeKind(std::string_view& text, bool& hasCode) {
    for (const KindWord& each : KindWords) {
        if (!text.starts_with(each.word)) {
            continue;
        }
        std::string_view rest = text.substr(each.word.size());
        if (rest == ":" || rest.starts_with(": ")) {
            text = TrimFront(rest.substr(1));
            return each.kind;
        }
        const std::size_t end = rest.find_first_of(" :", 1);
        const std::string_view code = rest.starts_with(' ') ? rest.substr(1, end - 1) : std::string_view();
        const bool isCode = !code.empty() && code.size() <= LongestCode &&
                            code.find_first_of("0123456789") != std::string_view::npos &&
                            TrimFront(rest.substr(std::min(end, rest.size()))).starts_with(':');
        if (isCode) {
            text = rest.substr(1);
            hasCode = true;
            return each.kind;
        }
    }
    return std::nullopt;
}

// Whether `where` ends with a position in some file.
bool EndsWithPosition(std::string_view where) {
    std::size_t at = where.find_last_of(":(");
    for (int numbers = 0; numbers < 2 && at != std::string_view::npos && at > 0; ++numbers) {
        FilePosition position{.end = at};
        if (ReadNumbers(where, position) && position.end == where.size()) {
            return true;
        }
        at = where.find_last_of(':', at - 1);
    }
    return false;
}

// Whether a tool may call itself or a file so.
bool IsToolOrFile(std::string_view where) {
    return !where.empty() && where.find_first_of(" \t\"';{}") == std::string_view::npos;
}

// A line that tells its kind. Where a line quotes the source, no place stands in front of such a word.
std::optional<Message> SplitAtKind(std::string_view line) {
    const std::string_view front = line.substr(0, LongestFront);
    for (std::size_t colon = front.find(':'); colon != std::string_view::npos; colon = front.find(':', colon + 1)) {
        Message message;
        message.text = TrimFront(line.substr(colon + 1));
        const std::optional<DiagnosticKind> kind = TakeKind(message.text, message.hasCode);
        if (kind) {
            message.kind = *kind;
            message.where = TrimBack(line.substr(0, colon));
            const bool isPlace = message.hasCode || EndsWithPosition(message.where) || IsToolOrFile(message.where);
            return isPlace ? std::optional(message) : std::nullopt;
        }
    }
    return std::nullopt;
}

// UTF-8 in one line. A byte that is none becomes a replacement character.
std::string CleanText(std::string_view text) {
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = ReadUtf8OrReplacement(text, at);
        const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
        AppendUtf8(isControl ? U' ' : character, clean);
    }
    return std::string(Trim(clean));
}

class Reader {
public:
    Reader(const BuildMap& map, std::string_view output)
        : mMap(map),
          mCounting(CountingOf(map, output)),
          mUnit(ColumnUnitOf(map, output, mCounting)),
          mLinker(map) {}

    std::vector<Diagnostic> Run(std::string_view output) {
        while (!output.empty()) {
            std::string_view line = TakeLine(output);
            line = line.substr(0, line.find_last_not_of("\r ") + 1);
            if (!line.empty()) {
                ReadLine(line);
            }
        }
        return std::move(mDiagnostics);
    }

private:
    void ReadLine(std::string_view line) {
        const std::optional<LinkerMessages::Message> linker = mLinker.Next(line);
        if (line.starts_with(">>> ")) {
            Referenced(line);
            return;
        }
        std::optional<Message> message = Split(line);
        if (!message && linker) {
            message = Message{DiagnosticKind::Error, linker->where, linker->text};
            TakeKind(message->text, message->hasCode);
        }
        if (message && !IsSummary(message->text)) {
            Add(*message, linker ? linker->place : std::nullopt);
        }
    }

    // What only says that there were errors.
    bool IsSummary(std::string_view text) const {
        const bool isSummary = text.starts_with("ld returned ") || text.starts_with("linker command failed") ||
                               text.starts_with("LNK1120");
        return isSummary && !mDiagnostics.empty();
    }

    // Excerpts begin with blanks or with the number of their line.
    std::optional<Message> Split(std::string_view line) {
        if (line.front() == ' ' || line.front() == '\t') {
            return std::nullopt;
        }
        if (const std::optional<Message> message = SplitAtKind(line)) {
            return message;
        }
        const std::optional<FilePosition> position = FindPosition(mMap.File(), line, 0);
        if (position && (position->begin == 0 || IsLinkerPrefix(line.substr(0, position->begin)))) {
            return WithoutKind(line, position->end);
        }
        const std::size_t colon = line.substr(0, LongestFront).find(": ");
        const bool isLinkers = colon != std::string_view::npos && IsLinkerPrefix(line.substr(0, colon + 2));
        return isLinkers && !line.ends_with(':') ? WithoutKind(line, colon) : std::nullopt;
    }

    // A message behind `end`, which all but the linker's notes on other messages make an error.
    static std::optional<Message> WithoutKind(std::string_view line, std::size_t end) {
        const std::optional<std::string_view> behind = MessageBehind(line, end);
        if (!behind || behind->size() < 3) {
            return std::nullopt;
        }
        const std::string_view text = behind->substr(2);
        const bool isNote = text.starts_with("see ") || text.starts_with("first defined here");
        return Message{isNote ? DiagnosticKind::Note : DiagnosticKind::Error, line.substr(0, end), text};
    }

    // `named`: where the names of a linker's message lead, if anywhere.
    void Add(const Message& message, const std::optional<MemberPlace>& named) {
        Diagnostic diagnostic;
        diagnostic.kind = message.kind;
        diagnostic.text = CleanText(message.text);
        if (!SetPlace(message.where, diagnostic)) {
            if (named) {
                SetPlace(*named, diagnostic);
            } else {
                diagnostic.file = CleanText(message.where);
            }
        }
        const bool isNote = diagnostic.kind == DiagnosticKind::Note;
        mIsRepeated = isNote ? mIsRepeated : IsRepeated(diagnostic);
        if (!mIsRepeated) {
            mIsNamedOnly = diagnostic.column == 0 && named.has_value();
            mDiagnostics.push_back(std::move(diagnostic));
        }
    }

    // A repeated message takes the notes under it along.
    bool IsRepeated(const Diagnostic& diagnostic) {
        const std::string place =
            diagnostic.member + ":" + std::to_string(diagnostic.line) + ":" + std::to_string(diagnostic.column) + ":";
        return !diagnostic.member.empty() && !mSaid.insert(place + diagnostic.text).second;
    }

    static void SetPlace(const MemberPlace& place, Diagnostic& diagnostic) {
        diagnostic.member = place.member;
        diagnostic.line = place.line;
        diagnostic.column = place.column;
    }

    bool SetPlace(std::string_view where, Diagnostic& diagnostic) const {
        const std::optional<FilePosition> position = FindPosition(mMap.File(), where, 0);
        if (!position) {
            return false;
        }
        const std::optional<MemberPlace> place =
            mMap.Find(position->line, mCounting, position->column, position->hasColonColumn ? mUnit : ColumnUnit::Byte);
        if (place) {
            SetPlace(*place, diagnostic);
        }
        return place.has_value();
    }

    // lld gives the places behind its message, one a line. The first one in a member is that of the message.
    void Referenced(std::string_view line) {
        if (!mDiagnostics.empty() && (mIsNamedOnly || mDiagnostics.back().member.empty()) &&
            SetPlace(line, mDiagnostics.back())) {
            mDiagnostics.back().file.clear();
            mIsNamedOnly = false;
        }
    }

    const BuildMap& mMap;
    LineCounting mCounting;
    ColumnUnit mUnit;
    LinkerMessages mLinker;
    std::vector<Diagnostic> mDiagnostics;
    bool mIsNamedOnly = false; // the place of the last one is not certain
    std::unordered_set<std::string> mSaid;
    bool mIsRepeated = false;
};

} // namespace

std::vector<Diagnostic> ReadDiagnostics(const BuildMap& map, std::string_view output) {
    const std::string plain = WithoutTerminalSequences(output);
    return Reader(map, plain).Run(plain);
}

std::vector<Diagnostic> HiddenDiagnostics(const VornSrcObj& document) {
    std::vector<Diagnostic> diagnostics;
    for (const Finding& finding : Lint(document)) {
        if (finding.isHiddenFromCompilers) {
            diagnostics.push_back({DiagnosticKind::Warning, MemberName(document, finding.member), finding.line, 0, "",
                                   CleanText(finding.message) + " [" + std::string(finding.rule) + "]"});
        }
    }
    return diagnostics;
}

} // namespace tessaly
