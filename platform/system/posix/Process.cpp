// posix_spawn and one pipe. The end of the pipe is no sign of the end of the process, nor the other way round:
// both are watched.
#include "platform/system/posix/Process.h"

#include "platform/system/posix/Descriptor.h"
#include "platform/system/posix/Interrupts.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessaly {

namespace posix {

// A process that was started and becomes no zombie: one that nobody waited for is killed.
class Child {
public:
    explicit Child(pid_t process) : mProcess(process), mEndedOnInterrupt(process) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (!mEnded) {
            ::kill(mProcess, SIGKILL);
            int status = 0;
            while (::waitpid(mProcess, &status, 0) < 0 && errno == EINTR) {
            }
        }
    }

    // Whether it has ended. Waits for that when `flags` is 0, not at all when it is WNOHANG.
    bool HasEnded(int flags) {
        int status = 0;
        while (!mEnded) {
            const pid_t ended = ::waitpid(mProcess, &status, flags);
            if (ended == mProcess) {
                mStatus = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
                mEnded = true;
            } else if (ended == 0) {
                return false;
            } else if (errno != EINTR) {
                const int error = errno;
                mEnded = true; // it is gone: nothing is left to kill
                throw std::system_error(error, std::generic_category(), "waitpid");
            }
        }
        return true;
    }

    int ExitStatus() const { return mStatus; }

private:
    pid_t mProcess;
    EndedOnInterrupt mEndedOnInterrupt;
    bool mEnded = false;
    int mStatus = 0;
};

namespace {

constexpr std::string_view Blanks = " \t";

// How long the pipe may be silent before the process is asked whether it still lives.
constexpr int SilenceInMilliseconds = 50;

std::error_code Error(int number) {
    return {number, std::generic_category()};
}

// What a child does between its birth and its program.
class SpawnPlan {
public:
    // Both outputs go into `output`. The duplicates come first: `output` may be descriptor 0 itself.
    explicit SpawnPlan(int output) {
        Check(posix_spawn_file_actions_init(&mActions));
        Check(posix_spawnattr_init(&mAttributes));
        Check(posix_spawn_file_actions_adddup2(&mActions, output, STDOUT_FILENO));
        Check(posix_spawn_file_actions_adddup2(&mActions, output, STDERR_FILENO));
        Check(posix_spawn_file_actions_addopen(&mActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        ResetSignals();
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawnattr_destroy(&mAttributes);
        posix_spawn_file_actions_destroy(&mActions);
    }

    // 0, or errno.
    int Start(const std::vector<std::string>& arguments, pid_t& process) const {
        std::vector<std::string> copies = arguments;
        std::vector<char*> pointers;
        for (std::string& argument : copies) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        return posix_spawnp(&process, pointers[0], &mActions, &mAttributes, pointers.data(), environ);
    }

private:
    // They fail only without memory.
    static void Check(int error) {
        if (error != 0) {
            throw std::system_error(error, std::generic_category(), "posix_spawn");
        }
    }

    // Which signals a program or a window system blocks or ignores is none of the child's business.
    void ResetSignals() {
        sigset_t none;
        sigset_t ignored;
        sigemptyset(&none);
        sigemptyset(&ignored);
        sigaddset(&ignored, SIGPIPE);
        sigaddset(&ignored, SIGXFSZ);
        Check(posix_spawnattr_setsigmask(&mAttributes, &none));
        Check(posix_spawnattr_setsigdefault(&mAttributes, &ignored));
        constexpr short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP;
        Check(posix_spawnattr_setflags(&mAttributes, flags)); // a group of its own, for what it starts in turn
    }

    posix_spawn_file_actions_t mActions = {};
    posix_spawnattr_t mAttributes = {};
};

// Reads once, at most `size` bytes, and passes on what came. 0 at the end.
std::size_t ReadPiece(int pipe, std::size_t size, const std::function<void(std::string_view)>& onOutput) {
    std::array<char, 16384> buffer;
    ssize_t count = -1;
    do {
        count = ::read(pipe, buffer.data(), std::min(size, buffer.size()));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        ThrowSystemError("read");
    }
    const auto length = static_cast<std::size_t>(count);
    if (length > 0) {
        onOutput({buffer.data(), length});
    }
    return length;
}

// Whether something can be read, the end included, before the time is over.
bool WaitForOutput(int pipe, int milliseconds) {
    pollfd entry = {pipe, POLLIN, 0};
    const int count = ::poll(&entry, 1, milliseconds);
    if (count < 0 && errno != EINTR) {
        ThrowSystemError("poll");
    }
    return count > 0;
}

// Passes on what is in the pipe now. More may come without end, from a process that the child left behind.
void Drain(int pipe, const std::function<void(std::string_view)>& onOutput) {
    int available = 0;
    if (::ioctl(pipe, FIONREAD, &available) != 0) {
        ThrowSystemError("ioctl");
    }
    auto left = static_cast<std::size_t>(available);
    while (left > 0) {
        const std::size_t count = ReadPiece(pipe, left, onOutput);
        left = count > 0 ? left - count : 0;
    }
}

// One step of following: whether the process has ended and all that it printed is passed on.
bool Follow(Child& child, int pipe, const std::function<void(std::string_view)>& onOutput, int patience) {
    if (!child.HasEnded(WNOHANG)) {
        if (WaitForOutput(pipe, patience) && ReadPiece(pipe, PIPE_BUF * 4, onOutput) == 0) {
            child.HasEnded(0);
        } else {
            return false;
        }
    }
    Drain(pipe, onOutput);
    return true;
}

bool CanStart(const std::vector<std::string>& arguments) {
    return !arguments.empty() && std::all_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.find('\0') == std::string::npos;
    });
}

// The length of the program at the front of `line`, which may contain blanks, or 0.
std::size_t ProgramLength(std::string_view line, const std::function<bool(const std::string&)>& isFile) {
    const std::size_t limit = std::min({line.find('"'), line.size(), std::size_t{PATH_MAX}});
    for (std::size_t end = 1; end <= limit; ++end) {
        const bool candidate = end == line.size() || line[end] == '"' || Blanks.find(line[end]) != Blanks.npos;
        const bool blankAtEnd = Blanks.find(line[end - 1]) != Blanks.npos;
        if (candidate && !blankAtEnd && isFile(std::string(line.substr(0, end)))) {
            return end;
        }
    }
    return 0;
}

} // namespace

