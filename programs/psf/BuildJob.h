// psf build: the window's Build command, but it waits for the compiler. What is to be said of a file waits until its
// turn.
#pragma once

#include "diagnostics/BuildMap.h"
#include "platform/system/FileLock.h"
#include "programs/psf/base/Jobs.h"
#include "programs/psf/base/Session.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::psf {

// How the files of a command are built.
struct BuildPlan {
    CompilerSettings settings;
    bool ownCFiles = false; // each file has a C file of its own, and the batch file is told of it
    bool coverage = false;  // the batch file is told to note which lines run
    bool keepsTurn = false; // until Release
};

// The plan for files that each have a C file of their own, if the batch file heeds TESSALY_C_FILE, as the kit's do.
BuildPlan PlanForMany(SequentialFiles& files);

// One file on its way through the compiler.
class BuildJob final : public Job {
public:
    BuildJob(Session& session, std::string file, std::string output, const BuildPlan& plan);

    // Writes the C file and starts the compiler. False while another program builds with the C file.
    bool Start(bool mayWait) override;
    RunningProcess* Process() override { return mCompiler.get(); }
    bool HasEnded() override;
    int Tell() override;

    const std::string& File() const { return mFile; }
    const std::string& Output() const { return mOutput; }
    const std::string& CFile() const { return mCFile; }

    // Once it has ended: its exit status, what went wrong before the compiler, and what there is to read.
    int ExitStatus() const { return mStatus; }
    const std::string& Error() const { return mError; }
    const std::string& Messages() const { return mMessages; }

    // Of the C file, where it keeps its turn.
    const BuildMap& Map() const { return mMap; }

    // Others may use the C file from now on.
    void Release();

private:
    bool LoadAndCheck();
    void End(int status, const std::string& error);

    Session& mSession;
    std::string mFile;
    std::string mOutput;
    BuildPlan mPlan;
    std::string mCFile;
    VornSrcObj mDocument;
    bool mIsLoaded = false;
    std::unique_ptr<FileLock> mTurn;
    BuildMap mMap;
    std::unique_ptr<RunningProcess> mCompiler;
    std::string mPrinted;
    std::string mMessages;
    std::string mError;
    int mStatus = Success;
};

// The C file of `file` where several are built, beside `cFile`, that of the settings.
std::string OwnCFile(const std::string& cFile, const std::string& file);

// Where a batch file that heeds TESSALY_COVERAGE has the compiler put its notes on `cFile`, ".gcno", and the program
// its counts, ".gcda".
std::string CoverageNotes(const std::string& cFile);

struct BuildOptions {
    std::size_t jobs = 1;              // how many compilers may run at a time
    std::optional<std::string> output; // the output name instead of the usual one; for one file
};

// Generates the C file of each file, runs the compiler's batch file and prints its output, with the positions mapped to
// members. In front stands what Lint finds and compilers hide. One file has the C file of the settings. Of several each
// has one of its own beside that, if the batch file heeds TESSALY_C_FILE, as the kit's do; else they take turns. Their
// output comes in the order of the files. Returns the compiler's exit status, or that of what went wrong before: the
// load's, the generation's, CompilerMissing, WrongUsage; of several that of the first that failed.
int Build(Session& session, const std::vector<std::string>& files, const BuildOptions& options);

} // namespace tessaly::psf
