// Compiler messages led back from the generated C file to what the user wrote.
// The file's frame is not the user's: positions in it stay as the compiler gave them.
#pragma once

#include "diagnostics/CFileLines.h"
#include "diagnostics/FileSpellings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class VornSrcObj;

class DiagnosticMap {
public:
    // For the C file `cFilePath` that was generated from `document`, which is not kept. `psfPath` is put in front
    // of the positions as it stands. A relative `cFilePath` is one of the current folder.
    DiagnosticMap(const VornSrcObj& document, std::string psfPath, const std::string& cFilePath);

    // The whole output of a compiler, and of its linker, with the positions in members of the document led back.
    // Everything else comes out byte by byte as it went in. A position is "psfPath:member:line" with the members
    // "references", "functions/NAME" and "events/NAME" and the line in the member's text, counted from 1; that of a
    // prototype is the line of the function it was cut from.
    //
    // FILE below is the C file in one of its spellings.
    // - A line that begins with "FILE:LINE:", "FILE:LINE:COL:", "FILE(LINE):", "FILE(LINE) :", "FILE(LINE,COL):"
    //   or "FILE(LINE,COL) :" begins with the new position and ends with the old one in parentheses:
    //   "x.PSF:events/OnKey:3: error: what (gen.c:45:9)".
    // - Inside a line the old position in parentheses follows the new one: "In file included from
    //   x.PSF:references:1 (gen.c:14):". This is done in "In file included from FILE:LINE:" and "from FILE:LINE,"
    //   with or without a column; behind the name of a linker as in "/usr/bin/ld: FILE:LINE: what"; in front of
    //   ": first defined here"; and in lld's lines ">>> referenced by FILE:LINE (FILE:LINE)". Other lines may quote
    //   the source and are left alone.
    //
    // How the lines are counted is decided once for the whole output: see Counting.
    std::string Rewrite(std::string_view output) const;

    // How the compiler that wrote `output` counts lines. gcc and clang take a lone CR for a line end. A column after a
    // colon is their mark and decides. Without one, messages are tried both ways: the quoted names must stand in the
    // lines named. A tie is a line end. The excerpts of the source are no help: gcc itself prints the wrong line there.
    LineCounting Counting(std::string_view output) const;

private:
    // A position in the C file, somewhere in a line of output.
    struct Position {
        std::size_t begin = 0;
        std::size_t end = 0; // behind the numbers or the closing parenthesis
        std::size_t line = 0;
        bool hasColonColumn = false;
    };

    static bool ReadNumbers(std::string_view line, Position& position);
    std::optional<Position> FindPosition(std::string_view line, std::size_t from) const;
    void RewriteLine(std::string_view line, LineCounting counting, std::string& result) const;
    void RewriteInside(std::string_view line, LineCounting counting, std::string& result) const;
    std::optional<std::string> MapPosition(const Position& position, LineCounting counting) const;
    const std::string& NameOf(CCodeOrigin member) const;
    int Vote(std::string_view message, std::size_t line) const;

    CFileLines mLines;
    std::int32_t mFunctionCount;
    std::vector<std::string> mMemberNames; // in document order
    std::string mPsfPath;
    FileSpellings mFile;
};

} // namespace tessaly
