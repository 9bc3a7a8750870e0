// One file on its way through the compiler. What is to be said of it waits until its turn.
#pragma once

#include "diagnostics/BuildMap.h"
#include "platform/system/FileLock.h"
#include "programs/psf/base/Jobs.h"
#include "programs/psf/base/Session.h"

#include <memory>
#include <string>

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

} // namespace tessaly::psf
