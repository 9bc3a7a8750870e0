// Whether it loads as the same document is tried.
#include "programs/psf/base/NormalForm.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"

#include <algorithm>
#include <new>

namespace tessaly::psf {

namespace {

bool AreSameButForEnds(const VornSrcObj& a, const VornSrcObj& b) {
    const std::vector<CCodeOrigin> members = AllMembers(a);
    const auto trimmed = [](std::string_view text) { return TrimBack(text, "\r\n"); };
    return a.GetFunctionCount() == b.GetFunctionCount() &&
           std::all_of(members.begin(), members.end(), [&](CCodeOrigin member) {
               return MemberName(a, member) == MemberName(b, member) &&
                      trimmed(MemberText(a, member)) == trimmed(MemberText(b, member));
           });
}

} // namespace

std::optional<std::string> NormalForm(const Session& session, const VornSrcObj& document, MemoryFile& file,
                                      bool mayHaveTags) {
    InMemory(document.SaveFile("", PsfForm::Normal));
    if (mayHaveTags) {
        MemoryFile again(file.Written());
        VornSrcObj loaded(again, *session.codePage);
        const Status status = loaded.LoadFile("");
        if (loaded.ReadError()) { // of memory: there is no other
            throw std::bad_alloc();
        }
        if (status != Status::Done || !AreSameButForEnds(document, loaded)) {
            return std::nullopt;
        }
    }
    return file.TakeWritten();
}

} // namespace tessaly::psf
