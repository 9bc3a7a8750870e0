// One load with an observer, and the lines of the file to say where.
#include "diagnostics/Lint.h"
#include "programs/psf/Commands.h"
#include "programs/psf/Printable.h"
#include "programs/psf/PsfWarnings.h"

#include <new>
#include <system_error>

namespace tessaly::psf {

namespace {

// Counts lines as a text editor does: LF, CR LF and CR each end one.
class LineCounter {
public:
    explicit LineCounter(const std::string& bytes) : mBytes(bytes) {}

    // The number of the line at `offset`, from 1. Offsets must come in order.
    std::size_t LineAt(std::uint64_t offset) {
        for (; mPosition < offset && mPosition < mBytes.size(); ++mPosition) {
            const char c = mBytes[mPosition];
            const bool crOfCrLf = c == '\r' && mPosition + 1 < mBytes.size() && mBytes[mPosition + 1] == '\n';
            mLine += c == '\n' || (c == '\r' && !crOfCrLf) ? 1 : 0;
        }
        return mLine;
    }

private:
    const std::string& mBytes;
    std::size_t mPosition = 0;
    std::size_t mLine = 1;
};

// The reader finds nothing in a file with wrong line ends, or in one of UTF-16. That is the one thing to tell then. A
// lone CR it takes for CR LF. Texts may hold lone LFs, so only a file without any CR has wrong ones.
void CheckLineEnds(std::string_view bytes, std::vector<PsfWarning>& warnings) {
    constexpr std::string_view needed = "the format needs CR LF in the code page";
    const bool isUtf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
                         bytes.starts_with(std::string_view("[\0", 2)) || bytes.starts_with(std::string_view("\0[", 2));
    const bool hasCr = bytes.find('\r') != std::string_view::npos;
    const bool hasLf = bytes.find('\n') != std::string_view::npos;
    if (isUtf16) {
        warnings = {{0, "the file is UTF-16; " + std::string(needed), rule::LineEnds}};
    } else if (hasLf && !hasCr) {
        warnings = {{0, "the lines end with LF; " + std::string(needed), rule::LineEnds}};
    } else if (hasCr && !hasLf) {
        warnings.insert(warnings.begin(), {0, "the lines end with CR; " + std::string(needed), rule::LineEnds});
    }
}

} // namespace

int Check(Session& session, const std::string& file, bool lint) {
    std::string bytes;
    try {
        bytes = ReadWhole(session.files, file);
    } catch (const std::system_error& error) {
        PrintError(file + ": " + Reason(error.code()));
        return ExitStatus(Status::LoadFailed);
    } catch (const std::bad_alloc&) {
        PrintError(file + ": " + std::string(OutOfMemory));
        return ExitStatus(Status::LoadFailed);
    }
    VornSrcObj document = session.NewDocument();
    PsfWarnings observer(lint);
    const Status status = document.LoadFile(file, &observer);
    std::vector<PsfWarning> warnings = observer.Finish(document, bytes, *session.codePage);
    if (lint) {
        CheckLineEnds(bytes, warnings);
    }
    LineCounter lines(bytes);
    for (const PsfWarning& warning : warnings) {
        std::string line = file + ":" + std::to_string(lines.LineAt(warning.offset)) + ": warning: " + warning.text;
        if (lint && !warning.rule.empty()) {
            line.append(" [").append(warning.rule).append("]");
        }
        Print(Printable(line) + "\n");
    }
    if (status != Status::Done) {
        PrintError(file + ": " + std::string(LoadProblem(document)));
        return ExitStatus(status);
    }
    return warnings.empty() ? Success : WarningsFound;
}

} // namespace tessaly::psf
