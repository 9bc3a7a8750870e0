// The steps of the window's Build command, in its order; of several builds at once each one's output is kept together.
#include "programs/psf/Build.h"

#include "app/Catalogue.h"
#include "app/CompilerCommand.h"
#include "app/Settings.h"
#include "diagnostics/Diagnostics.h"
#include "diagnostics/RewriteMessages.h"
#include "platform/system/Environment.h"
#include "platform/system/FileLock.h"
#include "platform/system/Process.h"
#include "platform/text/TerminalText.h"
#include "programs/psf/Commands.h"
#include "programs/psf/Printable.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

namespace tessaly::psf {

namespace {

// A batch file that compiles the file of that name instead of the one that the settings name can run beside itself.
constexpr const char* CFileVariable = "TESSALY_C_FILE";

// What a compiler cannot know, or knows at another place only, in the form of its own messages.
std::string HiddenMistakes(const VornSrcObj& document, const std::string& file) {
    std::string text;
    for (const Diagnostic& each : HiddenDiagnostics(document)) {
        text.append(Printable(file + ":" + each.member + ":" + std::to_string(each.line) + ": warning: " + each.text));
        text.append("\n");
    }
    return text;
}

// Why `path` cannot be written.
std::string WriteProblem(Session& session, const std::string& path) {
    try {
        session.files.OpenForOutput(path)->Close();
        return "the disk may be full";
    } catch (const std::system_error& error) {
        return Reason(error.code());
    }
}

// One file on its way through the compiler. What is to be said of it waits until its turn.
class BuildJob {
public:
    BuildJob(Session& session, std::string file, std::string output, CompilerSettings settings)
        : mSession(session),
          mFile(std::move(file)),
          mOutputName(std::move(output)),
          mSettings(std::move(settings)),
          mDocument(session.NewDocument()) {}

    // Writes the C file and starts the compiler, or ends where one of that does not go well. False while another
    // program builds with the C file; with `wait` it waits for that. `ownCFile`: the batch file is told of the C file.
    bool Start(bool wait, bool ownCFile) {
        bool isFree = true;
        if (!mIsLoaded && !LoadAndCheck()) {
            return true;
        }
        mTurn = wait ? LockForWriting(
                           mSettings.cFile,
                           [this] { PrintError(mSettings.cFile + ": waiting for another build with this C file"); })
                     : TryLockForWriting(mSettings.cFile, isFree);
        if (!isFree) {
            return false;
        }
        if (const Status status = BuildMap::BuildCCodeFile(mDocument, mSettings.cFile, mMap); status != Status::Done) {
            const std::string problem = GenerationProblem(mDocument);
            End(ExitStatus(status),
                problem.empty()
                    ? mSettings.cFile + ": the C file cannot be written: " + WriteProblem(mSession, mSettings.cFile)
                    : mFile + ": " + problem);
            return true;
        }
        SetProcessEnvironment(CFileVariable, ownCFile ? std::optional(mSettings.cFile) : std::nullopt);
        mCompiler = std::make_unique<RunningProcess>(CompilerCommandLineFor(mSettings.batchFile, mOutputName),
                                                     [this](std::string_view piece) { mPrinted += piece; });
        return true;
    }

    // Whether it has ended; waits so many milliseconds for that.
    bool HasEnded(int patience) {
        if (!mCompiler || !mCompiler->HasEnded(patience)) {
            return !mCompiler;
        }
        const ProcessResult result = mCompiler->Result();
        mCompiler.reset();
        if (!result.Started()) {
            End(CompilerMissing,
                mSettings.batchFile + ": the compiler cannot be started: " + Reason(result.startError));
            return true;
        }
        mText = HiddenMistakes(mDocument, mFile) +
                PrintableLines(RewriteMessages(mMap, mFile, WithoutTerminalSequences(CompilerText(mPrinted))));
        End(result.exitStatus, "");
        return true;
    }

    // Says all that is to be said, and returns the exit status.
    int Tell() const {
        if (!mError.empty()) {
            PrintError(mError);
        }
        Print(mText);
        return mStatus;
    }

private:
    bool LoadAndCheck() {
        mIsLoaded = true;
        if (const Status status = mDocument.LoadFile(mFile); status != Status::Done) {
            End(ExitStatus(status), mFile + ": " + LoadProblemWithHint(mDocument));
        } else if (mSettings.batchFile.empty() || mSettings.cFile.empty()) {
            End(CompilerMissing, std::string(Row(Text::CompilerMissing).english) +
                                     " (the settings FCompBat and FCompFileName must both be set)");
        } else if (!CarriesArgument(CompilerCommandLineFor(mSettings.batchFile, mOutputName), mOutputName)) {
            End(WrongUsage, mFile + ": the command line of the compiler cannot carry a path with " +
                                std::string(UncarriedCharacters()));
        } else {
            return true;
        }
        return false;
    }

