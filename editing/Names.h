// Names in a C text: where one stands, and what it stands for. What declares them comes from outside: no file and no
// document is known here.
#pragma once

#include "editing/Text.h"
#include "syntax/CDeclarations.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Of two names that are alike the first is meant. The last two are what headers declare and the words of C, all in
// front of them is the document's. What holds them must outlive all that refers to them.
using KnownNames = std::vector<std::span<const CName>>;

// The words of C itself. They have no declaration.
std::span<const CName> KeywordNames();

// What the text declares in front of `place`, the last name first: names for the whole file, and those of the blocks
// that `place` is in. Of a long text only the lines near `place` are read.
std::vector<CName> NamesInFrontOf(const TextLines& lines, Place place);

// A word of a line, in columns; empty where there is none.
struct Word {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t Length() const { return end - begin; }
};

// The one that `column` is in or beside.
Word WordBeside(std::u16string_view line, std::size_t column);

// Whether what is typed at `place` is code: not in a comment, in a literal or behind "#include".
bool IsInCode(const TextLines& lines, Place place);

// Which names a word can be, by what stands in front of it.
struct NameContext {
    bool isField = false; // behind "." or "->"
    std::string owner;    // of the field; "" where that is not known

    bool Fits(const CName& name) const;
};

// No value where it can be none: behind a number, or in front of `column` stands "#".
std::optional<NameContext> ContextAt(std::u16string_view line, std::size_t column, const KnownNames& names);

// The name that is meant; null for an unknown one.
const CName* FindName(const KnownNames& names, std::string_view name, const NameContext& context);

struct NamedPlace {
    Place begin;
    Place end;
    const CName* name = nullptr;
};

// The name that `place` is in or beside. No value in comments and literals and for unknown names.
std::optional<NamedPlace> NameAt(const TextLines& lines, Place place, const KnownNames& names);

} // namespace tessaly
