// Two forks: the process in the middle is waited for at once, and whoever adopts the other one collects it. Failures
// behind the forks come back through a pipe, which a successful start closes.
#include "platform/system/posix/Descriptor.h"
#include "platform/system/posix/Process.h"
#include "platform/text/Ascii.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <linux/close_range.h>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tessaly::posix {

namespace {

[[noreturn]] void Throw(int error, const char* what) {
    throw std::system_error(error, std::generic_category(), what);
}

int Opened(int number) {
    if (number < 0) {
        Throw(errno, "open");
    }
    return number;
}

int OpenOutput(const std::string& path) {
    if (path.empty()) {
        return ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    }
    ::unlink(path.c_str()); // an earlier process may still be writing
    constexpr mode_t ownerOnly = 0600;
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, ownerOnly);
}

// Where the program called `name` is. Not left to execvp, which hands a file that is no program to a shell.
std::string FindProgram(const std::string& name) {
    if (name.find('/') != std::string::npos) {
        return name;
    }
    const char* const variable = std::getenv("PATH");
    std::string_view rest = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    while (!rest.empty()) {
        const std::string_view folder = TakeLine(rest, ':');
        std::string path = std::string(folder) + "/" + name;
        if (!folder.empty() && IsRegularFile(path) && ::access(path.c_str(), X_OK) == 0) {
            return path;
        }
    }
    Throw(ENOENT, name.c_str());
}

// The rest of the process that becomes the program. Nothing here may allocate: other threads of the program that was
// forked, whose locks nobody will release, are gone.
[[noreturn]] void BecomeProgram(const char* program, char* const* arguments, int input, int output, int report) {
    struct sigaction normal = {};
    normal.sa_handler = SIG_DFL;
    ::sigaction(SIGPIPE, &normal, nullptr);
    ::sigaction(SIGCHLD, &normal, nullptr);
    ::sigaction(SIGXFSZ, &normal, nullptr);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execv(program, arguments);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(report, &error, sizeof error);
    ::_exit(127);
}

// What came back through the pipe: 0, or the errno of the start. That of the pipe when nobody can know.
int ReadReport(int pipe) {
    int error = 0;
    ssize_t count = -1;
    do {
        count = ::read(pipe, &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    return count < 0 ? errno : error;
}

} // namespace

void StartDetached(const std::vector<std::string>& arguments, const std::string& outputPath) {
    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    for (std::string& argument : copies) {
        if (argument.find('\0') != std::string::npos) {
            Throw(EINVAL, "start");
        }
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    if (arguments.empty() || arguments.front().empty()) {
        Throw(EINVAL, "start");
    }
    const std::string program = FindProgram(arguments.front());
    const Descriptor input(Opened(::open("/dev/null", O_RDONLY | O_CLOEXEC)));
    const Descriptor output(Opened(OpenOutput(outputPath)));
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        Throw(errno, "pipe");
    }
    const Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    const pid_t middle = ::fork();
    if (middle < 0) {
        Throw(errno, "fork");
    }
    if (middle == 0) {
        ::setsid();
        const pid_t last = ::fork();
        if (last == 0) {
            BecomeProgram(program.c_str(), pointers.data(), input.Number(), output.Number(), writeEnd.Number());
        }
        const int error = errno;
        if (last < 0) {
            [[maybe_unused]] const ssize_t written = ::write(writeEnd.Number(), &error, sizeof error);
        }
        ::_exit(0);
    }
    writeEnd.Close();
    int status = 0;
    while (::waitpid(middle, &status, 0) < 0 && errno == EINTR) {
    }
    if (const int error = ReadReport(readEnd.Number()); error != 0) {
        Throw(error, arguments.front().c_str());
    }
}

} // namespace tessaly::posix

void tessaly::StartProcess(const std::string& commandLine, std::int32_t /*windowStyle*/,
                           const std::string& outputPath) {
    posix::StartDetached(posix::SplitCommandLine(commandLine, posix::IsRegularFile), outputPath);
}
