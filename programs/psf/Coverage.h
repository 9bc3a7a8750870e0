// Which lines of the members the cases of psf test ran: counted by the compiler's gcov, led back as messages are.
#pragma once

#include "programs/psf/TestJobs.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tessaly::psf {

// How often each line of a member's text ran, by its number; lines without code are not in it.
struct MemberCoverage {
    std::string member;
    std::map<std::size_t, std::uint64_t> lines;
};

// All that is known, as Cobertura's XML.
class CoverageReport {
public:
    explicit CoverageReport(Session& session) : mSession(session) {}

    // Adds the block in `file`, whose lines are those of the file then.
    void Add(const std::string& file, const std::vector<MemberCoverage>& members);

    std::string Document() const;

    SequentialFiles& Files() const { return mSession.files; }

private:
    Session& mSession;
    std::string mPackages;
    std::size_t mLines = 0;
    std::size_t mCovered = 0;
};

// The last step of a block: asks gcov once all cases have ended.
class CoverageJob final : public Job {
public:
    CoverageJob(TestBlock& block, CoverageReport& report) : mBlock(block), mReport(report) { ++block.left; }

    bool Start(bool mayWait) override;
    RunningProcess* Process() override { return mGcov.get(); }
    bool HasEnded() override;

    // Says what ran as comments.
    int Tell() override;

private:
    void Read();

    TestBlock& mBlock;
    CoverageReport& mReport;
    std::unique_ptr<RunningProcess> mGcov;
    std::string mPrinted;
    std::string mErrors;
    std::string mProblem;
    std::vector<MemberCoverage> mMembers;
};

} // namespace tessaly::psf
