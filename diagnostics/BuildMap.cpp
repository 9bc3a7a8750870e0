// Columns are led back by way of the bytes of a line, because that is what every compiler reads.
#include "diagnostics/BuildMap.h"

#include "diagnostics/MessageForms.h"
#include "diagnostics/NearestLines.h"
#include "document/Members.h"
#include "platform/text/CodePage.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <exception>

namespace tessaly {

namespace {

constexpr std::size_t TabWidth = 8;

// Nobody looks for a mistake behind this column, and a compiler may name the same long line a hundred thousand times.
constexpr std::size_t LastColumn = 4096;

} // namespace

BuildMap::BuildMap(const VornSrcObj& document, const std::string& cFilePath) {
    SetOut(document, cFilePath);
    document.BuildCCode(mLines); // where it stops short the file does, too
}

Status BuildMap::BuildCCodeFile(const VornSrcObj& document, const std::string& cFilePath, BuildMap& map) {
    map = {};
    try {
        map.SetOut(document, cFilePath);
    } catch (const std::exception&) {
        map = {};
        return document.BuildCCodeFile(cFilePath);
    }
    return document.BuildCCodeFile(cFilePath, &map.mLines);
}

void BuildMap::SetOut(const VornSrcObj& document, const std::string& cFilePath) {
    mFile = FileSpellings(cFilePath);
    mCodePage = &document.Encoding();
    mMembers = AllMembers(document);
    for (const CCodeOrigin& member : mMembers) {
        mNames.push_back(MemberName(document, member));
    }
    mFunctionCount = static_cast<std::size_t>(document.GetFunctionCount());
}

void BuildMap::SetFileText(std::string_view text) {
    mFileText.emplace().Write(text, {});
    const NearestLines nearest(mFileText->Whole(), mLines.Whole());
    mNearest.resize(SplitEditorLines(text).size());
    for (std::size_t i = 0; i < mNearest.size(); ++i) {
        mNearest[i] = nearest.Find(i + 1);
    }
}

std::optional<MemberPlace> BuildMap::Find(std::size_t line, LineCounting counting, std::size_t column,
                                          ColumnUnit unit) const {
    if (mFileText) {
        const std::size_t inFile = mFileText->EditorLine(line, counting);
        line = inFile == 0 ? 0 : mNearest.at(inFile - 1);
        counting = LineCounting::LoneCrEndsLine;
        column = 0;
    }
    const std::optional<MemberLine> found = mLines.Find(line, counting);
    if (!found) {
        return std::nullopt;
    }
    MemberPlace place{NameOf(found->origin), found->line, 0};
    const std::size_t offset = OffsetInLine(line, counting, column, unit);
    if (offset == std::string_view::npos) {
        return place;
    }
    const std::string_view text = mLines.Text(line, counting).substr(0, offset);
    place.column = 1;
    const bool isPlain = text.find('\r') == std::string_view::npos;
    std::size_t at = isPlain ? AsciiPrefix(text) : 0;
    place.column += at;
    while (at < text.size()) {
        const char32_t character = ReadUtf8OrReplacement(text, at);
        place.column += character > 0xFFFF ? 2 : 1;
        if (character == '\r') { // a blank to the compiler, but not in the text
            ++place.line;
            place.column = 1;
        }
    }
    return place;
}

std::size_t BuildMap::OffsetInLine(std::size_t line, LineCounting counting, std::size_t column, ColumnUnit unit) const {
    const std::size_t byteColumn = column > LastColumn ? 0 : ByteColumn(line, counting, column, unit);
    if (byteColumn == 0 || byteColumn > LastColumn) {
        return std::string_view::npos;
    }
    const std::string_view text = TextOf(line, counting);
    std::size_t at = std::min(AsciiPrefix(text), byteColumn - 1);
    for (std::size_t bytes = 1 + at; at < text.size() && bytes < byteColumn;) {
        const std::size_t begin = at;
        const bool isAscii = ReadUtf8(text, at) < 0x80;
        bytes += isAscii ? 1 : Encoded(text.substr(begin, at - begin)).size();
    }
    return at;
}

// The column in bytes; 0 for none.
std::size_t BuildMap::ByteColumn(std::size_t line, LineCounting counting, std::size_t column, ColumnUnit unit) const {
    if (unit == ColumnUnit::Byte || column == 0) {
        return column;
    }
    const LineCounting measured = unit == ColumnUnit::Cell ? counting : LineCounting::LoneCrIsBlank;
    const std::string bytes = Encoded(TextOf(line, measured));
    std::size_t cells = 0;
    std::size_t at = 0;
    while (at < bytes.size() && cells < column) {
        cells += bytes[at] == '\t' ? TabWidth - cells % TabWidth : 1;
        ReadUtf8(bytes, at); // gcc takes what happens to be UTF-8 for one character
    }
    return at + (column - std::min(cells, column));
}

std::string_view BuildMap::FileLine(std::size_t line, LineCounting counting) const {
    return FileLines().Text(line, counting);
}

// The front of a line, without its end.
std::string_view BuildMap::TextOf(std::size_t line, LineCounting counting) const {
    const std::string_view text = FileLine(line, counting).substr(0, LastColumn);
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

std::string BuildMap::Encoded(std::string_view text) const {
    std::string bytes;
    mCodePage->AppendEncoded(text, bytes);
    return bytes;
}

std::string_view BuildMap::Text(std::string_view member) const {
    const auto name = std::find(mNames.begin(), mNames.end(), member);
    if (name == mNames.end()) {
        return {};
    }
    return mLines.MemberText(mMembers[static_cast<std::size_t>(name - mNames.begin())]);
}

std::optional<MemberPlace> BuildMap::FirstUse(std::string_view name, std::string_view member) const {
    const std::string_view text = member.empty() ? std::string_view(mLines.Whole()) : Text(member);
    for (std::size_t at = FindName(text, name); at != std::string_view::npos; at = FindName(text, name, at + 1)) {
        if (!member.empty()) {
            return MemberPlace{member, SplitEditorLines(text.substr(0, at)).size(), 0};
        }
        const std::optional<MemberLine> place = mLines.Find(mLines.EditorLineAt(at), LineCounting::LoneCrEndsLine);
        if (place) {
            return MemberPlace{NameOf(place->origin), place->line, 0};
        }
    }
    return std::nullopt;
}

const std::string& BuildMap::NameOf(CCodeOrigin member) const {
    std::size_t index = 0; // of the references
    if (member.kind == CCodeOrigin::Kind::Function) {
        index = 1 + static_cast<std::size_t>(member.index);
    } else if (member.kind == CCodeOrigin::Kind::Event) {
        index = 1 + mFunctionCount + static_cast<std::size_t>(member.index);
    }
    return mNames.at(index);
}

} // namespace tessaly
