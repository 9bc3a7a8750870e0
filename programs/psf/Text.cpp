// psf text: the document for people and for tools that compare lines.
#include "document/Members.h"
#include "document/PsfKeys.h"
#include "document/PsfReadObserver.h"
#include "platform/text/Ascii.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Printable.h"

#include <algorithm>
#include <array>

namespace tessaly::psf {

namespace {

// `text` with LF for every line break, and one at its end.
std::string PlainLines(std::string_view text) {
    std::string lines;
    text = TrimBack(text, "\r\n");
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        lines.append(text.substr(start, end - start)).append("\n");
        start = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    return lines;
}

// The members that a load got to read. The others have the texts of a new document.
class ReadMembers final : public PsfReadObserver {
public:
    void Tag(PsfLine line) override { mReferences = mReferences || line.text == GVarsTag; }

    void Event(PsfStep step, std::int32_t index, PsfLine) override {
        if (step == PsfStep::Ended) {
            mEvents.at(static_cast<std::size_t>(index)) = true;
        }
    }

    bool Has(CCodeOrigin member) const {
        switch (member.kind) {
        case CCodeOrigin::Kind::References:
            return mReferences;
        case CCodeOrigin::Kind::Event:
            return mEvents.at(static_cast<std::size_t>(member.index));
        default:
            return true;
        }
    }

private:
    bool mReferences = false;
    std::array<bool, EventCount> mEvents = {};
};

} // namespace

int ShowText(Session& session, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    ReadMembers read;
    const Status status = document.LoadFile(file, &read);
    if (document.ReadError()) {
        PrintError(session.NameOf(file) + ": " + LoadProblem(document));
        return ExitStatus(status);
    }
    std::string separator;
    for (const CCodeOrigin& member : AllMembers(document)) {
        if (status != Status::Done && !read.Has(member)) {
            continue;
        }
        Print(separator + "[" + Printable(MemberName(document, member)) + "]\n" +
              PlainLines(MemberText(document, member)));
        separator = "\n";
    }
    if (status != Status::Done) {
        Print(separator + "(not all could be read: " + LoadProblem(document) + ")\n");
    }
    return Success;
}

} // namespace tessaly::psf
