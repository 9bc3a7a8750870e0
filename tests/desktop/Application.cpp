// The running program in memory.
#include "tests/desktop/Application.h"

#include "platform/desktop/Raise.h"

#include <system_error>

namespace tessaly::memory {

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

void Application::Follow(const std::string& path) {
    mFaults.Count();
    mFollowed = path;
    mContent = Followed();
}

std::optional<std::string> Application::Followed() const {
    const auto file = mFiles.contents.find(mFollowed);
    return file == mFiles.contents.end() ? std::nullopt : std::optional(file->second);
}

void Application::DeliverChanges() {
    if (Followed() != mContent) {
        mContent = Followed();
        Raise(onFollowed);
    }
}

} // namespace tessaly::memory