std::vector<std::string> SplitCommandLine(std::string_view line,
                                          const std::function<bool(const std::string&)>& isFile) {
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    const std::size_t programLength = ProgramLength(line, isFile);
    std::vector<std::string> arguments;
    if (programLength > 0) {
        arguments.emplace_back(line.substr(0, programLength));
    }
    bool inArgument = false;
    bool inQuotes = false;
    for (const char character : line.substr(programLength)) {
        if (!inQuotes && Blanks.find(character) != Blanks.npos) {
            inArgument = false;
            continue;
        }
        if (!inArgument) {
            arguments.emplace_back();
            inArgument = true;
        }
        if (character == '"') {
            inQuotes = !inQuotes;
        } else {
            arguments.back() += character;
        }
    }
    return arguments;
}

std::string CommandLine(int count, char** arguments) {
    std::string line;
    for (int i = 1; i < count; ++i) {
        line += (i > 1 ? " " : "") + std::string(arguments[i]);
    }
    return line;
}

bool IsRegularFile(const std::string& path) {
    struct stat status = {};
    return path.find('\0') == std::string::npos && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

namespace {

// Starts a process; `pipe` is the end from which what it prints is read. Its start error, or none.
std::error_code StartPiped(const std::vector<std::string>& arguments, std::optional<Child>& child, Descriptor& pipe) {
    if (!CanStart(arguments)) {
        return Error(EINVAL);
    }
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return Error(errno);
    }
    pipe.Take(ends[0]);
    const Descriptor writeEnd(ends[1]);
    const InterruptsHeld held; // until it is known whom they concern
    pid_t process = 0;
    const int error = SpawnPlan(writeEnd.Number()).Start(arguments, process);
    if (error == 0) {
        child.emplace(process);
    }
    return Error(error);
}

} // namespace

ProcessResult RunProcess(const std::vector<std::string>& arguments,
                         const std::function<void(std::string_view)>& onOutput) {
    std::optional<Child> child;
    Descriptor pipe;
    if (const std::error_code error = StartPiped(arguments, child, pipe)) {
        return {error, 0};
    }
    while (!Follow(*child, pipe.Number(), onOutput, SilenceInMilliseconds)) {
    }
    return {{}, child->ExitStatus()};
}

} // namespace posix

ProcessResult RunProcess(const std::string& commandLine, const std::function<void(std::string_view)>& onOutput) {
    return posix::RunProcess(posix::SplitCommandLine(commandLine, posix::IsRegularFile), onOutput);
}

struct RunningProcess::State {
    std::function<void(std::string_view)> onOutput;
    posix::Descriptor pipe;
    std::optional<posix::Child> child;
    ProcessResult result;
};

RunningProcess::RunningProcess(const std::string& commandLine, std::function<void(std::string_view)> onOutput)
    : mState(std::make_unique<State>()) {
    mState->onOutput = std::move(onOutput);
    mState->result.startError =
        posix::StartPiped(posix::SplitCommandLine(commandLine, posix::IsRegularFile), mState->child, mState->pipe);
}

RunningProcess::~RunningProcess() = default;

bool RunningProcess::HasEnded(int patience) {
    if (!mState->child) {
        return true;
    }
    if (!posix::Follow(*mState->child, mState->pipe.Number(), mState->onOutput, patience)) {
        return false;
    }
    mState->result.exitStatus = mState->child->ExitStatus();
    mState->child.reset();
    return true;
}

const ProcessResult& RunningProcess::Result() const {
    return mState->result;
}

bool CarriesArgument(const std::string& commandLine, const std::string& argument) {
    const auto arguments = posix::SplitCommandLine(commandLine, posix::IsRegularFile);
    return arguments.size() > 1 && arguments.back() == argument;
}

std::string_view UncarriedCharacters() {
    return "a double quote";
}

} // namespace tessaly