    // The document and the lock are not needed any more.
    void End(int status, const std::string& error) {
        mStatus = status;
        mError = error;
        mDocument.Init();
        mMap = BuildMap();
        mTurn.reset();
    }

    Session& mSession;
    std::string mFile;
    std::string mOutputName;
    CompilerSettings mSettings;
    VornSrcObj mDocument;
    bool mIsLoaded = false;
    std::unique_ptr<FileLock> mTurn;
    BuildMap mMap;
    std::unique_ptr<RunningProcess> mCompiler;
    std::string mPrinted;
    std::string mText;
    std::string mError;
    int mStatus = Success;
};

// Runs `jobs`, at most `count` at a time, and tells of each when all before it are done.
int RunJobs(std::vector<std::unique_ptr<BuildJob>> jobs, std::size_t count, bool ownCFiles) {
    constexpr int pause = 5; // milliseconds; each in turn
    std::vector<BuildJob*> running;
    std::size_t next = 0;
    int status = Success;
    for (std::size_t told = 0; told < jobs.size();) {
        while (next < jobs.size() && running.size() < count && jobs[next]->Start(running.empty(), ownCFiles)) {
            running.push_back(jobs[next++].get());
        }
        running.erase(
            std::remove_if(running.begin(), running.end(),
                           [&](BuildJob* job) { return job->HasEnded(running.size() == 1 ? 10 * pause : pause); }),
            running.end());
        while (told < next && std::find(running.begin(), running.end(), jobs[told].get()) == running.end()) {
            const int each = jobs[told]->Tell();
            std::fflush(stdout); // a long run is watched
            status = status == Success ? each : status;
            jobs[told++].reset();
        }
    }
    return status;
}

bool TakesOtherCFiles(SequentialFiles& files, const std::string& batchFile) {
    try {
        constexpr std::size_t largest = std::size_t{1} << 20U;
        return ReadWhole(files, batchFile, largest).find(CFileVariable) != std::string::npos;
    } catch (const std::system_error&) { // a command with arguments, say
        return false;
    }
}

} // namespace

CompilerSettings ReadCompilerSettings(SequentialFiles& files) {
    const std::unique_ptr<Registry> registry = OpenSettings(files, PrintError);
    return {ReadRegValue(*registry, Registry::LocalMachine, SettingsKey, CompBatSetting),
            ReadRegValue(*registry, Registry::LocalMachine, SettingsKey, CompFileNameSetting)};
}

std::string OwnCFile(const std::string& cFile, const std::string& file) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : FullPath(file)) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    char number[20];
    std::snprintf(number, sizeof number, "-%016llx", static_cast<unsigned long long>(hash));
    const std::size_t name = cFile.find_last_of("/\\") + 1;
    const std::size_t dot = cFile.find_last_of('.');
    const std::size_t end = dot == std::string::npos || dot < name ? cFile.size() : dot;
    return cFile.substr(0, end) + number + cFile.substr(end);
}

int Build(Session& session, const std::vector<std::string>& files, const BuildOptions& options) {
    const CompilerSettings settings = ReadCompilerSettings(session.files);
    const bool isOne = files.size() == 1;
    if (options.output && !isOne) {
        PrintError("build: --output is for one file");
        return WrongUsage;
    }
    const bool ownCFiles = !isOne && TakesOtherCFiles(session.files, settings.batchFile);
    std::vector<std::unique_ptr<BuildJob>> jobs;
    for (const std::string& file : files) {
        CompilerSettings own = settings;
        own.cFile = ownCFiles && !own.cFile.empty() ? OwnCFile(own.cFile, file) : own.cFile;
        jobs.push_back(std::make_unique<BuildJob>(session, file, options.output.value_or(OutputName(file)), own));
    }
    return RunJobs(std::move(jobs), ownCFiles ? std::max<std::size_t>(options.jobs, 1) : 1, ownCFiles);
}

} // namespace tessaly::psf
