// flock on the file itself. A file that was replaced while one waited is not the file any more, so that is looked
// after.
#include "platform/system/FileLock.h"

#include "platform/system/posix/Descriptor.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly {

namespace {

constexpr long NapInMilliseconds = 20;
constexpr long PatienceInMilliseconds = 1000;

class Flock final : public FileLock {
public:
    explicit Flock(int descriptor) : mDescriptor(descriptor) {}

    int Number() const { return mDescriptor.Number(); }

    // False when the file has another name, or none, by now.
    bool IsAt(const std::string& path) const {
        struct stat mine = {};
        struct stat there = {};
        return ::fstat(Number(), &mine) != 0 || ::stat(path.c_str(), &there) != 0 ||
               (mine.st_dev == there.st_dev && mine.st_ino == there.st_ino);
    }

private:
    posix::Descriptor mDescriptor;
};

bool IsNoFile(const std::string& path) {
    struct stat found = {};
    return ::stat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode);
}

int OpenToLock(const std::string& path, int flags) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags, 0666);
}

void WaitFor(int file, const std::function<void()>& onWait) {
    for (long waited = 0; ::flock(file, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
         waited += NapInMilliseconds) {
        if (waited == PatienceInMilliseconds && onWait) {
            onWait();
        }
        const timespec nap = {0, NapInMilliseconds * 1000000};
        ::nanosleep(&nap, nullptr);
    }
}

std::unique_ptr<FileLock> Lock(const std::string& path, int flags, const std::function<void()>& onWait) {
    if (IsNoFile(path)) {
        return nullptr;
    }
    while (true) {
        auto lock = std::make_unique<Flock>(OpenToLock(path, flags));
        if (lock->Number() < 0) {
            return nullptr;
        }
        WaitFor(lock->Number(), onWait);
        if (lock->IsAt(path)) {
            return lock;
        }
    }
}

} // namespace

std::unique_ptr<FileLock> LockForReplacing(const std::string& path) {
    return Lock(path, 0, nullptr);
}

std::unique_ptr<FileLock> LockForWriting(const std::string& path, const std::function<void()>& onWait) {
    return Lock(path, O_CREAT, onWait);
}

std::unique_ptr<FileLock> TryLockForWriting(const std::string& path, bool& isFree) {
    isFree = true;
    if (IsNoFile(path)) {
        return nullptr;
    }
    auto lock = std::make_unique<Flock>(OpenToLock(path, O_CREAT));
    isFree = lock->Number() < 0 || ::flock(lock->Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    return isFree ? std::move(lock) : nullptr;
}

} // namespace tessaly
