// What the window kept, by number: 1 is the newest. A number is good until something is kept or removed.
#include "document/Members.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Diff.h"
#include "programs/psf/base/Json.h"
#include "programs/psf/base/Printable.h"
#include "programs/psf/base/Saving.h"
#include "recovery/Differences.h"
#include "recovery/RecoveryStore.h"

namespace tessaly::psf {

namespace {

class Kept {
public:
    explicit Kept(Session& session) : mSession(session) {
        mAll = mStore.Copies();
        for (Copy& copy : mStore.KeptDocuments()) {
            mAll.push_back(std::move(copy));
        }
        SortNewestFirst(mAll);
    }

    const std::vector<Copy>& All() const { return mAll; }
    RecoveryStore& Store() { return mStore; }

    // Loads what `copy` holds and what its file holds now; without that, the default document stands for it.
    void Load(const Copy& copy, const std::function<void(const VornSrcObj& kept, const VornSrcObj& now)>& use) {
        const std::unique_ptr<CodePage> named = CodePageOf(copy.origin);
        const CodePage& codePage = named ? *named : *mSession.codePage;
        VornSrcObj kept(mSession.files, codePage);
        VornSrcObj now(mSession.files, codePage);
        kept.LoadFile(copy.path);
        if (copy.origin.path.empty() || now.LoadFile(copy.origin.path) != Status::Done) {
            now.Init();
        }
        use(kept, now);
    }

    std::vector<std::string> DifferingMembers(const Copy& copy) {
        std::vector<std::string> members;
        Load(copy,
             [&](const VornSrcObj& kept, const VornSrcObj& now) { members = tessaly::DifferingMembers(kept, now); });
        return members;
    }

private:
    Session& mSession;
    SystemPrivateFiles mOwn;
    RecoveryStore mStore{SystemRecoveryHost(mOwn, mSession.files, ProcessEnvironment)};
    std::vector<Copy> mAll;
};

std::string Joined(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += (joined.empty() ? "" : ", ") + name;
    }
    return joined.empty() ? "-" : joined;
}

std::string ShownPath(const Copy& copy) {
    return copy.origin.path.empty() ? "(untitled)" : copy.origin.path;
}

// Runs `command` on what has this number. Returns the exit status.
int WithNumber(Session& session, std::uint64_t number, const std::function<int(Kept&, const Copy&)>& command) {
    Kept kept(session);
    if (number == 0 || number > kept.All().size()) {
        PrintError("recover: there is no number " + std::to_string(number));
        return ExitStatus(Status::NotFound);
    }
    return command(kept, kept.All()[static_cast<std::size_t>(number - 1)]);
}

// A text of the document without the line breaks at its end, which a save and a load add to.
std::string_view TextOf(const VornSrcObj& document, std::optional<CCodeOrigin> member) {
    return member ? WithoutLastBreaks(MemberText(document, *member)) : std::string_view();
}

} // namespace

int RecoverList(Session& session) {
    Kept kept(session);
    std::size_t number = 0;
    for (const Copy& copy : kept.All()) {
        Print(std::to_string(++number) + "\t" + TimeText(copy.origin.time, "%Y-%m-%d %H:%M:%S", Zone::Local) + "\t" +
              std::string(ReasonName(copy.origin.reason)) + "\t" + Printable(ShownPath(copy)) + "\t" +
              Printable(Joined(kept.DifferingMembers(copy))) + "\n");
    }
    return Success;
}

int RecoverJson(Session& session) {
    Kept kept(session);
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const Copy& copy : kept.All()) {
        const std::string& path = copy.origin.path;
        json.push_back({{"number", json.size() + 1},
                        {"time", TimeText(copy.origin.time, "%Y-%m-%dT%H:%M:%SZ", Zone::Utc)},
                        {"reason", ReasonName(copy.origin.reason)},
                        {"origin", path.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(path)},
                        {"members", kept.DifferingMembers(copy)},
                        {"file", copy.path}});
    }
    Print(ToText(json) + "\n");
    return Success;
}

int RecoverShow(Session& session, std::uint64_t number) {
    return WithNumber(session, number, [](Kept& all, const Copy& copy) {
        all.Load(copy, [&](const VornSrcObj& kept, const VornSrcObj& now) {
            for (const std::string& member : DifferingMembers(kept, now)) {
                const auto inKept = FindMember(kept, member);
                const auto inNow = FindMember(now, member);
                const std::string nothing = "/dev/null";
                const std::string diff = UnifiedDiff(inNow ? Printable(ShownPath(copy) + ":" + member) : nothing,
                                                     inKept ? Printable("recovered:" + member) : nothing,
                                                     TextOf(now, inNow), TextOf(kept, inKept));
                Print(PrintableLines(diff));
            }
        });
        return Success;
    });
}

int RecoverWrite(Session& session, std::uint64_t number, const std::string& output) {
    return WithNumber(session, number, [&](Kept&, const Copy& copy) {
        const std::string bytes = ReadWhole(session.files, copy.path);
        if (MarkOf(bytes) != copy.origin.copy) { // the window was writing a newer one just now
            PrintError("recover: " + copy.path + " has changed meanwhile");
            return ExitStatus(Status::LoadFailed);
        }
        return SaveBytes(session, bytes, output);
    });
}

int RecoverDelete(Session& session, std::uint64_t number) {
    return WithNumber(session, number, [](Kept& all, const Copy& copy) {
        if (const std::error_code error = all.Store().Remove(copy)) {
            PrintError("recover: " + copy.path + ": cannot be removed: " + Reason(error));
            return ExitStatus(Status::UnexpectedError);
        }
        return Success;
    });
}

} // namespace tessaly::psf
