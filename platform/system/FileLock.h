// Programs of ours that work on one file take turns. Others are not kept from anything.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace tessaly {

// Held while it lives. Where the system has no lock for the file it holds nothing, and nobody waits.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// Waits for the turn to replace the file at `path`, which may come to be another file meanwhile.
std::unique_ptr<FileLock> LockForReplacing(const std::string& path);

// Waits for the turn to write into the file at `path`, which is made when it is not there, and to have others read it.
// `onWait` is called once, when that has taken a second. Unix: flock; Windows: LockFileEx behind all content.
std::unique_ptr<FileLock> LockForWriting(const std::string& path, const std::function<void()>& onWait);

// The same without waiting: `isFree` is false, and nothing is held, while another program has the turn.
std::unique_ptr<FileLock> TryLockForWriting(const std::string& path, bool& isFree);

} // namespace tessaly
