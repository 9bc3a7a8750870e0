// psf tidy: a file in its normal form, which is what version control should see.
#include "document/PsfKeys.h"
#include "document/PsfReadObserver.h"
#include "platform/system/MemoryFile.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/LineCounter.h"
#include "programs/psf/base/NormalForm.h"
#include "programs/psf/base/Printable.h"
#include "programs/psf/base/Saving.h"

#include <array>
#include <new>

namespace tessaly::psf {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view LineBreaks = "\r\n"; // any of them

// Keeps no text that stands in the file as its normal form has it: all texts of a file are as much memory as the file.
class TidyWatch final : public PsfReadObserver {
public:
    TidyWatch(std::string_view bytes, const CodePage& codePage, ComparedFile& file)
        : mBytes(bytes),
          mCodePage(codePage),
          mFile(file) {}

    void TagLike(PsfLine) override { mMayHaveTags = true; }
    void Function(PsfStep step, std::int32_t, PsfLine line) override { Step(step, line); }
    void Event(PsfStep step, std::int32_t, PsfLine line) override { Step(step, line); }

    std::size_t KeptSize(std::string_view text) override {
        std::string_view place = mBytes.substr(mBegin, mEnd - mBegin);
        mBegin = mEnd; // a text that goes on behind its end has no other beginning
        if (!Take(place, FuncBodyKey) || !IsWrittenAs(TrimBack(text, LineBreaks), place)) {
            return text.size();
        }
        mFile.TakeAsWritten(static_cast<std::size_t>(place.data() - mBytes.data()), place.size() - LineEnd.size());
        return 0;
    }

    // A text without a line that begins like a tag cannot load as another one; most files have none.
    bool MayHaveTags() const { return mMayHaveTags; }

private:
    void Step(PsfStep step, PsfLine line) {
        if (step == PsfStep::Text) {
            mBegin = static_cast<std::size_t>(line.offset);
        } else if (step == PsfStep::Ended) {
            mEnd = static_cast<std::size_t>(line.offset);
        }
    }

    // With the end of a line behind it.
    bool IsWrittenAs(std::string_view text, std::string_view place) const {
        constexpr std::size_t sliceSize = 4096;
        std::array<char, CodePage::MostEncoded(sliceSize)> encoded;
        while (!text.empty()) {
            const std::string_view slice = Utf8Front(text, sliceSize);
            const char* const end = mCodePage.Encode(slice, encoded.data());
            if (!Take(place, {encoded.data(), static_cast<std::size_t>(end - encoded.data())})) {
                return false;
            }
            text.remove_prefix(slice.size());
        }
        return place == LineEnd;
    }

    std::string_view mBytes;
    const CodePage& mCodePage;
    ComparedFile& mFile;
    std::size_t mBegin = 0; // of the text that ended last: its FuncBody= line, and the line behind it
    std::size_t mEnd = 0;
    bool mMayHaveTags = false;
};

// The content of a file in normal form; see NormalForm.
std::optional<std::string> Tidied(const Session& session, std::string_view bytes, bool mayHaveTags) {
    MemoryFile file(bytes);
    VornSrcObj document(file, *session.codePage);
    if (document.LoadFile("") != Status::Done) {
        throw std::bad_alloc(); // since it was loaded before
    }
    return NormalForm(session, document, file, mayHaveTags);
}

// Where the file is not in normal form, from the first byte on.
int TellPlace(const std::string& name, const std::string& bytes, std::size_t place) {
    Print(Printable(name + ":" + std::to_string(LineCounter(bytes).LineAt(place)) +
                    ": warning: not in normal form from here on") +
          "\n");
    return WarningsFound;
}

int TidyOnce(Session& session, const std::string& file, bool onlyTell, const std::optional<FileState>& state) {
    std::string& bytes = session.input;
    if (!ReadInput(session, file, bytes)) {
        return ExitStatus(Status::LoadFailed);
    }
    const std::string& name = file == StandardInput ? session.inputName : file;
    ComparedFile compared(bytes);
    VornSrcObj document(compared, *session.codePage);
    TidyWatch watch(bytes, *session.codePage, compared);
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
    if (onlyTell && !watch.MayHaveTags()) { // so it has a normal form, which nobody needs
        return TellPlace(name, bytes, compared.SameBytes());
    }
    const std::optional<std::string> tidy = Tidied(session, bytes, watch.MayHaveTags());
    if (!tidy) {
        PrintError(name + ": has no normal form, because a line of a text is the tag of the text after it");
        return ExitStatus(Status::UnexpectedError);
    }
    if (onlyTell) {
        return TellPlace(name, bytes, compared.SameBytes());
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
