// What a structure's field belongs to is told by the declaration of the name in front of it.
#include "editing/Names.h"

#include "editing/Brackets.h"
#include "platform/text/Utf16.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr std::size_t MostLinesInFront = 1000;
constexpr std::size_t LinesBehind = 3; // what a statement may go on over
constexpr int LongestChain = 8;        // of fields: a.b.c

constexpr bool IsWordUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9') ||
           unit == u'_' || unit >= 0x80;
}

constexpr bool IsDigitUnit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

std::size_t BlanksSkipped(std::u16string_view line, std::size_t end) {
    const std::size_t last = line.substr(0, end).find_last_not_of(u" \t");
    return last == std::u16string_view::npos ? 0 : last + 1;
}

// Where the "(" or "[" stands whose partner is in front of `end`; 0 where there is none.
std::size_t GroupBegin(std::u16string_view line, std::size_t end) {
    std::size_t depth = 0;
    while (end-- > 0) {
        depth += line[end] == u')' || line[end] == u']' ? 1U : 0U;
        depth -= line[end] == u'(' || line[end] == u'[' ? 1U : 0U;
        if (depth == 0) {
            return end;
        }
    }
    return 0;
}

// The end of what stands in front of a "." or "->", if one of them is in front of `column`.
std::optional<std::size_t> OwnerEnd(std::u16string_view line, std::size_t column) {
    const std::u16string_view front = line.substr(0, BlanksSkipped(line, column));
    if (front.ends_with(u"->")) {
        return front.size() - 2;
    }
    return front.ends_with(u'.') ? std::optional(front.size() - 1) : std::nullopt;
}

bool IsOwner(std::string_view word, const KnownNames& names) {
    return std::any_of(names.begin(), names.end(), [&](const auto& some) {
        return std::any_of(some.begin(), some.end(), [&](const CName& name) { return name.owner == word; });
    });
}

// The first word of a declaration that has fields.
std::string StructureIn(std::string_view declaration, const KnownNames& names) {
    const auto isWord = [](char c) { return IsWordUnit(static_cast<unsigned char>(c)); };
    auto at = declaration.begin();
    while ((at = std::find_if(at, declaration.end(), isWord)) != declaration.end()) {
        const auto end = std::find_if_not(at, declaration.end(), isWord);
        if (IsOwner(std::string_view(at, end), names)) {
            return {at, end};
        }
        at = end;
    }
    return "";
}

// The structure that the expression in front of `end` is; "" for an unknown one.
std::string StructureAt(std::u16string_view line, std::size_t end, const KnownNames& names, int chain) {
    end = BlanksSkipped(line, end);
    while (end > 0 && (line[end - 1] == u')' || line[end - 1] == u']')) {
        end = BlanksSkipped(line, GroupBegin(line, end));
    }
    const Word word = WordBeside(line.substr(0, end), end);
    const std::optional<std::size_t> owner = OwnerEnd(line, word.begin);
    if (word.Length() == 0 || (owner && chain == 0)) {
        return "";
    }
    const NameContext context = {owner.has_value(), owner ? StructureAt(line, *owner, names, chain - 1) : ""};
    const CName* const name = FindName(names, ToUtf8(line.substr(word.begin, word.Length())), context);
    return name == nullptr ? "" : StructureIn(name->declaration, names);
}

} // namespace

std::span<const CName> KeywordNames() {
    static const std::vector<CName> names = [] {
        std::vector<CName> made;
        for (std::string& keyword : CKeywords()) {
            made.push_back({std::move(keyword), CNameKind::Keyword, ""});
        }
        return made;
    }();
    return names;
}

std::vector<CName> NamesInFrontOf(const TextLines& lines, Place place) {
    const std::size_t first = place.line - std::min(place.line, MostLinesInFront);
    const std::size_t end = std::min(place.line + 1 + LinesBehind, lines.Count());
    std::string text = lines.StateBefore(first) == CLineState::BlockComment ? "/*" : "";
    std::size_t position = 0;
    for (std::size_t line = first; line < end; ++line) {
        const std::u16string units = lines.Line(line);
        if (line == place.line) {
            position = text.size() + ToUtf8(std::u16string_view(units).substr(0, place.column)).size();
        }
        text += ToUtf8(units);
        text += '\n';
    }
    std::vector<CName> names = DeclaredNames(text);
    std::erase_if(names, [position](const CName& name) { return name.position >= position || name.end < position; });
    std::reverse(names.begin(), names.end());
    return names;
}

Word WordBeside(std::u16string_view line, std::size_t column) {
    Word word = {column, column};
    while (word.begin > 0 && IsWordUnit(line[word.begin - 1])) {
        --word.begin;
    }
    while (word.end < line.size() && IsWordUnit(line[word.end])) {
        ++word.end;
    }
    return word;
}

bool IsInCode(const TextLines& lines, Place place) {
    if (place.column == 0) {
        const CLineState before = lines.StateBefore(place.line);
        return before == CLineState::Code || before == CLineState::Preprocessor;
    }
    const std::u16string line = lines.Line(place.line);
    const std::size_t sign = IndentLength(line);
    const bool isInclude = line.substr(sign, 1) == u"#" && line.find(u"include", sign) != std::u16string::npos;
    return !isInclude && PartsOf(lines, place.line)[place.column - 1] != CPart::Hidden;
}

bool NameContext::Fits(const CName& name) const {
    return isField == (name.kind == CNameKind::Field) && (owner.empty() || owner == name.owner);
}

std::optional<NameContext> ContextAt(std::u16string_view line, std::size_t column, const KnownNames& names) {
    const std::size_t front = BlanksSkipped(line, column);
    if (front > 0 && line[front - 1] == u'#') {
        return std::nullopt;
    }
    const std::optional<std::size_t> end = OwnerEnd(line, column);
    if (!end) {
        return NameContext();
    }
    const Word number = WordBeside(line.substr(0, *end), *end);
    if (number.Length() > 0 && IsDigitUnit(line[number.begin])) {
        return std::nullopt;
    }
    return NameContext{true, StructureAt(line, *end, names, LongestChain)};
}

const CName* FindName(const KnownNames& names, std::string_view name, const NameContext& context) {
    for (const auto& some : names) {
        for (const CName& each : some) {
            if (each.name == name && context.Fits(each)) {
                return &each;
            }
        }
    }
    return nullptr;
}

std::optional<NamedPlace> NameAt(const TextLines& lines, Place place, const KnownNames& names) {
    const std::u16string line = lines.Line(place.line);
    const Word word = WordBeside(line, std::min(place.column, line.size()));
    const Place end = {place.line, word.end};
    if (word.Length() == 0 || IsDigitUnit(line[word.begin]) || !IsInCode(lines, end)) {
        return std::nullopt;
    }
    const std::optional<NameContext> context = ContextAt(line, word.begin, names);
    const CName* const name =
        context ? FindName(names, ToUtf8(line.substr(word.begin, word.Length())), *context) : nullptr;
    if (name == nullptr || name->declaration.empty()) {
        return std::nullopt;
    }
    return NamedPlace{{place.line, word.begin}, end, name};
}

} // namespace tessaly
