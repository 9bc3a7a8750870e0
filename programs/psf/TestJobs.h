// The steps of a test as jobs: a build, then its cases.
#pragma once

#include "programs/psf/BuildJob.h"
#include "programs/psf/Test.h"
#include "programs/psf/TestCases.h"
#include "programs/psf/TestReport.h"

#include <chrono>
#include <memory>
#include <optional>

namespace tessaly::psf {

// What has been told so far.
struct TestTally {
    std::size_t told = 0;
    std::optional<JUnitReport> junit;
};

// A program block under test. It keeps the turn with its C file until its last case has ended, so that nobody makes
// another program in the place of this one.
struct TestBlock {
    TestBlock(Session& session, const std::string& file, const std::string& output, const BuildPlan& plan)
        : build(session, file, output, plan) {}

    BuildJob build;
    bool isBuilt = false;        // or could not be
    std::size_t left = 0;        // cases that have not ended
    TestBlock* before = nullptr; // the last one whose program has the same name

    bool IsOver() const { return isBuilt && left == 0; }
    void Ended() {
        if (--left == 0) {
            build.Release();
        }
    }
};

class TestBuildJob final : public Job {
public:
    explicit TestBuildJob(TestBlock& block) : mBlock(block) {}

    bool Start(bool mayWait) override;
    RunningProcess* Process() override { return mBlock.build.Process(); }
    bool HasEnded() override;
    int Tell() override;

private:
    TestBlock& mBlock;
};

class CaseJob final : public Job {
public:
    CaseJob(Session& session, TestBlock& block, TestCase what, const TestOptions& options, TestTally& tally);

    bool Start(bool mayWait) override;
    RunningProcess* Process() override { return mProgram.get(); }
    bool HasEnded() override;
    int Tell() override;

private:
    using Clock = std::chrono::steady_clock;

    std::string CommandLine() const;
    void Fail(CaseResult::Outcome outcome, std::string message);
    void Judge(const ProcessResult& ended);
    bool ReadMessages(std::string_view mark);
    void Compare();

    Session& mSession;
    TestBlock& mBlock;
    TestCase mCase;
    const TestOptions& mOptions;
    TestTally& mTally;
    std::unique_ptr<RunningProcess> mProgram;
    Clock::time_point mBegin;
    CaseResult mResult;
};

} // namespace tessaly::psf
