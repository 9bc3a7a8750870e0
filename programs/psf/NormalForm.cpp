// A text in which no line begins like a tag cannot load as another one, so most files need no second look.
#include "programs/psf/NormalForm.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "programs/psf/MemoryFile.h"

#include <algorithm>

namespace tessaly::psf {

namespace {

bool HasTagLikeLine(std::string_view text) {
    return text.starts_with('[') || text.find("\n[") != std::string_view::npos;
}

bool HasTagLikeLines(const VornSrcObj& document) {
    const std::vector<CCodeOrigin> members = AllMembers(document);
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        if (HasTagLikeLine(document.Functions().PrototypeAt(i))) {
            return true;
        }
    }
    return std::any_of(members.begin(), members.end(),
                       [&](CCodeOrigin member) { return HasTagLikeLine(MemberText(document, member)); });
}

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

std::optional<std::string> NormalForm(const Session& session, const VornSrcObj& document) {
    MemoryFile file;
    VornSrcObj copy(document, file);
    copy.SaveFile("", PsfForm::Normal);
    if (HasTagLikeLines(document)) {
        MemoryFile again(file.Written());
        VornSrcObj loaded(again, *session.codePage);
        if (loaded.LoadFile("") != Status::Done || !AreSameButForEnds(document, loaded)) {
            return std::nullopt;
        }
    }
    return file.TakeWritten();
}

} // namespace tessaly::psf
