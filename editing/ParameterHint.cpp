// The way back from the caret ends at the statement's front, or after so many lines.
#include "editing/ParameterHint.h"

#include "editing/Brackets.h"
#include "platform/text/Utf16.h"
#include "syntax/CTokens.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tessaly {

namespace {

constexpr std::size_t MostLines = 100;

struct Call {
    Place open;
    Word name;
    std::size_t argument = 0; // from 0
};

bool IsKeyword(std::string_view word) {
    const auto keywords = KeywordNames();
    return std::any_of(keywords.begin(), keywords.end(), [word](const CName& name) { return name.name == word; });
}

// Keywords behind which a call may stand; behind any other word it is a declaration.
bool GoesOnWithValue(std::string_view word) {
    return word == "return" || word == "else" || word == "do" || word == "case" || word == "sizeof";
}

std::u16string_view TrimBlanks(std::u16string_view line) {
    return line.substr(0, line.find_last_not_of(u" \t") + 1);
}

// What is called by the "(" at `column`; empty for brackets that call nothing.
Word CalledAt(std::u16string_view line, std::size_t column) {
    const std::u16string_view front = TrimBlanks(line.substr(0, column));
    const Word name = WordBeside(front, front.size());
    if (name.Length() == 0 || IsKeyword(ToUtf8(front.substr(name.begin)))) {
        return {};
    }
    const std::u16string_view before = TrimBlanks(front.substr(0, name.begin));
    const Word type = WordBeside(before, before.size());
    return type.Length() == 0 || GoesOnWithValue(ToUtf8(before.substr(type.begin))) ? name : Word();
}

class CallSearch {
public:
    CallSearch(const TextLines& lines, Place caret) : mLines(lines), mCaret(caret) {}

    std::optional<Call> Find() {
        const std::size_t last = mCaret.line - std::min(mCaret.line, MostLines);
        for (std::size_t line = mCaret.line + 1; line-- > last && !mIsDone;) {
            WalkLine(line);
        }
        return mCall;
    }

private:
    void WalkLine(std::size_t line) {
        const std::u16string text = mLines.Line(line);
        if (text.find_first_of(u"()[]{},;") == std::u16string::npos) {
            return;
        }
        const std::vector<CPart> parts = PartsOf(mLines, line);
        for (std::size_t column = line == mCaret.line ? mCaret.column : text.size(); column-- > 0 && !mIsDone;) {
            if (parts[column] == CPart::Code) {
                Take(text, {line, column});
            }
        }
    }

    void Take(std::u16string_view text, Place place) {
        const char16_t sign = text[place.column];
        if (sign == u')' || sign == u']' || sign == u'}') {
            ++mClosed;
        } else if (sign == u'(' || sign == u'[' || sign == u'{') {
            Open(text, place);
        } else if (mClosed == 0) {
            mCommas += sign == u',' ? 1U : 0U;
            mIsDone = sign == u';';
        }
    }

    void Open(std::u16string_view text, Place place) {
        if (mClosed > 0) {
            --mClosed;
            return;
        }
        const bool isCall = text[place.column] == u'(';
        const Word name = isCall ? CalledAt(text, place.column) : Word();
        if (name.Length() > 0) {
            mCall = Call{place, name, mCommas};
        }
        mIsDone = mCall || text[place.column] == u'{';
        mCommas = 0;
    }

    const TextLines& mLines;
    Place mCaret;
    std::size_t mClosed = 0; // brackets behind which the caret is
    std::size_t mCommas = 0;
    bool mIsDone = false;
    std::optional<Call> mCall;
};

// Where the list of parameters begins in the declaration of `name`, behind its "("; npos for what takes none.
std::size_t ParametersBegin(const CName& name) {
    const std::string& text = name.declaration;
    std::size_t at = 0;
    while ((at = text.find(name.name, at)) != std::string::npos) {
        const std::size_t end = at + name.name.size();
        const bool isWhole = (at == 0 || !IsCWordByte(text[at - 1])) && (end == text.size() || !IsCWordByte(text[end]));
        if (isWhole) {
            const bool isMacro = name.kind == CNameKind::Macro;
            const std::size_t open =
                isMacro ? (text.substr(end, 1) == "(" ? end : std::string::npos) : text.find('(', end);
            return open == std::string::npos ? open : open + 1;
        }
        at = end;
    }
    return std::string::npos;
}

// The parameters from `begin` to the ")", each as where it begins and ends.
std::vector<std::pair<std::size_t, std::size_t>> ParametersFrom(std::string_view text, std::size_t begin) {
    std::vector<std::pair<std::size_t, std::size_t>> parameters;
    std::size_t depth = 0;
    for (std::size_t at = begin; at < text.size(); ++at) {
        const bool isEnd = depth == 0 && (text[at] == ',' || text[at] == ')');
        if (isEnd) {
            const std::size_t front = std::min(text.find_first_not_of(' ', begin), at);
            parameters.emplace_back(front, at);
            begin = at + 1;
        }
        if (isEnd && text[at] == ')') {
            break;
        }
        depth += text[at] == '(' || text[at] == '[' ? 1U : 0U;
        depth -= depth > 0 && (text[at] == ')' || text[at] == ']') ? 1U : 0U;
    }
    return parameters;
}

} // namespace

std::optional<ParameterHint> ParameterHintAt(const TextLines& lines, Place caret, const KnownNames& names) {
    const std::optional<Call> call = CallSearch(lines, caret).Find();
    if (!call) {
        return std::nullopt;
    }
    const std::u16string line = lines.Line(call->open.line);
    const std::optional<NameContext> context = ContextAt(line, call->name.begin, names);
    const CName* const name =
        context ? FindName(names, ToUtf8(line.substr(call->name.begin, call->name.Length())), *context) : nullptr;
    const std::size_t first = name == nullptr ? std::string::npos : ParametersBegin(*name);
    if (first == std::string::npos) {
        return std::nullopt;
    }
    ParameterHint hint = {call->open, name->declaration, 0, 0};
    const auto parameters = ParametersFrom(hint.declaration, first);
    const auto isRest = [&hint](const auto& each) { return hint.declaration.substr(each.first, 3) == "..."; };
    if (!parameters.empty() && (call->argument < parameters.size() || isRest(parameters.back()))) {
        std::tie(hint.begin, hint.end) = parameters[std::min(call->argument, parameters.size() - 1)];
    }
    if (hint.declaration.substr(hint.begin, hint.end - hint.begin) == "void") {
        hint.end = hint.begin;
    }
    return hint;
}

} // namespace tessaly
