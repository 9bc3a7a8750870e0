// The names that a C text declares, with what a reader wants to see of them. Found without a compiler: every branch of
// "#if" counts, but one alone opens and closes blocks; macros stay what they are, and what is not understood is passed
// over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// DeclaredNames finds no keywords.
enum class CNameKind : std::uint8_t { Function, Variable, Type, Constant, Macro, Field, Keyword };

struct CName {
    std::string name;
    CNameKind kind = CNameKind::Variable;

    // In one line, without comments, body and first value: "int SendFrame(const DataFrame* frame, int channel)".
    std::string declaration;

    // Of a field: the name of its structure, or of the type that stands for that; "" for one without a name.
    std::string owner = {};

    std::size_t position = 0; // of the name, in bytes
    bool isLocal = false;     // a parameter of a definition, or declared in its body

    // Of a local name: where the block or loop ends that it is known in, in bytes; of others, and where that is open,
    // behind every place.
    std::size_t end = static_cast<std::size_t>(-1);
};

// In the order of the text; a name that is declared twice is there twice. Takes any bytes.
std::vector<CName> DeclaredNames(std::string_view text);

// The names in "#include", in their order, with the brackets or quotes around them.
std::vector<std::string> IncludedNames(std::string_view text);

} // namespace tessaly
