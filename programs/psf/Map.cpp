// What other tools say about the program of the last build, in terms of the document.
#include "diagnostics/NearestLines.h"
#include "diagnostics/RewriteMessages.h"
#include "platform/text/Ascii.h"
#include "programs/psf/BuildJob.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Printable.h"

#include <cstdio>
#include <iostream>
#include <set>

namespace tessaly::psf {

namespace {

std::set<std::string_view> LinesOf(std::string_view text) {
    std::set<std::string_view> lines;
    for (const std::string_view line : SplitEditorLines(text)) {
        lines.insert(Trim(line));
    }
    return lines;
}

// Whether little of what the user wrote in `mine`, and no other document has, stands in `other`. All C files have the
// frame and most have the texts of a new document.
bool IsOfAnother(std::string_view other, std::string_view mine, std::string_view ofNewDocument) {
    const std::set<std::string_view> otherLines = LinesOf(other);
    const std::set<std::string_view> commonLines = LinesOf(ofNewDocument);
    std::size_t own = 0;
    std::size_t found = 0;
    for (const std::string_view line : LinesOf(mine)) {
        const bool isOwn = !commonLines.contains(line);
        own += isOwn ? 1 : 0;
        found += isOwn && otherLines.contains(line) ? 1 : 0;
    }
    return found * 4 < own;
}

// Leads lines of the C file as it is on the disk to those of the document. Without it, the document alone tells.
void CompareWithFile(Session& session, const std::string& cFile, BuildMap& map) {
    constexpr std::string_view result = "; positions are led to the lines that a build would give now";
    std::string text;
    try {
        session.codePage->AppendDecoded(ReadWhole(session.files, cFile), text);
    } catch (const std::system_error& error) {
        PrintError(cFile + ": " + Reason(error.code()) + std::string(result));
        return;
    }
    const std::string& mine = map.Lines().Whole();
    if (text == mine) {
        return;
    }
    if (IsOfAnother(text, mine, BuildMap(session.NewDocument(), "").Lines().Whole())) {
        PrintError(cFile + ": seems to be that of another program block" + std::string(result));
        return;
    }
    map.SetFileText(text);
}

// The C file of the settings, or the one that `file` has by itself where that was written later; "" for none.
std::string LastCFile(Session& session, const std::string& file) {
    const std::string shared = ReadCompilerSettings(session.files).cFile;
    const std::string own = shared.empty() ? "" : OwnCFile(shared, file);
    const std::optional<FileState> ownState = StateOf(own);
    const std::optional<FileState> sharedState = StateOf(shared);
    return ownState && (!sharedState || ownState->written > sharedState->written) ? own : shared;
}

} // namespace

int Map(Session& session, const std::string& file, const std::optional<std::string>& cFile) {
    VornSrcObj document = session.NewDocument();
    if (const Status status = Load(session, document, file); status != Status::Done) {
        return ExitStatus(status);
    }
    const std::string path = cFile ? *cFile : LastCFile(session, file);
    if (path.empty()) {
        PrintError("the setting FCompFileName, the path of the C file, is missing; --c-file can name one");
        return CompilerMissing;
    }
    BuildMap map(document, path);
    CompareWithFile(session, path, map);
    MessageRewriter rewriter(map, Printable(file), MessageRewriter::Inside::Anywhere);
    for (std::string line; std::getline(std::cin, line);) {
        const bool hasLf = !std::cin.eof();
        std::string_view text = line;
        const std::string_view cr = text.ends_with('\r') ? "\r" : "";
        text.remove_suffix(cr.size());
        std::string result;
        rewriter.Rewrite(text, result);
        Print(result.append(cr).append(hasLf ? "\n" : ""));
        std::fflush(stdout); // somebody may be watching
    }
    return Success;
}

} // namespace tessaly::psf
