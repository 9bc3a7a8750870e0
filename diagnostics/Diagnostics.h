// What compilers and linkers say about a generated C file, in terms of what the user wrote.
// gcc, clang, cl, the linkers of all three and whatever writes like them are understood, in English and German.
#pragma once

#include "diagnostics/BuildMap.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

enum class DiagnosticKind : std::uint8_t { Error, Warning, Note };

struct Diagnostic {
    DiagnosticKind kind = DiagnosticKind::Error;
    std::string member;     // as document/Members.h names it; "" for none
    std::size_t line = 0;   // in the member's text, from 1; 0 for none. LF, CR LF and CR each end one
    std::size_t column = 0; // UTF-16 units in that line, from 1; 0 for none
    std::string file;       // where the place is in no member: the file and line, or the tool, as printed
    std::string text;       // UTF-8, one line, without control characters or terminal sequences
};

// The messages in the output of a compiler and its linker, in the order they came, notes under their message. `output`
// may be anything: half a line, bytes that are no text, sequences that colour a terminal. What is no message (excerpts
// of the source, summaries of counts) is left out, and so is what has been said of the same place: a mistake in front
// of a body stands in the C file twice. A linker's message without a line is led to the member that it names.
std::vector<Diagnostic> ReadDiagnostics(const BuildMap& map, std::string_view output);

// What Lint finds in `document` and compilers do not say, or say at another place: warnings that belong in front of
// what ReadDiagnostics gives. The text ends with the name of the rule in brackets.
std::vector<Diagnostic> HiddenDiagnostics(const VornSrcObj& document);

} // namespace tessaly
