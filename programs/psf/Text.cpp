// psf text: the document for people and for tools that compare lines.
#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "programs/psf/Commands.h"
#include "programs/psf/Printable.h"

#include <algorithm>

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

} // namespace

int ShowText(Session& session, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    const Status status = document.LoadFile(file);
    if (document.ReadError()) {
        PrintError(session.NameOf(file) + ": " + LoadProblem(document));
        return ExitStatus(status);
    }
    std::string separator;
    for (const CCodeOrigin& member : AllMembers(document)) {
        Print(separator + "[" + Printable(MemberName(document, member)) + "]\n" +
              PlainLines(MemberText(document, member)));
        separator = "\n";
    }
    if (status != Status::Done) {
        Print("\n(not all could be read: " + LoadProblem(document) + ")\n");
    }
    return Success;
}

} // namespace tessaly::psf
