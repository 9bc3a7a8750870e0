// A new file beside the old one, flushed, renamed. The folder is flushed too, so that the rename itself
// survives a power cut.
#include "platform/system/AtomicFile.h"

#include "platform/system/posix/Descriptor.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

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

// Whether `path` is there and nothing that could be replaced: a device, a pipe, a socket.
bool IsDevice(const std::string& path) {
    struct stat found = {};
    return stat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode) && !S_ISDIR(found.st_mode);
}

// A file that is gone again unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& folder) : mPath((folder / ".psf-XXXXXX").string()) {
        const posix::Descriptor file(mkostemp(mPath.data(), O_CLOEXEC));
        mError = file.Number() < 0 ? errno : 0;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (mError == 0 && !mRenamed) {
            unlink(mPath.c_str());
        }
    }

    int Error() const { return mError; }
    const std::string& Path() const { return mPath; }

    int RenameTo(const fs::path& target, Existing existing) {
        const unsigned flags = existing == Existing::Keep ? RENAME_NOREPLACE : 0U;
        int result = renameat2(AT_FDCWD, mPath.c_str(), AT_FDCWD, target.c_str(), flags);
        if (result != 0 && errno == EINVAL && flags != 0) { // not every file system can
            if (fs::exists(fs::symlink_status(target))) {
                return EEXIST;
            }
            result = rename(mPath.c_str(), target.c_str());
        }
        mRenamed = result == 0;
        return mRenamed ? 0 : errno;
    }

private:
    std::string mPath;
    int mError = 0;
    bool mRenamed = false;
};

mode_t NewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

int Flush(const std::string& path, int flags) {
    const posix::Descriptor file(open(path.c_str(), flags | O_CLOEXEC));
    return file.Number() >= 0 && fsync(file.Number()) == 0 ? 0 : errno;
}

int GiveOwnerAndMode(const std::string& path, const struct stat* old) {
    if (old != nullptr) {
        // Only root may give a file away; for others it stays theirs. The mode comes second: a new owner clears
        // the set-id bits.
        const bool given = chown(path.c_str(), old->st_uid, old->st_gid) == 0;
        const mode_t mode = old->st_mode & (given ? 07777U : 0777U);
        return chmod(path.c_str(), mode) == 0 ? 0 : errno;
    }
    return chmod(path.c_str(), NewFileMode()) == 0 ? 0 : errno;
}

int Replace(const fs::path& target, Existing existing, const std::function<bool(const std::string&)>& write) {
    struct stat old = {};
    const bool exists = lstat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) { // it may be there, with a mode that must be kept
        return errno;
    }
    if (exists && existing == Existing::Keep) {
        return EEXIST;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ELOOP; // a link that is left after following so many
    }
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    TemporaryFile temporary(folder);
    if (temporary.Error() != 0) {
        return temporary.Error();
    }
    if (!write(temporary.Path())) {
        return ECANCELED;
    }
    int error = GiveOwnerAndMode(temporary.Path(), exists ? &old : nullptr);
    if (error == 0) {
        error = Flush(temporary.Path(), O_RDONLY);
    }
    if (error == 0) {
        error = temporary.RenameTo(target, existing);
    }
    if (error == 0) {
        Flush(folder.string(), O_RDONLY | O_DIRECTORY); // the file is replaced already, whatever this says
    }
    return error;
}

std::error_code Error(int number) {
    return {number, std::generic_category()};
}

} // namespace

std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write) {
    try {
        // The link of /dev/stdout leads to a name that only the kernel understands, so this comes before following it.
        if (existing == Existing::Replace && IsDevice(path)) {
            return Error(write(path) ? 0 : ECANCELED);
        }
        return Error(Replace(Target(path), existing, write));
    } catch (const std::system_error& error) { // of std::filesystem: links that cannot be followed
        return error.code();
    }
}

} // namespace tessaly
