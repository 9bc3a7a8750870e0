// One load with an observer, and the lines of the file to say where.
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

} // namespace

int Check(Session& session, const std::string& file) {
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
    PsfWarnings observer;
    const Status status = document.LoadFile(file, &observer);
    const std::vector<PsfWarning> warnings = observer.Finish(document, bytes, *session.codePage);
    LineCounter lines(bytes);
    for (const PsfWarning& warning : warnings) {
        Print(Printable(file + ":" + std::to_string(lines.LineAt(warning.offset)) + ": warning: " + warning.text) +
              "\n");
    }
    if (status != Status::Done) {
        PrintError(file + ": " + std::string(LoadProblem(document)));
        return ExitStatus(status);
    }
    return warnings.empty() ? Success : WarningsFound;
}

} // namespace tessaly::psf
