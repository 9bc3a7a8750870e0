// Not split and joined again: nobody could tell afterwards how it was written.
#include "platform/system/win32/CommandLine.h"

#include "platform/system/win32/Text.h"

#include <algorithm>
#include <windows.h>

namespace tessaly::win32 {

namespace {

constexpr std::wstring_view Blanks = L" \t";

} // namespace

std::wstring_view WithoutProgramName(std::wstring_view commandLine) {
    const bool quoted = commandLine.starts_with(L'"');
    const std::size_t end = quoted ? commandLine.find(L'"', 1) : commandLine.find_first_of(Blanks);
    commandLine.remove_prefix(std::min(end, commandLine.size()));
    if (quoted && !commandLine.empty()) {
        commandLine.remove_prefix(1);
    }
    commandLine.remove_prefix(std::min(commandLine.find_first_not_of(Blanks), commandLine.size()));
    return commandLine;
}

std::string CommandLine() {
    return ToUtf8(WithoutProgramName(GetCommandLineW()));
}

} // namespace tessaly::win32
