// psf merge: what git and its kin call for a file that two branches changed.
#include "programs/psf/Commands.h"
#include "programs/psf/base/DocumentMerge.h"
#include "programs/psf/base/NormalForm.h"
#include "programs/psf/base/Saving.h"

namespace tessaly::psf {

namespace {

int MergeOnce(Session& session, const MergeFiles& files, const std::optional<FileState>& state) {
    VornSrcObj base = session.NewDocument();
    VornSrcObj ours = session.NewDocument();
    VornSrcObj theirs = session.NewDocument();
    const std::string& name = files.name.empty() ? files.ours : files.name;
    for (const auto& [document, file] :
         {std::pair(&base, &files.base), {&ours, &files.ours}, {&theirs, &files.theirs}}) {
        if (const Status status = Load(session, *document, *file); status != Status::Done) {
            return ExitStatus(status);
        }
    }
    MemoryFile file;
    VornSrcObj result(file, *session.codePage);
    const std::vector<std::string> conflicts = MergeDocuments(base, ours, theirs, result);
    const std::optional<std::string> merged = NormalForm(session, result, file);
    if (!merged) {
        PrintError(name + ": cannot be merged, because a line of a text is the tag of the text after it");
        return ExitStatus(Status::UnexpectedError);
    }
    if (const int status = SaveBytes(session, *merged, files.ours, state); status != Success) {
        return status;
    }
    for (const std::string& member : conflicts) {
        PrintError(std::string(name).append(": conflict in ").append(member));
    }
    return conflicts.empty() ? Success : WarningsFound;
}

} // namespace

int Merge(Session& session, const MergeFiles& files) {
    return ChangeFile(files.ours,
                      [&](const std::optional<FileState>& state) { return MergeOnce(session, files, state); });
}

} // namespace tessaly::psf
