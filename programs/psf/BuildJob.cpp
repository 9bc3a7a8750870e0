// The steps of the window's Build command, in its order.
#include "programs/psf/BuildJob.h"

#include "app/Catalogue.h"
#include "app/CompilerCommand.h"
#include "app/Settings.h"
#include "diagnostics/Diagnostics.h"
#include "diagnostics/RewriteMessages.h"
#include "platform/system/Environment.h"
#include "platform/text/TerminalText.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/Printable.h"

#include <cstdio>

namespace tessaly::psf {

namespace {

// A batch file that compiles the file of that name instead of the one that the settings name can run beside itself.
constexpr const char* CFileVariable = "TESSALY_C_FILE";
constexpr const char* CoverageVariable = "TESSALY_COVERAGE";

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

bool TakesOtherCFiles(SequentialFiles& files, const std::string& batchFile) {
    try {
        constexpr std::size_t largest = std::size_t{1} << 20U;
        return ReadWhole(files, batchFile, largest).find(CFileVariable) != std::string::npos;
    } catch (const std::system_error&) { // a command with arguments, say
        return false;
    }
}

// Where the extension of a path begins, or it ends.
std::size_t StemEnd(const std::string& path) {
    const std::size_t name = path.find_last_of("/\\") + 1;
    const std::size_t dot = path.find_last_of('.');
    return dot == std::string::npos || dot < name ? path.size() : dot;
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
    const std::size_t end = StemEnd(cFile);
    return cFile.substr(0, end) + number + cFile.substr(end);
}

std::string CoverageNotes(const std::string& cFile) {
    const std::string stem = cFile.substr(0, StemEnd(cFile));
    return cFile + "." + stem.substr(stem.find_last_of("/\\") + 1);
}

BuildPlan PlanForMany(SequentialFiles& files) {
    BuildPlan plan{ReadCompilerSettings(files)};
    plan.ownCFiles = !plan.settings.cFile.empty() && TakesOtherCFiles(files, plan.settings.batchFile);
    return plan;
}

BuildJob::BuildJob(Session& session, std::string file, std::string output, const BuildPlan& plan)
    : mSession(session),
      mFile(std::move(file)),
      mOutput(std::move(output)),
      mPlan(plan),
      mCFile(plan.ownCFiles ? OwnCFile(plan.settings.cFile, mFile) : plan.settings.cFile),
      mDocument(session.NewDocument()) {}

bool BuildJob::Start(bool mayWait) {
    bool isFree = true;
    if (!mIsLoaded && !LoadAndCheck()) {
        return true;
    }
    mTurn = mayWait ? LockForWriting(mCFile,
                                     [this] { PrintError(mCFile + ": waiting for another build with this C file"); })
                    : TryLockForWriting(mCFile, isFree);
    if (!isFree) {
        return false;
    }
    if (const Status status = BuildMap::BuildCCodeFile(mDocument, mCFile, mMap); status != Status::Done) {
        const std::string problem = GenerationProblem(mDocument);
        End(psf::ExitStatus(status), problem.empty()
                                         ? mCFile + ": the C file cannot be written: " + WriteProblem(mSession, mCFile)
                                         : mFile + ": " + problem);
        return true;
    }
    if (mPlan.coverage) {
        for (const char* extension : {".gcno", ".gcda"}) { // those of another build would count
            std::error_code ignored;
            std::filesystem::remove(ToPath(CoverageNotes(mCFile) + extension), ignored);
        }
    }
    SetProcessEnvironment(CFileVariable, mPlan.ownCFiles ? std::optional(mCFile) : std::nullopt);
    SetProcessEnvironment(CoverageVariable, mPlan.coverage ? std::optional<std::string>("1") : std::nullopt);
    mCompiler = std::make_unique<RunningProcess>(CompilerCommandLine(mPlan.settings.batchFile, mOutput),
                                                 [this](std::string_view piece) { mPrinted += piece; });
    return true;
}

bool BuildJob::HasEnded() {
    if (!mCompiler || !mCompiler->HasEnded()) {
        return !mCompiler;
    }
    const ProcessResult result = mCompiler->Result();
    mCompiler.reset();
    if (!result.Started()) {
        End(CompilerMissing,
            mPlan.settings.batchFile + ": the compiler cannot be started: " + Reason(result.startError));
        return true;
    }
    mMessages = HiddenMistakes(mDocument, mFile) +
                PrintableLines(RewriteMessages(mMap, mFile, WithoutTerminalSequences(CompilerText(mPrinted))));
    End(result.exitStatus, "");
    return true;
}

int BuildJob::Tell() {
    if (!mError.empty()) {
        PrintError(mError);
    }
    Print(mMessages);
    return mStatus;
}

bool BuildJob::LoadAndCheck() {
    mIsLoaded = true;
    const CompilerSettings& settings = mPlan.settings;
    if (const Status status = mDocument.LoadFile(mFile); status != Status::Done) {
        End(psf::ExitStatus(status), mFile + ": " + LoadProblemWithHint(mDocument));
    } else if (settings.batchFile.empty() || settings.cFile.empty()) {
        End(CompilerMissing, std::string(Row(Text::CompilerMissing).english) +
                                 " (the settings FCompBat and FCompFileName must both be set)");
    } else if (!CarriesArgument(CompilerCommandLine(settings.batchFile, mOutput), mOutput)) {
        End(WrongUsage, mFile + ": the command line of the compiler cannot carry a path with " +
                            std::string(UncarriedCharacters()));
    } else {
        return true;
    }
    return false;
}

void BuildJob::End(int status, const std::string& error) {
    mStatus = status;
    mError = error;
    mDocument.Init();
    if (!mPlan.keepsTurn || status != Success) {
        Release();
    }
}

void BuildJob::Release() {
    mMap = BuildMap();
    mTurn.reset();
}

int Build(Session& session, const std::vector<std::string>& files, const BuildOptions& options) {
    const bool isOne = files.size() == 1;
    if (options.output && !isOne) {
        PrintError("build: --output is for one file");
        return WrongUsage;
    }
    const BuildPlan plan = isOne ? BuildPlan{ReadCompilerSettings(session.files)} : PlanForMany(session.files);
    std::vector<std::unique_ptr<Job>> jobs;
    for (const std::string& file : files) {
        jobs.push_back(std::make_unique<BuildJob>(session, file, options.output.value_or(OutputName(file)), plan));
    }
    return RunJobs(std::move(jobs), plan.ownCFiles ? options.jobs : 1);
}

} // namespace tessaly::psf
