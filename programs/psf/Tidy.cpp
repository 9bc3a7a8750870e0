// psf tidy: a file in its normal form, which is what version control should see.
#include "document/PsfReadObserver.h"
#include "platform/system/MemoryFile.h"
#include "programs/psf/Commands.h"
#include "programs/psf/LineCounter.h"
#include "programs/psf/NormalForm.h"
#include "programs/psf/Printable.h"
#include "programs/psf/Saving.h"

namespace tessaly::psf {

namespace {

// A text without a line that begins like a tag cannot load as another one; most files have none.
struct TagWatch final : PsfReadObserver {
    void TagLike(PsfLine) override { found = true; }
    bool found = false;
};

// Where the file is not in normal form, from the first byte on.
void TellPlace(const std::string& name, const std::string& bytes, std::size_t place) {
    Print(Printable(name + ":" + std::to_string(LineCounter(bytes).LineAt(place)) +
                    ": warning: not in normal form from here on") +
          "\n");
}

int TidyOnce(Session& session, const std::string& file, bool onlyTell, const std::optional<FileState>& state) {
    std::string& bytes = session.input;
    if (!ReadInput(session, file, bytes)) {
        return ExitStatus(Status::LoadFailed);
    }
    const std::string& name = file == StandardInput ? session.inputName : file;
    ComparedFile compared(bytes);
    VornSrcObj document(compared, *session.codePage);
    TagWatch watch;
    if (document.LoadFile(file, &watch) != Status::Done) {
        PrintError(name + ": " + LoadProblem(document));
        return ExitStatus(Status::LoadFailed);
    }
    document.SaveFile("", PsfForm::Normal);
    if (compared.IsSame()) { // so it loads as it did
        if (!onlyTell && file == StandardInput) {
            Print(bytes);
        }
        return Success;
    }
    MemoryFile written;
    const std::optional<std::string> tidy = NormalForm(session, VornSrcObj(document, written), written, watch.found);
    if (!tidy) {
        PrintError(name + ": has no normal form, because a line of a text is the tag of the text after it");
        return ExitStatus(Status::UnexpectedError);
    }
    if (onlyTell) {
        TellPlace(name, bytes, compared.SameBytes());
        return WarningsFound;
    }
    if (file == StandardInput) {
        Print(*tidy);
        return Success;
    }
    return SaveBytes(session, *tidy, file, state);
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
