// All cases are known before the first is run, so the plan stands in front.
#include "programs/psf/Test.h"

#include "app/CompilerCommand.h"
#include "programs/psf/Coverage.h"
#include "programs/psf/TestJobs.h"
#include "programs/psf/base/Saving.h"

#include <map>

namespace tessaly::psf {

namespace {

// The blocks that have cases.
class TestBlocks {
public:
    TestBlocks(Session& session, const std::vector<std::string>& files, const TestOptions& options, TestTally& tally,
               CoverageReport& coverage)
        : mPlan(PlanForMany(session.files)) {
        mPlan.keepsTurn = true;
        mPlan.coverage = options.coverage.has_value();
        TestCases cases;
        for (const std::string& file : files) {
            std::vector<TestCase> found = cases.Of(file);
            if (found.empty()) {
                mStatus = session.files.FileExists(file) ? mStatus : MissingFile(file);
                continue;
            }
            TestBlock& block = Add(session, file);
            mJobs.push_back(std::make_unique<TestBuildJob>(block));
            for (TestCase& each : found) {
                mJobs.push_back(std::make_unique<CaseJob>(session, block, std::move(each), options, tally));
            }
            if (options.coverage) {
                mJobs.push_back(std::make_unique<CoverageJob>(block, coverage));
            }
            mCount += found.size();
        }
    }

    std::size_t CaseCount() const { return mCount; }

    int Run(std::size_t jobs) {
        const int status = RunJobs(std::move(mJobs), mPlan.ownCFiles ? jobs : 1);
        return status == Success ? mStatus : status;
    }

private:
    static int MissingFile(const std::string& file) {
        PrintError(file + ": " + Reason(std::make_error_code(std::errc::no_such_file_or_directory)));
        return ExitStatus(Status::LoadFailed);
    }

    TestBlock& Add(Session& session, const std::string& file) {
        const std::string output = OutputName(file);
        mBlocks.push_back(std::make_unique<TestBlock>(session, file, output, mPlan));
        TestBlock*& last = mLast[output];
        mBlocks.back()->before = std::exchange(last, mBlocks.back().get());
        return *mBlocks.back();
    }

    BuildPlan mPlan;
    std::vector<std::unique_ptr<TestBlock>> mBlocks;
    std::map<std::string, TestBlock*> mLast; // by their programs
    std::vector<std::unique_ptr<Job>> mJobs;
    std::size_t mCount = 0;
    int mStatus = Success;
};

} // namespace

int Test(Session& session, const std::vector<std::string>& files, const TestOptions& options) {
    TestTally tally;
    if (options.junit) {
        tally.junit.emplace();
    }
    CoverageReport coverage(session);
    TestBlocks blocks(session, files, options, tally, coverage);
    Print("TAP version 14\n1.." + std::to_string(blocks.CaseCount()) + "\n");
    int status = blocks.Run(options.jobs);
    if (blocks.CaseCount() == 0) {
        PrintError("test: there is no case: no NAME.events or NAME.CASE.events beside NAME.PSF");
        status = ExitStatus(Status::NotFound);
    }
    const auto save = [&](const std::string& document, const std::string& file) {
        const int saved = SaveBytes(session, document, file);
        status = status == Success ? saved : status;
    };
    if (tally.junit) {
        save(tally.junit->Document(), *options.junit);
    }
    if (options.coverage && *options.coverage != NoFile) {
        save(coverage.Document(), *options.coverage);
    }
    return status;
}

} // namespace tessaly::psf
