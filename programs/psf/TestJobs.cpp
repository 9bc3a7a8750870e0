// A program that tests its block by a script tells by its exit status and on standard error what it found.
#include "programs/psf/TestJobs.h"

#include "diagnostics/RewriteMessages.h"
#include "platform/system/Environment.h"
#include "platform/text/Ascii.h"
#include "programs/psf/base/Printable.h"

#include <algorithm>
#include <cstdio>

namespace tessaly::psf {

namespace {

using Outcome = CaseResult::Outcome;

// The statuses of a program that runs a script strictly.
constexpr int VerdictFailed = 3;
constexpr int WrongLine = 65;

// More than this a program prints only without end.
constexpr std::size_t MostOutput = std::size_t{16} << 20U;

std::string Quotes(const std::string& argument) {
    return " \"" + argument + "\"";
}

std::string_view TakeLineOf(std::string_view& text) {
    const std::string_view line = TakeLine(text);
    return line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
}

// Appends a line to others.
void AddLine(std::string& lines, std::string_view line) {
    lines.append(lines.empty() ? "" : "\n").append(line);
}

// Positions in the C file in terms of members, as psf map has them.
std::string Mapped(const BuildMap& map, const std::string& file, std::string_view text) {
    MessageRewriter rewriter(map, Printable(file), MessageRewriter::Inside::Anywhere);
    std::string mapped;
    while (!text.empty()) {
        rewriter.Rewrite(TakeLineOf(text), mapped);
        mapped += '\n';
    }
    return mapped;
}

// Where the first error of a compiler is.
std::string PlaceOfError(std::string_view messages) {
    while (!messages.empty()) {
        const std::string_view line = TakeLineOf(messages);
        const std::size_t end = std::min(line.find(": error: "), line.find(": fatal error: "));
        if (end != std::string_view::npos) {
            return std::string(line.substr(0, end));
        }
    }
    return "";
}

// A line that is too long to be shown, around the place that matters.
std::string Excerpt(std::string_view line, std::size_t place) {
    constexpr std::size_t most = 200;
    constexpr std::size_t before = 60;
    if (line.size() <= most) {
        return std::string(line);
    }
    const std::size_t begin = place > before ? place - before : 0;
    return (begin > 0 ? "[...]" : "") + std::string(line.substr(begin, most)) +
           (line.size() > begin + most ? "[...]" : "");
}

} // namespace

bool TestBuildJob::Start(bool mayWait) {
    return (mBlock.before == nullptr || mBlock.before->IsOver()) && mBlock.build.Start(mayWait);
}

bool TestBuildJob::HasEnded() {
    mBlock.isBuilt = mBlock.build.HasEnded();
    return mBlock.isBuilt;
}

// The cases say what went wrong.
int TestBuildJob::Tell() {
    if (mBlock.build.ExitStatus() == Success) {
        Print(TapComment(mBlock.build.Messages()));
    }
    return Success;
}

CaseJob::CaseJob(Session& session, TestBlock& block, TestCase what, const TestOptions& options, TestTally& tally)
    : mSession(session),
      mBlock(block),
      mCase(std::move(what)),
      mOptions(options),
      mTally(tally) {
    mResult.block = block.build.File();
    mResult.script = mCase.script;
    ++block.left;
}

// A path without a folder would be looked for in those of other programs, and one with a dash be taken for an option.
std::string CaseJob::CommandLine() const {
    std::string line = Quotes(FullPath(mBlock.build.Output())).substr(1) + " --strict";
    for (const std::string& channel : mOptions.channels) {
        line += " --channel" + Quotes(channel);
    }
    return line + Quotes(mCase.script.starts_with('-') ? "./" + mCase.script : mCase.script);
}

bool CaseJob::Start(bool /*mayWait*/) {
    if (!mBlock.isBuilt) {
        return false;
    }
    const BuildJob& build = mBlock.build;
    mBegin = Clock::now();
    if (!build.Error().empty()) {
        Fail(Outcome::NotRun, build.Error());
    } else if (build.ExitStatus() != Success) {
        Fail(Outcome::NotRun, "the program block does not build: exit status " + std::to_string(build.ExitStatus()));
        mResult.place = PlaceOfError(build.Messages());
        mResult.messages = build.Messages();
    } else if (mCase.script.find('"') != std::string::npos) {
        Fail(Outcome::NotRun, "the command line cannot carry a path with a double quote");
    } else {
        mProgram = std::make_unique<RunningProcess>(
            CommandLine(), [this](std::string_view piece) { mResult.output += piece; },
            [this](std::string_view piece) { mResult.errors += piece; });
        return true;
    }
    mBlock.Ended();
    return true;
}

bool CaseJob::HasEnded() {
    if (!mProgram) {
        return true;
    }
    const bool hasEnded = mProgram->HasEnded();
    mResult.seconds = std::chrono::duration<double>(Clock::now() - mBegin).count();
    const bool isTooMuch = std::max(mResult.output.size(), mResult.errors.size()) > MostOutput;
    if (!hasEnded && !isTooMuch && mResult.seconds < mOptions.timeout) {
        return false;
    }
    if (hasEnded) {
        Judge(mProgram->Result());
    } else if (isTooMuch) {
        Fail(Outcome::Failed, "ended after it had printed " + std::to_string(MostOutput >> 20U) + " MiB");
    } else {
        char seconds[40];
        std::snprintf(seconds, sizeof seconds, "%g", mOptions.timeout);
        Fail(Outcome::Failed, "ended after " + std::string(seconds) + " seconds");
    }
    mProgram.reset();
    mResult.errors = Mapped(mBlock.build.Map(), mBlock.build.File(), mResult.errors);
    mBlock.Ended();
    return true;
}

void CaseJob::Fail(Outcome outcome, std::string message) {
    mResult.outcome = outcome;
    mResult.message = std::move(message);
}

void CaseJob::Judge(const ProcessResult& ended) {
    if (!ended.Started()) {
        Fail(Outcome::NotRun, "the program cannot be started: " + Reason(ended.startError));
    } else if (ended.exitStatus == VerdictFailed && ReadMessages("failed: ")) {
        mResult.outcome = Outcome::Failed;
    } else if (ended.exitStatus == WrongLine && ReadMessages("")) {
        mResult.outcome = Outcome::NotRun;
    } else if (ended.exitStatus != Success) {
        Fail(Outcome::Failed, "ended with status " + std::to_string(static_cast<unsigned>(ended.exitStatus)));
    } else if (!mCase.expected.empty()) {
        Compare();
    }
}

// Finds "SCRIPT:LINE: MARK..." on standard error; lines with blanks in front belong to it. False without one.
bool CaseJob::ReadMessages(std::string_view mark) {
    std::string_view rest = mResult.errors;
    while (!rest.empty() && mResult.message.empty()) {
        const std::string_view line = TakeLineOf(rest);
        const std::size_t front = line.find(mCase.script + ":");
        const std::size_t end = front == std::string_view::npos ? front : line.find(": ", front + mCase.script.size());
        if (end != std::string_view::npos && line.substr(end + 2).starts_with(mark)) {
            mResult.place = line.substr(front, end - front);
            mResult.message = line.substr(end + 2 + mark.size());
        }
    }
    while (!mResult.message.empty() && rest.starts_with(' ')) {
        std::string_view line = TakeLineOf(rest);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        constexpr std::string_view expected = "expected: ";
        constexpr std::string_view got = "got: ";
        if (line.starts_with(expected)) {
            AddLine(mResult.expected, line.substr(expected.size()));
        } else if (line.starts_with(got)) {
            AddLine(mResult.got, line.substr(got.size()));
        } else {
            AddLine(mResult.message, line);
        }
    }
    return !mResult.message.empty();
}

// Line by line: a CR in front of a line's end does not count, nor a line end behind the last one.
void CaseJob::Compare() {
    std::string bytes;
    try {
        bytes = ReadWhole(mSession.files, mCase.expected);
    } catch (const std::system_error& error) {
        Fail(Outcome::NotRun, mCase.expected + ": " + Reason(error.code()));
        return;
    }
    std::string_view expected = bytes;
    std::string_view got = mResult.output;
    for (std::size_t number = 1; !expected.empty() || !got.empty(); ++number) {
        const bool hasExpected = !expected.empty();
        const bool hasGot = !got.empty();
        const std::string_view one = TakeLineOf(expected);
        const std::string_view other = TakeLineOf(got);
        if (hasExpected == hasGot && one == other) {
            continue;
        }
        const auto place = static_cast<std::size_t>(
            std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first - one.begin());
        Fail(Outcome::Failed, "the output differs from " + mCase.expected);
        mResult.place = mCase.expected + ":" + std::to_string(number);
        mResult.expected = hasExpected ? Excerpt(one, place) : "[the end]";
        mResult.got = hasGot ? Excerpt(other, place) : "[the end]";
        if (CleanText(mResult.expected) == CleanText(mResult.got)) {
            mResult.message += " in characters that cannot be shown";
        }
        return;
    }
}

int CaseJob::Tell() {
    Print(TapCase(++mTally.told, mResult));
    if (mTally.junit) {
        mTally.junit->Add(mResult);
    }
    return mResult.outcome == Outcome::Passed ? Success : CaseFailed;
}

} // namespace tessaly::psf
