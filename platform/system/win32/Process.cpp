// The end of the pipe does not mean the end of the process, nor the other way round. Windows cannot wait for both, so
// the pipe is looked into again and again.
#include "platform/system/Process.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace tessaly {

using win32::Handle;
using win32::LastError;
using win32::ThrowLastError;

namespace win32 {

// What is in it ends with this process, however that ends, unless it was let go. Where the system has none it does
// nothing.
class Job {
public:
    Job() : mJob(CreateJobObjectW(nullptr, nullptr)) { SetLimit(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE); }

    HANDLE Get() const { return mJob.Get(); }

    // What is still in it goes on.
    void LetGo() { SetLimit(0); }

private:
    void SetLimit(DWORD flags) {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = flags;
        SetInformationJobObject(mJob.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    }

    Handle mJob;
};

} // namespace win32

namespace {

// How long a silent process is waited for before its pipe is looked into again.
constexpr int SilenceInMilliseconds = 10;

// The exit status of a process that had to be killed.
constexpr UINT KilledStatus = 1;

struct StartedProcess {
    Handle process;
    std::error_code error;
};

StartedProcess Start(const std::string& commandLine, bool inherit, DWORD flags, STARTUPINFOW& startup,
                     const win32::Job* job = nullptr) {
    if (commandLine.find('\0') != std::string::npos) {
        return {{}, {ERROR_INVALID_PARAMETER, std::system_category()}};
    }
    std::wstring line = win32::ToWide(commandLine); // CreateProcessW may write there
    PROCESS_INFORMATION started = {};
    flags |= job != nullptr ? CREATE_SUSPENDED : 0U; // it starts nothing before it is in the job
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, inherit ? TRUE : FALSE, flags, nullptr, nullptr,
                       &startup, &started) == 0) {
        return {{}, LastError()};
    }
    if (job != nullptr) {
        AssignProcessToJobObject(job->Get(), started.hProcess);
        ResumeThread(started.hThread);
    }
    CloseHandle(started.hThread);
    return {Handle(started.hProcess), {}};
}

// The list of the only handles that a new process inherits. `handles` must outlive it.
class InheritedHandles {
public:
    explicit InheritedHandles(std::vector<HANDLE>& handles) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        mRoom.resize(size);
        if (InitializeProcThreadAttributeList(Get(), 1, 0, &size) == 0) {
            ThrowLastError("InitializeProcThreadAttributeList");
        }
        if (UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                      handles.size() * sizeof(HANDLE), nullptr, nullptr) == 0) {
            const std::error_code error = LastError();
            DeleteProcThreadAttributeList(Get());
            throw std::system_error(error, "UpdateProcThreadAttribute");
        }
    }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;
    ~InheritedHandles() { DeleteProcThreadAttributeList(Get()); }

    LPPROC_THREAD_ATTRIBUTE_LIST Get() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(mRoom.data()); }

private:
    std::vector<std::byte> mRoom;
};

// Starts a process with its outputs in `output` and `errors`, which may be the same, and nothing to read.
StartedProcess StartWithOutput(const std::string& commandLine, HANDLE output, HANDLE errors, const win32::Job& job) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    const Handle nothing(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!nothing) {
        return {{}, LastError()};
    }
    std::vector<HANDLE> handles = {nothing.Get(), output};
    if (errors != output) {
        handles.push_back(errors);
    }
    InheritedHandles inherited(handles);
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = nothing.Get();
    startup.StartupInfo.hStdOutput = output;
    startup.StartupInfo.hStdError = errors;
    startup.lpAttributeList = inherited.Get();
    // Without a console of our own the process would open one for all to see.
    const DWORD window = GetConsoleWindow() == nullptr ? CREATE_NO_WINDOW : 0;
    return Start(commandLine, true, EXTENDED_STARTUPINFO_PRESENT | window, startup.StartupInfo, &job);
}

// Passes on what is in the pipe now, and returns whether there was anything. More may come without end, from a process
// that was left behind.
bool PassOn(HANDLE pipe, const std::function<void(std::string_view)>& onOutput) {
    DWORD available = 0;
    if (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) == 0) {
        if (GetLastError() == ERROR_BROKEN_PIPE) { // nobody can write there any more
            return false;
        }
        ThrowLastError("PeekNamedPipe");
    }
    std::array<char, 16384> buffer;
    DWORD left = available;
    while (left > 0) {
        DWORD count = 0;
        const DWORD wanted = std::min(left, static_cast<DWORD>(buffer.size()));
        if (ReadFile(pipe, buffer.data(), wanted, &count, nullptr) == 0) {
            ThrowLastError("ReadFile");
        }
        onOutput({buffer.data(), count});
        left -= std::min(left, count);
    }
    return available > 0;
}

} // namespace

