// The console belongs to whoever started this program, so it gets its own code page back.
#include "platform/system/win32/Streams.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace tessaly::win32 {

Streams::Streams() : mConsoleCodePage(GetConsoleOutputCP()) {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
}

Streams::~Streams() {
    if (mConsoleCodePage != 0) {
        std::fflush(stdout);
        SetConsoleOutputCP(mConsoleCodePage);
    }
}

std::vector<std::string> Arguments() {
    int count = 0;
    // By name: in the import table it would be there for the window, too, and be loaded before anything can be said of
    // where from.
    const auto split = LibraryFunction<decltype(&CommandLineToArgvW)>(L"shell32.dll", "CommandLineToArgvW");
    wchar_t** const wide = split(GetCommandLineW(), &count);
    if (wide == nullptr) {
        ThrowLastError("CommandLineToArgvW");
    }
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) {
        arguments.push_back(ToUtf8(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

std::wstring_view WithoutProgramName(std::wstring_view commandLine) {
    constexpr std::wstring_view blanks = L" \t";
    const bool quoted = commandLine.starts_with(L'"');
    const std::size_t end = quoted ? commandLine.find(L'"', 1) : commandLine.find_first_of(blanks);
    commandLine.remove_prefix(std::min(end, commandLine.size()));
    if (quoted && !commandLine.empty()) {
        commandLine.remove_prefix(1);
    }
    commandLine.remove_prefix(std::min(commandLine.find_first_not_of(blanks), commandLine.size()));
    return commandLine;
}

// Not split and joined again: nobody could tell afterwards how it was written.
std::string CommandLine() {
    return ToUtf8(WithoutProgramName(GetCommandLineW()));
}

} // namespace tessaly::win32
