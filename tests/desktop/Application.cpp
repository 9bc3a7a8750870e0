// The running program in memory.
#include "tests/desktop/Application.h"

#include <system_error>

namespace tessaly {

std::string MemoryApplication::CommandLine() const {
    mFaults.Count();
    return commandLine;
}

std::int32_t MemoryApplication::Major() const {
    mFaults.Count();
    return majorVersion;
}

std::int32_t MemoryApplication::Minor() const {
    mFaults.Count();
    return minorVersion;
}

std::int32_t MemoryApplication::Revision() const {
    mFaults.Count();
    return revision;
}

std::string MemoryApplication::Title() const {
    mFaults.Count();
    return title;
}

void MemoryApplication::SetHelpFile(std::string_view path) {
    mFaults.Count();
    helpFile = path;
}

void MemoryApplication::SendF1() {
    mFaults.Count();
    ++f1Sent;
    ++f1Waiting;
}

void MemoryApplication::StartProcess(const std::string& line, std::int32_t windowStyle) {
    mFaults.Count();
    if (startsFail) {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    }
    starts.push_back({line, windowStyle});
}

void MemoryApplication::OpenHelp() {
    if (!helpFile.empty()) {
        helpOpened.push_back(helpFile);
    }
}

} // namespace tessaly
