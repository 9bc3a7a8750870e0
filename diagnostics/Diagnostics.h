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
// of the source, summaries of counts) is left out. A linker's message without a line is led to the member that it
// names.
std::vector<Diagnostic> ReadDiagnostics(const BuildMap& map, std::string_view output);

// What Lint finds in `document` and compilers do not say, or say at another place: warnings that belong in front of
// what ReadDiagnostics gives. The text ends with the name of the rule in brackets.
std::vector<Diagnostic> HiddenDiagnostics(const VornSrcObj& document);

// The whole output with the positions in members led back; everything else comes out byte by byte as it went in.
// A position is "psfPath:member:line", with `psfPath` as it stands and the line in the member's text, counted from 1;
// that of a prototype is the line of the function it was cut from.
//
// FILE below is the C file in one of its spellings.
// - A line that begins with "FILE:LINE:", "FILE:LINE:COL:", "FILE(LINE):", "FILE(LINE) :", "FILE(LINE,COL):" or
//   "FILE(LINE,COL) :" begins with the new position and ends with the old one in parentheses:
//   "x.PSF:events/OnKey:3: error: what (gen.c:45:9)".
// - Inside a line the old position in parentheses follows the new one: "In file included from x.PSF:references:1
//   (gen.c:14):". This is done in "In file included from FILE:LINE:" and "from FILE:LINE," with or without a column;
//   behind the name of a linker as in "/usr/bin/ld: FILE:LINE: what"; in front of ": first defined here"; and in lld's
//   lines ">>> referenced by FILE:LINE (FILE:LINE)". Other lines may quote the source and are left alone.
//
// How the lines are counted is decided once for the whole output: see CountingOf.
std::string RewriteMessages(const BuildMap& map, std::string_view psfPath, std::string_view output);

// How the compiler that wrote `output` counts lines. gcc and clang take a lone CR for a line end. A column after a
// colon is their mark and decides. Without one, messages are tried both ways: the quoted names must stand in the lines
// named. A tie is a line end. The excerpts of the source are no help: gcc itself prints the wrong line there.
LineCounting CountingOf(const BuildMap& map, std::string_view output);

// What its columns are: the quoted names must stand there. Where none tells, gcc's other marks do.
ColumnUnit ColumnUnitOf(const BuildMap& map, std::string_view output, LineCounting counting);

} // namespace tessaly