namespace win32 {

// A process, its job, and the pipes with what it prints.
struct PipedProcess {
    Job job;
    Handle process;
    Handle output;
    Handle errors; // none where both are one
    std::function<void(std::string_view)> onOutput;
    std::function<void(std::string_view)> onErrors;
    ProcessResult result;
    bool hadOutput = false; // the last time that it was looked for

    void Start(const std::string& commandLine) {
        const Handle outputEnd = AddPipe(output);
        const Handle errorsEnd = onErrors ? AddPipe(errors) : Handle();
        if (result.startError) {
            return;
        }
        StartedProcess started =
            StartWithOutput(commandLine, outputEnd.Get(), onErrors ? errorsEnd.Get() : outputEnd.Get(), job);
        process = std::move(started.process);
        result.startError = started.error;
    }

    // The end for the process.
    Handle AddPipe(Handle& readEnd) {
        SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
        HANDLE ends[2] = {nullptr, nullptr};
        if (CreatePipe(&ends[0], &ends[1], &inheritable, 0) == 0) {
            result.startError = LastError();
        }
        readEnd = Handle(ends[0]);
        return Handle(ends[1]);
    }

    // Whether the process has ended and all that it printed is passed on.
    bool HasEnded() {
        if (!process) {
            return true;
        }
        const DWORD answer = WaitForSingleObject(process.Get(), 0); // asked first: what it printed before is there
        if (answer == WAIT_FAILED) {
            ThrowLastError("WaitForSingleObject");
        }
        hadOutput = PassOn(output.Get(), onOutput);
        hadOutput = (onErrors && PassOn(errors.Get(), onErrors)) || hadOutput;
        if (answer != WAIT_OBJECT_0) {
            return false;
        }
        DWORD status = 0;
        if (GetExitCodeProcess(process.Get(), &status) == 0) {
            ThrowLastError("GetExitCodeProcess");
        }
        result.exitStatus = static_cast<int>(status);
        process.Close();
        job.LetGo();
        return true;
    }

    PipedProcess() = default;
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;

    // What is thrown out of HasEnded leaves a process that must not stay behind.
    ~PipedProcess() {
        if (process) {
            TerminateProcess(process.Get(), KilledStatus);
        }
    }
};

} // namespace win32

void StartProcess(const std::string& commandLine, std::int32_t windowStyle, const std::string& /*outputPath*/) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(windowStyle);
    if (const StartedProcess started = Start(commandLine, false, 0, startup); started.error) {
        throw std::system_error(started.error, "CreateProcessW");
    }
}

ProcessResult RunProcess(const std::string& commandLine, const std::function<void(std::string_view)>& onOutput) {
    RunningProcess process(commandLine, onOutput);
    while (!process.HasEnded()) {
        RunningProcess::WaitForAny({&process});
    }
    return process.Result();
}

struct RunningProcess::State : win32::PipedProcess {};

RunningProcess::RunningProcess(const std::string& commandLine, std::function<void(std::string_view)> onOutput,
                               std::function<void(std::string_view)> onErrors)
    : mState(std::make_unique<State>()) {
    mState->onOutput = std::move(onOutput);
    mState->onErrors = std::move(onErrors);
    mState->Start(commandLine);
}

RunningProcess::~RunningProcess() = default;

bool RunningProcess::HasEnded() {
    return mState->HasEnded();
}

void RunningProcess::WaitForAny(const std::vector<RunningProcess*>& processes) {
    std::vector<HANDLE> handles;
    for (const RunningProcess* process : processes) {
        if (!process->mState->process || process->mState->hadOutput) {
            return;
        }
        if (handles.size() < MAXIMUM_WAIT_OBJECTS) {
            handles.push_back(process->mState->process.Get());
        }
    }
    if (!handles.empty() && WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE,
                                                   SilenceInMilliseconds) == WAIT_FAILED) {
        ThrowLastError("WaitForMultipleObjects");
    }
}

const ProcessResult& RunningProcess::Result() const {
    return mState->result;
}

// The shell of a batch file puts the value of a variable in place of its name between two percent signs.
bool CarriesArgument(const std::string& /*commandLine*/, const std::string& argument) {
    return argument.find_first_of("\"%") == std::string::npos;
}

std::string_view UncarriedCharacters() {
    return "a double quote or a percent sign";
}

} // namespace tessaly
