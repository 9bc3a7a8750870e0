// What was made of a text is kept as long as that stays the same: a list comes while the user types.
#include "ui/Names.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"
#include "syntax/CTokens.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

constexpr std::size_t MostLines = 2000;

std::string TextOf(const TextLines& lines) {
    std::string text;
    for (std::size_t line = 0; line < std::min(lines.Count(), MostLines); ++line) {
        text += ToUtf8(lines.Line(line)) + '\n';
    }
    return text;
}

// In one line, for what has no prototype that could be understood.
std::string InOneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const bool isBlank = IsCBlankByte(c);
        if (!isBlank || (!line.empty() && line.back() != ' ')) {
            line += isBlank ? ' ' : c;
        }
    }
    return std::string(TrimBack(line));
}

} // namespace

KnownNames Names::At(const TextLines& lines, Place place, const VornSrcObj& document, std::string_view member,
                     const Headers::Places& places) {
    mOwn = NamesInFrontOf(lines, place);
    const bool isReferences = member == ReferencesName;
    TakeReferences(isReferences ? TextOf(lines) : std::string(document.VarCode()));
    TakeFunctions(document, member);
    KnownNames names = {mOwn, mFunctions};
    if (!isReferences) {
        names.emplace_back(mReferences);
    }
    names.push_back(headers.Names(mIncluded, places));
    names.push_back(KeywordNames());
    return names;
}

void Names::TakeReferences(std::string text) {
    if (mIncluded.empty() || text != mReferencesText) {
        mReferences = DeclaredNames(text);
        mIncluded = IncludedNames(CCodeHead());
        const std::vector<std::string> own = IncludedNames(text);
        mIncluded.insert(mIncluded.end(), own.begin(), own.end());
        mReferencesText = std::move(text);
    }
}

// The one in the pane may be another by now: its text there tells. All are taken apart in one go, which is quicker.
void Names::TakeFunctions(const VornSrcObj& document, std::string_view member) {
    const FuncObject& functions = document.Functions();
    const std::string_view shown = member.starts_with(FunctionPrefix) ? member.substr(FunctionPrefix.size()) : "";
    std::string prototypes;
    std::vector<std::pair<std::string_view, std::size_t>> ends; // names, and where the prototypes end
    for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
        std::string_view prototype;
        if (functions.NameAt(i) != shown && CutPrototype(functions.CodeAt(i), prototype)) {
            prototypes.append(prototype).append("\n;");
            ends.emplace_back(functions.NameAt(i), prototypes.size());
        }
    }
    if (prototypes == mPrototypes) {
        return;
    }
    mFunctions.clear();
    std::vector<CName> declared = DeclaredNames(prototypes);
    auto name = declared.begin();
    std::size_t begin = 0;
    for (const auto& function : ends) {
        const auto first = name;
        for (; name != declared.end() && name->position < function.second; ++name) {
            mFunctions.push_back(std::move(*name));
        }
        if (name == first) {
            const std::string_view prototype = std::string_view(prototypes).substr(begin, function.second - 2 - begin);
            mFunctions.push_back({std::string(function.first), CNameKind::Function, InOneLine(prototype)});
        }
        begin = function.second;
    }
    mPrototypes = std::move(prototypes);
}

} // namespace tessaly
