// psf tidy: a file in its normal form, which is what version control should see.
#include "document/PsfReadObserver.h"
#include "programs/psf/Commands.h"
#include "programs/psf/LineCounter.h"
#include "programs/psf/MemoryFile.h"
#include "programs/psf/NormalForm.h"
#include "programs/psf/Printable.h"
#include "programs/psf/Saving.h"

#include <algorithm>

namespace tessaly::psf {

namespace {

// A text without a line that begins like a tag cannot load as another one; most files have none.
struct TagWatch final : PsfReadObserver {
    void TagLike(PsfLine) override { found = true; }
    bool found = false;
};

int TidyOnce(Session& session, const std::string& file, bool onlyTell, const std::optional<FileState>& state) {
    std::string bytes;
    if (!ReadInput(session, file, bytes)) {
        return ExitStatus(Status::LoadFailed);
    }
    const std::string& name = file == StandardInput ? session.inputName : file;
    MemoryFile source(bytes);
    VornSrcObj document(source, *session.codePage);
    TagWatch watch;
    if (document.LoadFile(file, &watch) != Status::Done) {
        PrintError(name + ": " + LoadProblem(document));
        return ExitStatus(Status::LoadFailed);
    }
    const std::optional<std::string> tidy = NormalForm(session, document, source, watch.found);
    if (!tidy) {
        PrintError(name + ": has no normal form, because a line of a text is the tag of the text after it");
        return ExitStatus(Status::UnexpectedError);
    }
    if (onlyTell) {
        if (*tidy == bytes) {
            return Success;
        }
        const auto place = std::mismatch(bytes.begin(), bytes.end(), tidy->begin(), tidy->end()).first;
        const auto offset = static_cast<std::uint64_t>(place - bytes.begin());
        Print(Printable(name + ":" + std::to_string(LineCounter(bytes).LineAt(offset)) +
                        ": warning: not in normal form from here on") +
              "\n");
        return WarningsFound;
    }
    if (file == StandardInput) {
        Print(*tidy);
        return Success;
    }
    return *tidy == bytes ? Success : SaveBytes(session, *tidy, file, state);
}

} // namespace

int Tidy(Session& session, const std::string& file, bool onlyTell) {
    if (onlyTell || file == StandardInput) {
        return TidyOnce(session, file, onlyTell, std::nullopt);
    }
    return ChangeFile(file,
                      [&](const std::optional<FileState>& state) { return TidyOnce(session, file, false, state); });
}

} // namespace tessaly::psf
