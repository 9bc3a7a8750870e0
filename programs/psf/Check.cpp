// One load with an observer, and the lines of the file to say where.
#include "diagnostics/Lint.h"
#include "platform/system/MemoryFile.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/LineCounter.h"
#include "programs/psf/base/PsfWarnings.h"
#include "programs/psf/base/Report.h"

namespace tessaly::psf {

namespace {

// The reader finds nothing in a file with wrong line ends, or in one of UTF-16. That is the one thing to tell then. A
// lone CR it takes for CR LF. Texts may hold lone LFs, so only a file without any CR has wrong ones.
void CheckLineEnds(std::string_view bytes, std::vector<PsfWarning>& warnings) {
    constexpr std::string_view needed = "the format needs CR LF in the code page";
    const bool isUtf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
                         bytes.starts_with(std::string_view("[\0", 2)) || bytes.starts_with(std::string_view("\0[", 2));
    const bool hasCr = bytes.find('\r') != std::string_view::npos;
    const bool hasLf = bytes.find('\n') != std::string_view::npos;
    if (isUtf16) {
        warnings = {{0, "", "the file is UTF-16; " + std::string(needed), rule::LineEnds}};
    } else if (hasLf && !hasCr) {
        warnings = {{0, "", "the lines end with LF; " + std::string(needed), rule::LineEnds}};
    } else if (hasCr && !hasLf) {
        warnings.insert(warnings.begin(), {0, "", "the lines end with CR; " + std::string(needed), rule::LineEnds});
    }
}

} // namespace

TellUnread UnreadInto(Report& report) {
    return [&report](const std::string& file, const std::string& reason) {
        report.Tell({file, 1, "", std::string(rule::FileUnreadable), true, reason});
        PrintUnread(file, reason);
    };
}

int Check(Session& session, const std::string& file, bool lint, Report& report) {
    std::string& bytes = session.input;
    if (!ReadInput(session, file, bytes, UnreadInto(report))) {
        return ExitStatus(Status::LoadFailed);
    }
    const std::string& name = file == StandardInput ? session.inputName : file;
    MemoryFile source(bytes);
    VornSrcObj document(source, *session.codePage);
    PsfWarnings observer(lint);
    const Status status = document.LoadFile(file, &observer);
    std::vector<PsfWarning> warnings = observer.Finish(document, bytes, *session.codePage);
    if (lint) {
        CheckLineEnds(bytes, warnings);
    }
    LineCounter lines(bytes);
    for (const PsfWarning& warning : warnings) {
        report.Tell(
            {name, lines.LineAt(warning.offset), warning.member, std::string(warning.rule), false, warning.text});
    }
    if (status != Status::Done) {
        report.Tell(
            {name, lines.LineAt(bytes.size()), "", std::string(rule::FileIncomplete), true, LoadProblem(document)});
        PrintError(name + ": " + LoadProblem(document));
        return ExitStatus(status);
    }
    return warnings.empty() ? Success : WarningsFound;
}

} // namespace tessaly::psf
