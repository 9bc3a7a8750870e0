// The running program in memory.
#include "tests/desktop/Application.h"

#include <system_error>

namespace tessaly::memory {

std::string Application::CommandLine() const {
    mFaults.Count();
    return commandLine;
}

std::int32_t Application::Major() const {
    mFaults.Count();
    return majorVersion;
}

std::int32_t Application::Minor() const {
    mFaults.Count();
    return minorVersion;
}

std::int32_t Application::Revision() const {
    mFaults.Count();
    return revision;
}

std::string Application::Title() const {
    mFaults.Count();
    return title;
}

void Application::SetHelpFile(std::string_view path) {
    mFaults.Count();
    helpFile = path;
}

void Application::SendF1() {
    mFaults.Count();
    ++f1Sent;
    ++f1Waiting;
}

void Application::StartProcess(const std::string& line, std::int32_t windowStyle) {
    mFaults.Count();
    if (startsFail) {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    }
    starts.push_back({line, windowStyle});
}

void Application::OpenHelp() {
    if (!helpFile.empty()) {
        helpOpened.push_back(helpFile);
    }
}

} // namespace tessaly::memory
