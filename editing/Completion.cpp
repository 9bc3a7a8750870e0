// Letters beyond ASCII fit only themselves.
#include "editing/Completion.h"

#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

namespace tessaly {

namespace {

enum class Fit : char { Front, FrontInOtherLetters, Part, None };

bool BeginsWith(std::string_view name, std::string_view typed) {
    return name.size() >= typed.size() && EqualsIgnoringCase(name.substr(0, typed.size()), typed);
}

bool BeginsPart(char before, char character) {
    const bool isCapital = character >= 'A' && character <= 'Z';
    const bool wasCapital = before >= 'A' && before <= 'Z';
    return before == '_' || (isCapital && !wasCapital) || (IsLetter(character) && IsDigit(before));
}

Fit FitOf(std::string_view name, std::string_view typed) {
    if (name.starts_with('_') && !typed.starts_with('_')) {
        return Fit::None;
    }
    if (BeginsWith(name, typed)) {
        return name.starts_with(typed) ? Fit::Front : Fit::FrontInOtherLetters;
    }
    for (std::size_t at = 1; at + typed.size() <= name.size(); ++at) {
        if (BeginsPart(name[at - 1], name[at]) && BeginsWith(name.substr(at), typed)) {
            return Fit::Part;
        }
    }
    return Fit::None;
}

struct Candidate {
    Fit fit = Fit::None;
    bool isOthers = false; // not of the document
    const CName* name = nullptr;
};

bool ComesFirst(const Candidate& a, const Candidate& b) {
    if (a.fit != b.fit || a.isOthers != b.isOthers) {
        return std::tie(a.fit, a.isOthers) < std::tie(b.fit, b.isOthers);
    }
    const LessIgnoringCase less;
    const std::string& one = a.name->name;
    const std::string& other = b.name->name;
    return less(one, other) || (!less(other, one) && one < other);
}

std::vector<const CName*> Fitting(const KnownNames& names, std::string_view typed, const NameContext& context) {
    std::vector<Candidate> candidates;
    std::unordered_set<std::string_view> seen;
    constexpr std::size_t others = 2;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isOthers = i + others >= names.size();
        for (const CName& name : names[i]) {
            const Fit fit = context.Fits(name) ? FitOf(name.name, typed) : Fit::None;
            if (fit != Fit::None && seen.insert(name.name).second) {
                candidates.push_back({fit, isOthers, &name});
            }
        }
    }
    std::sort(candidates.begin(), candidates.end(), ComesFirst);
    std::vector<const CName*> fitting;
    fitting.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        fitting.push_back(candidate.name);
    }
    return fitting;
}

// The word at the caret; no value where no name can be typed.
std::optional<Word> TypedWord(const TextLines& lines, Place caret, const std::u16string& line) {
    const Word word = WordBeside(line, caret.column);
    const bool isNumber = word.begin < word.end && line[word.begin] >= u'0' && line[word.begin] <= u'9';
    return isNumber || !IsInCode(lines, caret) ? std::nullopt : std::optional(word);
}

} // namespace

std::optional<Completion> CompletionAt(const TextLines& lines, Place caret, const KnownNames& names) {
    const std::u16string line = lines.Line(caret.line);
    const std::optional<Word> word = TypedWord(lines, caret, line);
    const std::optional<NameContext> context = word ? ContextAt(line, word->begin, names) : std::nullopt;
    if (!context) {
        return std::nullopt;
    }
    Completion completion = {{caret.line, word->begin}, {caret.line, word->end}, "", {}};
    completion.typed = ToUtf8(line.substr(word->begin, caret.column - word->begin));
    completion.names = Fitting(names, completion.typed, *context);
    return completion.names.empty() ? std::nullopt : std::optional(std::move(completion));
}

bool IsThirdLetter(const TextLines& lines, Place caret) {
    constexpr std::size_t letters = 3;
    const std::u16string line = lines.Line(caret.line);
    const std::optional<Word> word = TypedWord(lines, caret, line);
    return word && word->Length() == letters && word->end == caret.column;
}

} // namespace tessaly
