// psf git-setup: what a repository of program source files needs. Only what differs is written.
#include "platform/system/Environment.h"
#include "platform/system/Process.h"
#include "platform/text/Ascii.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/Printable.h"
#include "programs/psf/base/Saving.h"

#include <filesystem>
#include <optional>
#include <stdexcept>

namespace tessaly::psf {

namespace {

// In any case, since git tells capitals from small letters.
constexpr std::string_view AttributesLine = "*.[Pp][Ss][Ff] -text filter=psf diff=psf merge=psf";

struct GitMissing : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What git prints, without the line end; no value when it fails. No argument has a double quote. Throws GitMissing.
std::optional<std::string> Git(const std::vector<std::string>& arguments) {
    std::string line = "git";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    std::string output;
    const ProcessResult result = RunProcess(line, [&output](std::string_view piece) { output += piece; });
    if (!result.Started()) {
        throw GitMissing(result.startError == std::errc::no_such_file_or_directory
                             ? "git-setup: there is no git in the folders of PATH; install it, or add its folder there"
                             : "git-setup: git cannot be started: " + Reason(result.startError));
    }
    return result.exitStatus == 0 ? std::optional(std::string(TrimBack(output, "\r\n"))) : std::nullopt;
}

// Where git looks for attributes of all repositories.
std::string GlobalAttributes() {
    const std::optional<std::string> chosen =
        Git({"config", "--global", "--type=path", "--get", "core.attributesFile"});
    if (chosen) {
        return *chosen;
    }
    const std::string own = ProcessEnvironment("XDG_CONFIG_HOME").value_or("");
    const std::string profile = ProcessEnvironment("USERPROFILE").value_or("");
    return (own.empty() ? ProcessEnvironment("HOME").value_or(profile) + "/.config" : own) + "/git/attributes";
}

class GitConfiguration {
public:
    GitConfiguration(Session& session, bool global) : mSession(session), mScope(global ? "--global" : "--local") {}

    // False, and it says so, when git refuses.
    bool Set(const std::string& key, const std::string& value) {
        if (Git({"config", mScope, "--get", key}) == value) {
            return true;
        }
        if (!Git({"config", mScope, key, value})) {
            PrintError("git-setup: git does not take " + key);
            return false;
        }
        Tell("git config " + mScope + " " + key + " '" + value + "'");
        return true;
    }

    int AddAttributes(const std::string& path) {
        std::string text;
        if (mSession.files.FileExists(path) && !ReadInput(mSession, path, text)) {
            return ExitStatus(Status::UnexpectedError);
        }
        if (("\n" + text + "\n").find("\n" + std::string(AttributesLine) + "\n") != std::string::npos) {
            return Success;
        }
        text += text.empty() || text.ends_with('\n') ? "" : "\n";
        text.append(AttributesLine).append("\n");
        std::error_code ignored; // then the file cannot be written, which is told
        std::filesystem::create_directories(ToPath(path).parent_path(), ignored);
        const int status = SaveBytes(mSession, text, path);
        if (status == Success) {
            Tell(path + ": " + std::string(AttributesLine));
        }
        return status;
    }

    bool HasChanged() const { return mHasChanged; }

private:
    void Tell(const std::string& change) {
        Print(Printable(change) + "\n");
        mHasChanged = true;
    }

    Session& mSession;
    std::string mScope;
    bool mHasChanged = false;
};

int Configure(Session& session, bool global, const std::string& codePage) {
    const std::optional<std::string> top = global ? GlobalAttributes() : Git({"rev-parse", "--show-toplevel"});
    if (!top) {
        PrintError("git-setup: the current folder is in no repository; --global sets up git for all of them");
        return ExitStatus(Status::NotFound);
    }
    const std::string psf = codePage.empty() ? "psf" : "psf --codepage " + codePage;
    GitConfiguration git(session, global);
    const bool taken = git.Set("filter.psf.clean", psf + " tidy --name %f -") &&
                       git.Set("merge.psf.name", "PSF files, member by member") &&
                       git.Set("merge.psf.driver", psf + " merge --name %P %O %A %B") &&
                       git.Set("diff.psf.textconv", psf + " text") && git.Set("diff.psf.xfuncname", R"(^\[([^][]+)\])");
    if (!taken) {
        return ExitStatus(Status::UnexpectedError);
    }
    const int status = git.AddAttributes(global ? *top : *top + "/.gitattributes");
    if (status == Success) {
        Print(git.HasChanged()
                  ? "Files that are in a repository already get their normal form by: git add --renormalize .\n"
                  : "Nothing to change.\n");
    }
    return status;
}

} // namespace

int GitSetup(Session& session, bool global, const std::string& codePage) {
    try {
        return Configure(session, global, codePage);
    } catch (const GitMissing& error) {
        PrintError(error.what());
        return CompilerMissing;
    }
}

} // namespace tessaly::psf
