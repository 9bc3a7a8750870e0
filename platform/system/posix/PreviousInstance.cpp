// flock, not a process number in a file: a number may belong to another process by now.
#include "platform/system/PreviousInstance.h"

#include "platform/system/UserFolders.h"
#include "platform/system/posix/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <system_error>

namespace tessaly {

namespace {

int OpenLock(const std::string& path) {
    std::error_code ignored; // opening fails then, too
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    constexpr mode_t ownerOnly = 0600;
    return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, ownerOnly);
}

} // namespace

std::string InstanceName(const Environment& environment) {
    const std::string folder = environment("XDG_RUNTIME_DIR").value_or("");
    return (folder.starts_with('/') ? folder : StateFolder(environment)) + "/tessaly.lock";
}

PreviousInstanceTest::PreviousInstanceTest(const std::string& name) {
    const auto lock = std::make_shared<posix::Descriptor>(OpenLock(name));
    int result = 0;
    do {
        result = ::flock(lock->Number(), LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    mFound = result != 0 && errno == EWOULDBLOCK;
    mHeld = lock;
}

} // namespace tessaly
