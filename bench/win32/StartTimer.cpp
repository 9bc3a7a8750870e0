// Times the start of one program: start_timer.exe COMMAND-LINE, which is taken as it stands. Prints three times at once
// when it has them: the start of the program, its first visible window without an owner, and that window's first
// answer. The unit is a millisecond of QueryPerformanceCounter. Then, for each line on standard input, waits until the
// window answers again and prints when that was. Ends the program when the input ends.
#include <cstdio>
#include <string>
#include <windows.h>

namespace {

constexpr double Patience = 120000; // milliseconds, like all times here

double Now() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

struct Search {
    DWORD process;
    HWND window = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.process || !IsWindowVisible(window) || GetWindow(window, GW_OWNER)) {
        return TRUE;
    }
    search.window = window;
    return FALSE;
}

HWND WaitForWindow(DWORD process, double start) {
    Search search{process};
    while (!search.window && Now() - start < Patience) {
        EnumWindows(Look, reinterpret_cast<LPARAM>(&search));
        if (!search.window) {
            Sleep(1);
        }
    }
    return search.window;
}

bool Answers(HWND window) {
    DWORD_PTR answer = 0;
    return window && SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(Patience), &answer) != 0;
}

// Returns whether the program has answered each time.
bool Measure(DWORD process, double start) {
    HWND window = WaitForWindow(process, start);
    const double visible = Now();
    if (!Answers(window)) {
        return false;
    }
    std::printf("%.2f %.2f %.2f\n", start, visible, Now());
    std::fflush(stdout);
    while (std::getchar() != EOF) {
        if (!Answers(window)) {
            return false;
        }
        std::printf("%.2f\n", Now());
        std::fflush(stdout);
    }
    return true;
}

std::wstring OwnArguments() {
    const std::wstring line = GetCommandLineW();
    const std::size_t nameEnd = line.front() == L'"' ? line.find(L'"', 1) + 1 : line.find(L' ');
    const std::size_t first = line.find_first_not_of(L' ', nameEnd);
    return first == std::wstring::npos ? std::wstring() : line.substr(first);
}

} // namespace

int main() {
    std::wstring commandLine = OwnArguments();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION program{};
    const double start = Now();
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &program)) {
        std::fprintf(stderr, "start_timer: cannot start it: error %lu\n", GetLastError());
        return 1;
    }
    const bool isGood = Measure(program.dwProcessId, start);
    if (!isGood) {
        std::fprintf(stderr, "start_timer: no window that answers\n");
    }
    TerminateProcess(program.hProcess, 0);
    WaitForSingleObject(program.hProcess, INFINITE);
    return isGood ? 0 : 1;
}
