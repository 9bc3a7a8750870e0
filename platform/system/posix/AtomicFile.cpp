// A new file, flushed, that takes the name of the old one. The folder is flushed, too, so that the name survives a
// power cut. As long as the new file has no name nothing is left of it when the program is killed.
#include "platform/system/AtomicFile.h"

#include "platform/system/posix/Descriptor.h"
#include "platform/system/posix/Interrupts.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tessaly {

namespace {

namespace fs = std::filesystem;

// The end of the symbolic links at `path`, whether there is a file or not.
fs::path Target(const std::string& path) {
    fs::path target(path);
    constexpr int mostLinks = 40; // as many as Linux follows
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(target)); ++i) {
        const fs::path link = fs::read_symlink(target);
        target = link.is_absolute() ? link : target.parent_path() / link;
    }
    return target;
}

// Whether `path` is there and nothing that could be replaced: a device, a pipe, a socket, or the standard output into a
// file that has no name any more.
bool IsDevice(const std::string& path) {
    struct stat found = {};
    return stat(path.c_str(), &found) == 0 && !S_ISDIR(found.st_mode) &&
           (!S_ISREG(found.st_mode) || found.st_nlink == 0);
}

constexpr std::string_view TemporaryName = ".psf-XXXXXX";

// Removes what killed programs left in `folder`. The file of a running one is locked.
void Sweep(const fs::path& folder) {
    static fs::path swept; // of many files in one folder only the first one looks
    if (std::exchange(swept, folder) == folder) {
        return;
    }
    std::error_code error;
    for (fs::directory_iterator entries(folder, error); !error && entries != fs::directory_iterator();
         entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        if (name.size() != TemporaryName.size() || !name.starts_with(TemporaryName.substr(0, 5))) {
            continue;
        }
        const posix::Descriptor file(open(entries->path().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat found = {};
        if (file.Number() >= 0 && fstat(file.Number(), &found) == 0 && S_ISREG(found.st_mode) &&
            flock(file.Number(), LOCK_EX | LOCK_NB) == 0) {
            unlink(entries->path().c_str());
        }
    }
}

// A new file that is gone again unless it gets its name. Where the file system can, it has none until then.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path folder)
        : mFolder(std::move(folder)),
          mFile(open(mFolder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
        if (mFile.Number() >= 0 && access(Path().c_str(), W_OK) == 0) {
            flock(mFile.Number(), LOCK_EX | LOCK_NB); // for its moment with a name of its own
            return;
        }
        mFile.Close();
        MakeNamed();
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { RemoveName(); }

    int Error() const { return mError; }
    int File() const { return mFile.Number(); }
    std::string Path() const { return mName.empty() ? "/proc/self/fd/" + std::to_string(mFile.Number()) : mName; }

    // Gives it the name `target` when nothing has that. 0 or errno.
    int LinkTo(const fs::path& target) {
        if (!mName.empty()) {
            return Rename(target, RENAME_NOREPLACE);
        }
        return linkat(AT_FDCWD, Path().c_str(), AT_FDCWD, target.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
    }

    // Gives it the name `target` instead of the file that has it, unless that is in another state than `expected`.
    int Replace(const fs::path& target, const std::optional<FileState>& expected) {
        const posix::InterruptsHeld held;
        for (int tries = 0; mName.empty(); ++tries) {
            const std::string name = (mFolder / RandomName()).string();
            if (linkat(AT_FDCWD, Path().c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
                mName = name;
            } else if (errno != EEXIST || tries == 100) {
                return errno;
            }
        }
        const int error = expected && StateOf(target.string()) != expected ? EAGAIN : Rename(target, 0);
        RemoveName();
        return error;
    }

private:
    void RemoveName() {
        if (!mName.empty()) {
            unlink(mName.c_str());
            mName.clear();
        }
    }

    // One that is swept between its birth and its lock is made once more.
    void MakeNamed() {
        const posix::InterruptsHeld held;
        struct stat found = {};
        do {
            std::string name = (mFolder / TemporaryName).string();
            mFile.Take(mkostemp(name.data(), O_CLOEXEC));
            mError = mFile.Number() < 0 ? errno : 0;
            mName = mError == 0 ? name : "";
            flock(mFile.Number(), LOCK_EX | LOCK_NB);
        } while (mError == 0 && fstat(mFile.Number(), &found) == 0 && found.st_nlink == 0);
        mRemoved.emplace(mName);
    }

    static std::string RandomName() {
        constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
        std::string name(TemporaryName);
        static std::random_device random;
        for (std::size_t i = name.size() - 6; i < name.size(); ++i) {
            name[i] = letters[random() % letters.size()];
        }
        return name;
    }

    int Rename(const fs::path& target, unsigned flags) {
        int result = renameat2(AT_FDCWD, mName.c_str(), AT_FDCWD, target.c_str(), flags);
        if (result != 0 && errno == EINVAL && flags != 0) { // not every file system can
            if (fs::exists(fs::symlink_status(target))) {
                return EEXIST;
            }
            result = rename(mName.c_str(), target.c_str());
        }
        if (result == 0) {
            mName.clear();
        }
        return result == 0 ? 0 : errno;
    }

    fs::path mFolder;
    posix::Descriptor mFile;
    std::string mName; // "" while it has none
    std::optional<posix::RemovedOnInterrupt> mRemoved;
    int mError = 0;
};

mode_t NewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

int FlushFolder(const std::string& path) {
    const posix::Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.Number() >= 0 && fsync(folder.Number()) == 0 ? 0 : errno;
}

// Access lists are among the attributes. The content counts more than any of them.
void CopyAttributes(const std::string& from, int to) {
    std::vector<char> names(std::size_t{64} * 1024);
    std::vector<char> value(std::size_t{64} * 1024);
    const ssize_t size = listxattr(from.c_str(), names.data(), names.size());
    for (const char* name = names.data(); name < names.data() + size; name += std::strlen(name) + 1) {
        const ssize_t length = getxattr(from.c_str(), name, value.data(), value.size());
        if (length >= 0) {
            fsetxattr(to, name, value.data(), static_cast<std::size_t>(length), 0);
        }
    }
}

int GiveOwnerAndMode(const TemporaryFile& file, const fs::path& target, const struct stat* old) {
    if (old == nullptr) {
        return fchmod(file.File(), NewFileMode()) == 0 ? 0 : errno;
    }
    // Only root may give a file away; for others it stays theirs. The mode comes second: a new owner clears the set-id
    // bits.
    const bool given = fchown(file.File(), old->st_uid, old->st_gid) == 0;
    const mode_t mode = old->st_mode & (given ? 07777U : 0777U);
    const int error = fchmod(file.File(), mode) == 0 ? 0 : errno;
    CopyAttributes(target.string(), file.File());
    return error;
}

// What forbids to replace the file `target`; 0 or errno.
int Forbidden(const fs::path& target, const struct stat& old, Existing existing) {
    if (existing == Existing::Keep) {
        return EEXIST;
    }
    if (!S_ISREG(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ELOOP; // a link that is left after following so many
    }
    // A file that nobody may write is meant to stay as it is, though root could.
    const bool isProtected = (old.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ||
                             (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0 && errno == EACCES);
    if (isProtected) {
        return EPERM;
    }
    return old.st_nlink > 1 && existing == Existing::Replace ? EMLINK : 0;
}

int Replace(const fs::path& target, Existing existing, const std::function<bool(const std::string&)>& write,
            const std::optional<FileState>& expected) {
    struct stat old = {};
    const bool exists = lstat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) { // it may be there, with a mode that must be kept
        return errno;
    }
    if (expected && !exists) {
        return EAGAIN;
    }
    if (const int error = exists ? Forbidden(target, old, existing) : 0; error != 0) {
        return error;
    }
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    Sweep(folder);
    TemporaryFile temporary(folder);
    if (temporary.Error() != 0) {
        return temporary.Error();
    }
    if (!write(temporary.Path())) {
        return ECANCELED;
    }
    int error = GiveOwnerAndMode(temporary, target, exists ? &old : nullptr);
    if (error == 0) {
        error = fsync(temporary.File()) == 0 ? 0 : errno;
    }
    if (error == 0) {
        error = exists ? EEXIST : temporary.LinkTo(target);
    }
    if (error == EEXIST && existing != Existing::Keep) {
        error = temporary.Replace(target, expected);
    }
    if (error == 0) {
        FlushFolder(folder.string()); // the file is replaced already, whatever this says
    }
    return error;
}

std::error_code Error(int number) {
    return {number, std::generic_category()};
}

} // namespace

std::optional<FileState> StateOf(const std::string& path) {
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
        return std::nullopt;
    }
    const auto nanoseconds = [](const timespec& time) { return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec; };
    return FileState{found.st_dev, found.st_ino, static_cast<std::uint64_t>(found.st_size), nanoseconds(found.st_mtim),
                     nanoseconds(found.st_ctim)};
}

std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write,
                             const std::optional<FileState>& expected) {
    try {
        // The link of /dev/stdout leads to a name that only the kernel understands, so this comes before following it.
        if (existing != Existing::Keep && IsDevice(path)) {
            return Error(write(path) ? 0 : ECANCELED);
        }
        return Error(Replace(Target(path), existing, write, expected));
    } catch (const std::system_error& error) { // of std::filesystem: links that cannot be followed
        return error.code();
    }
}

} // namespace tessaly
