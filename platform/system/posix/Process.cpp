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
#include <sys/syscall.h>
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
            ::kill(-mProcess, SIGKILL); // its group: what it has started goes, too
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
    // Neither of the two is 0, 1 or 2: a duplicate would take the place of the other.
    SpawnPlan(int output, int errors) {
        Check(posix_spawn_file_actions_init(&mActions));
        Check(posix_spawnattr_init(&mAttributes));
        Check(posix_spawn_file_actions_adddup2(&mActions, output, STDOUT_FILENO));
        Check(posix_spawn_file_actions_adddup2(&mActions, errors, STDERR_FILENO));
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

// Whether something can be read now, the end included.
bool HasOutput(int pipe) {
    pollfd entry = {pipe, POLLIN, 0};
    const int count = ::poll(&entry, 1, 0);
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

// A child and the pipes with what it prints.
class PipedChild {
public:
    // Why it could not be started, or none. Without `onErrors` both outputs go to `onOutput`.
    std::error_code Start(const std::vector<std::string>& arguments, std::function<void(std::string_view)> onOutput,
                          std::function<void(std::string_view)> onErrors) {
        if (!CanStart(arguments)) {
            return Error(EINVAL);
        }
        const bool isOnePipe = !onErrors;
        const Descriptor output = AddOutlet(std::move(onOutput));
        const Descriptor errors = isOnePipe ? Descriptor() : AddOutlet(std::move(onErrors));
        if (output.Number() < 0 || (!isOnePipe && errors.Number() < 0)) {
            return Error(errno);
        }
        const InterruptsHeld held; // until it is known whom they concern
        pid_t process = 0;
        const int error = SpawnPlan(output.Number(), (isOnePipe ? output : errors).Number()).Start(arguments, process);
        if (error == 0) {
            mChild.emplace(process);
            mEnd = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
        }
        return Error(error);
    }

    // Whether it has ended and all that it printed is passed on.
    bool HasEnded() {
        if (!mChild) {
            return true;
        }
        const bool hasEnded = mChild->HasEnded(WNOHANG); // asked first: what it printed before that is in the pipes
        for (Outlet& outlet : mOutlets) {
            if (outlet.isOpen && hasEnded) {
                Drain(outlet.pipe.Number(), outlet.onPiece);
            } else if (outlet.isOpen && HasOutput(outlet.pipe.Number())) {
                outlet.isOpen = ReadPiece(outlet.pipe.Number(), PIPE_BUF * 4, outlet.onPiece) > 0;
            }
        }
        if (hasEnded) {
            mExitStatus = mChild->ExitStatus();
            mChild.reset();
        }
        return hasEnded;
    }

    int ExitStatus() const { return mExitStatus; }

    // Adds what is to be watched, and returns how many milliseconds the child may go without being asked.
    int Watch(std::vector<pollfd>& entries) {
        if (!mChild) {
            return 0;
        }
        for (const Outlet& outlet : mOutlets) {
            if (outlet.isOpen) {
                entries.push_back({outlet.pipe.Number(), POLLIN, 0});
            }
        }
        entries.push_back({mEnd.Number(), POLLIN, 0}); // poll passes over one that an old kernel did not give
        return SilenceInMilliseconds;
    }

    static void WaitForAny(const std::vector<PipedChild*>& children) {
        std::vector<pollfd> entries;
        int patience = SilenceInMilliseconds;
        for (PipedChild* child : children) {
            patience = std::min(patience, child->Watch(entries));
        }
        if (::poll(entries.data(), entries.size(), patience) < 0 && errno != EINTR) {
            ThrowSystemError("poll");
        }
    }

private:
    // The end of a pipe that is read from, and who gets it.
    struct Outlet {
        Descriptor pipe;
        std::function<void(std::string_view)> onPiece;
        bool isOpen = true; // somebody may still write there
    };

    // The end for the child, or none. It never has the number of a standard stream, whose place another may need.
    Descriptor AddOutlet(std::function<void(std::string_view)> onPiece) {
        std::array<int, 2> ends = {-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            return Descriptor();
        }
        mOutlets.push_back({Descriptor(ends[0]), std::move(onPiece)});
        Descriptor end(ends[1]);
        return ends[1] > STDERR_FILENO ? std::move(end)
                                       : Descriptor(::fcntl(ends[1], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }

    std::vector<Outlet> mOutlets;
    std::optional<Child> mChild;
    int mExitStatus = 0;
    Descriptor mEnd; // can be read when it has ended
};

ProcessResult RunProcess(const std::vector<std::string>& arguments,
                         const std::function<void(std::string_view)>& onOutput) {
    PipedChild child;
    if (const std::error_code error = child.Start(arguments, onOutput, {})) {
        return {error, 0};
    }
    while (!child.HasEnded()) {
        PipedChild::WaitForAny({&child});
    }
    return {{}, child.ExitStatus()};
}

} // namespace posix

ProcessResult RunProcess(const std::string& commandLine, const std::function<void(std::string_view)>& onOutput) {
    return posix::RunProcess(posix::SplitCommandLine(commandLine, posix::IsRegularFile), onOutput);
}

struct RunningProcess::State {
    posix::PipedChild child;
    ProcessResult result;
};

RunningProcess::RunningProcess(const std::string& commandLine, std::function<void(std::string_view)> onOutput,
                               std::function<void(std::string_view)> onErrors)
    : mState(std::make_unique<State>()) {
    mState->result.startError = mState->child.Start(posix::SplitCommandLine(commandLine, posix::IsRegularFile),
                                                    std::move(onOutput), std::move(onErrors));
}

RunningProcess::~RunningProcess() = default;

bool RunningProcess::HasEnded() {
    const bool hasEnded = mState->child.HasEnded();
    mState->result.exitStatus = mState->child.ExitStatus();
    return hasEnded;
}

void RunningProcess::WaitForAny(const std::vector<RunningProcess*>& processes) {
    std::vector<posix::PipedChild*> children;
    for (const RunningProcess* process : processes) {
        children.push_back(&process->mState->child);
    }
    posix::PipedChild::WaitForAny(children);
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
