// Where in the document the positions of a C file are: recorded while the file is written, so that it stays true of
// that file whatever becomes of the document. The file's frame is not the user's: nothing in it is led back.
#pragma once

#include "diagnostics/CFileLines.h"
#include "diagnostics/FileSpellings.h"
#include "document/Status.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class CodePage;
class VornSrcObj;

// What a compiler counts as a column.
enum class ColumnUnit : std::uint8_t {
    Byte,
    Cell,         // of a terminal, where a tab fills eight of them
    CellOfLfLine, // the same, measured in the line of that number when a lone CR is a blank: gcc before 13 does so
};

// A place in a member's text.
struct MemberPlace {
    std::string_view member; // its name; good as long as the map
    std::size_t line = 0;    // from 1; LF, CR LF and CR each end one
    std::size_t column = 0;  // in UTF-16 units, from 1; 0 for none
};

class BuildMap {
public:
    // Of no build: it leads nothing back.
    BuildMap() = default;

    // Of the C file that `document` would give now. A relative `cFilePath` is one of the current folder. The document
    // is not kept, but its code page must outlive the map.
    BuildMap(const VornSrcObj& document, const std::string& cFilePath);

    // Does what document.BuildCCodeFile(cFilePath) does, returns what that returns, and makes `map` that of the file.
    // Without the memory for it `map` knows less, or nothing.
    static Status BuildCCodeFile(const VornSrcObj& document, const std::string& cFilePath, BuildMap& map);

    // The C file holds `text`, which an earlier state of the document gave: from now on the lines of that are led to
    // the nearest ones of what the map was made of. Such lines have no columns.
    void SetFileText(std::string_view text);

    // The first place in a member's text that a line of the C file holds. Lines and columns are counted from 1. With a
    // column, its place; 0 is none, and one that is far behind the front of the line counts as none. No value for a
    // line of the frame, or one that the file does not have.
    std::optional<MemberPlace> Find(std::size_t line, LineCounting counting, std::size_t column = 0,
                                    ColumnUnit unit = ColumnUnit::Byte) const;

    // Where such a column is in FileLine(line, counting), in bytes; npos for none.
    std::size_t OffsetInLine(std::size_t line, LineCounting counting, std::size_t column, ColumnUnit unit) const;

    // Where the name `name` stands first by itself in the text of `member`, or without one in any member's.
    std::optional<MemberPlace> FirstUse(std::string_view name, std::string_view member = {}) const;

    // What the document gave.
    const CFileLines& Lines() const { return mLines; }

    // The text of a line of the C file with its end, in UTF-8; "" for one that does not exist.
    std::string_view FileLine(std::size_t line, LineCounting counting) const;

    const FileSpellings& File() const { return mFile; }

    // The members in document order, by name.
    const std::vector<std::string>& Members() const { return mNames; }

    // The text of the member called `member` as it was built; "" when there was none.
    std::string_view Text(std::string_view member) const;

private:
    const CFileLines& FileLines() const { return mFileText ? *mFileText : mLines; }
    void SetOut(const VornSrcObj& document, const std::string& cFilePath);
    const std::string& NameOf(CCodeOrigin member) const;
    std::size_t ByteColumn(std::size_t line, LineCounting counting, std::size_t column, ColumnUnit unit) const;
    std::string_view TextOf(std::size_t line, LineCounting counting) const;
    std::string Encoded(std::string_view text) const;

    CFileLines mLines;
    FileSpellings mFile{""};
    std::vector<CCodeOrigin> mMembers; // in document order
    std::vector<std::string> mNames;
    std::size_t mFunctionCount = 0;
    const CodePage* mCodePage = nullptr;
    std::optional<CFileLines> mFileText; // where it is not what mLines holds
    std::vector<std::size_t> mNearest;   // for each of its lines as an editor counts, the line of mLines
};

} // namespace tessaly
