// A second process for tests: TestChild COMMAND ANSWER-FILE ... does COMMAND and writes the answer in one go.
//   line FILE ...      the command line as it came
//   style FILE         the window style that it was started with
//   start FILE ...     the window style, and in the next line the command line with the program's name
//   hold FILE NAME     "found" or "first": whether a copy called NAME runs already, and its own number; then it stays
//                      until it is killed
//   talk FILE COUNT    writes COUNT numbered lines to standard output and error, what it can read, and ends with 7
//   leave FILE         starts a copy of itself that stays and has the same output, says so, and ends with 0
#include "platform/system/PreviousInstance.h"
#include "platform/system/win32/Streams.h"
#include "platform/system/win32/Text.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using namespace tessaly;

// Under another name first, so that nobody reads half an answer.
void Answer(const std::string& path, const std::string& text) {
    const std::filesystem::path target(win32::ToWide(path));
    const std::filesystem::path half(win32::ToWide(path + ".half"));
    std::ofstream(half, std::ios::binary) << text;
    std::filesystem::rename(half, target);
}

std::string WindowStyle() {
    STARTUPINFOW startup = {};
    GetStartupInfoW(&startup);
    const bool isSet = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    return isSet ? std::to_string(startup.wShowWindow) : "none";
}

int Talk(int count) {
    for (int i = 0; i < count; ++i) {
        std::FILE* stream = i % 2 == 0 ? stdout : stderr;
        std::fprintf(stream, "line %d\n", i);
        std::fflush(stream);
    }
    int read = 0;
    while (std::getchar() != EOF) {
        ++read;
    }
    std::printf("read %d", read);
    std::fflush(stdout);
    return 7;
}

int Leave(const std::string& answer) {
    std::wstring line =
        L"\"" + win32::ToWide(win32::Arguments()[0]) + L"\" hold \"" + win32::ToWide(answer) + L"\" TessalyTestLeft";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started) == 0) {
        return 1;
    }
    std::printf("%lu", started.dwProcessId);
    return 0;
}

} // namespace

int main() {
    const win32::Streams streams;
    const std::vector<std::string> arguments = win32::Arguments();
    if (arguments.size() < 3) {
        return 64;
    }
    const std::string& command = arguments[1];
    const std::string& answer = arguments[2];
    if (command == "line") {
        Answer(answer, win32::CommandLine());
    } else if (command == "style") {
        Answer(answer, WindowStyle());
    } else if (command == "start") {
        Answer(answer, WindowStyle() + "\n" + win32::ToUtf8(GetCommandLineW()));
    } else if (command == "hold") {
        const PreviousInstanceTest instance(arguments.at(3));
        Answer(answer, (instance.PreviousInstance() ? "found " : "first ") + std::to_string(GetCurrentProcessId()));
        Sleep(INFINITE);
    } else if (command == "talk") {
        return Talk(std::stoi(arguments.at(3)));
    } else if (command == "leave") {
        return Leave(answer);
    } else {
        return 64;
    }
    return 0;
}
