// Other programs, started by their one command line.
// Windows takes it as CreateProcess does, batch files included. On Unix it is split without a shell: nothing in it but
// blanks and double quotes has a meaning.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tessaly {

// Starts a process and does not wait for it; it goes on when this program ends and inherits nothing. On Windows it
// shows its first window in `windowStyle`. On Unix it has no window: its output goes to the file `outputPath`, which is
// made anew, or nowhere with "". Throws std::system_error when it cannot be started or the file cannot be made.
void StartProcess(const std::string& commandLine, std::int32_t windowStyle, const std::string& outputPath = "");

// How a process ended.
struct ProcessResult {
    std::error_code startError; // why it could not be started
    int exitStatus = 0;         // Windows: also after a crash; Unix: 128 + the number of the signal that killed it

    bool Started() const { return !startError; }
};

// Runs a command line and waits until its process ends. Its standard input is empty; what it writes to standard output
// and standard error goes to `onOutput`, in the order written and piece by piece as it arrives; a piece ends anywhere,
// also inside a line or a character.
//
// Only the process itself is waited for. One that it leaves behind, and that still holds its output open, loses what it
// writes later; on Unix it gets SIGPIPE for it.
//
// What `onOutput` throws is passed on, and the process killed. Throws std::system_error when its output cannot be read,
// or on Unix when this process ignores SIGCHLD and so cannot wait.
ProcessResult RunProcess(const std::string& commandLine, const std::function<void(std::string_view)>& onOutput);

// A process as RunProcess runs one, beside others. One that has not ended is killed with this, and all that it started
// with it; on Unix that is its process group.
class RunningProcess {
public:
    // Starts it. That it cannot be started is the result of one that has ended. With `onErrors`, that gets what goes to
    // standard error.
    RunningProcess(const std::string& commandLine, std::function<void(std::string_view)> onOutput,
                   std::function<void(std::string_view)> onErrors = {});
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;
    ~RunningProcess();

    // Passes on what it has printed, without waiting for more. True once it has ended and all is passed on. Throws as
    // RunProcess does.
    bool HasEnded();

    // Waits until one of `processes` may have printed something or ended, and 50 milliseconds at most.
    static void WaitForAny(const std::vector<RunningProcess*>& processes);

    // How it ended.
    const ProcessResult& Result() const;

private:
    struct State;
    std::unique_ptr<State> mState;
};

// Whether `commandLine` hands `argument`, which it ends with in double quotes, to its program as it stands.
bool CarriesArgument(const std::string& commandLine, const std::string& argument);

// What an argument must not have for that, in words.
std::string_view UncarriedCharacters();

} // namespace tessaly
