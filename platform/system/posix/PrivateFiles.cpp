// A folder is looked at by its own name and never through a link: in the folder for temporary files anybody may put
// one.
#include "platform/system/PrivateFiles.h"

#include "platform/system/SequentialFiles.h"
#include "platform/system/UserFolders.h"
#include "platform/system/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly {

namespace {

namespace fs = std::filesystem;

constexpr mode_t UserAlone = 0700;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

// 0, EPERM for a folder that is not the user's own, or why it cannot be looked at. `found` is what is there.
int LookAt(const std::string& folder, struct stat& found) {
    if (lstat(folder.c_str(), &found) != 0) {
        return errno;
    }
    return S_ISDIR(found.st_mode) && found.st_uid == geteuid() ? 0 : EPERM;
}

std::error_code FlushPath(const std::string& path, int flags) {
    const posix::Descriptor file(open(path.c_str(), flags | O_CLOEXEC));
    return file.Number() >= 0 && fsync(file.Number()) == 0 ? std::error_code() : LastError();
}

std::error_code WriteAll(const posix::Descriptor& file, std::string_view bytes, Flushing flushing) {
    const auto size = static_cast<off_t>(bytes.size());
    while (!bytes.empty()) {
        const ssize_t count = write(file.Number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return LastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    if (ftruncate(file.Number(), size) != 0 || (flushing == Flushing::Now && fsync(file.Number()) != 0)) {
        return LastError();
    }
    return {};
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.find_last_of('/') + 1);
}

// Fills `file`, which is at `temporary`, and gives it the name `path`. After an error it is gone.
std::error_code Fill(posix::Descriptor& file, const std::string& temporary, const std::string& path,
                     std::string_view bytes, Flushing flushing) {
    std::error_code error = file.Number() < 0 ? LastError() : WriteAll(file, bytes, flushing);
    if (!error) {
        error = {file.Close(), std::generic_category()};
    }
    if (!error && rename(temporary.c_str(), path.c_str()) != 0) {
        error = LastError();
    }
    const std::string folder = FolderOf(path);
    if (error) {
        unlink(temporary.c_str());
    } else if (flushing == Flushing::Now) {
        FlushPath(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY); // the file is there, whatever this says
    }
    return error;
}

// Whether the descriptor is of the file that has this name.
bool IsAt(const posix::Descriptor& file, const std::string& path) {
    struct stat here = {};
    struct stat there = {};
    return file.Number() >= 0 && fstat(file.Number(), &here) == 0 && lstat(path.c_str(), &there) == 0 &&
           here.st_ino == there.st_ino && here.st_dev == there.st_dev;
}

} // namespace

struct SystemPrivateFiles::OpenFiles {
    std::map<std::string, posix::Descriptor> files;
};

SystemPrivateFiles::SystemPrivateFiles() : mOpen(std::make_unique<OpenFiles>()) {}

SystemPrivateFiles::~SystemPrivateFiles() = default;

std::error_code SystemPrivateFiles::MakeFolder(const std::string& folder) {
    struct stat found = {};
    int error = LookAt(folder, found);
    if (error == ENOENT) {
        std::error_code ignored; // mkdir fails then, too
        fs::create_directories(fs::path(folder).parent_path(), ignored);
        if (mkdir(folder.c_str(), UserAlone) != 0 && errno != EEXIST) {
            return LastError();
        }
        error = LookAt(folder, found); // somebody may have been quicker
    }
    if (error != 0) {
        return {error, std::generic_category()};
    }
    const bool isClosed = (found.st_mode & 0777U) == UserAlone;
    return isClosed || chmod(folder.c_str(), UserAlone) == 0 ? std::error_code() : LastError();
}

std::error_code SystemPrivateFiles::List(const std::string& folder, std::vector<FolderEntry>& entries) const {
    entries.clear();
    struct stat found = {};
    const int lookError = LookAt(folder, found);
    if (lookError == ENOENT) {
        return {};
    }
    constexpr mode_t othersMayWrite = S_IWGRP | S_IWOTH;
    if (lookError != 0 || (found.st_mode & othersMayWrite) != 0) {
        return {lookError != 0 ? lookError : EPERM, std::generic_category()};
    }
    std::error_code error;
    for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator(); at.increment(error)) {
        if (lstat(at->path().c_str(), &found) == 0 && S_ISREG(found.st_mode)) {
            constexpr std::int64_t nanoseconds = 1'000'000'000;
            entries.push_back({at->path().filename().string(), static_cast<std::uint64_t>(found.st_size),
                               found.st_mtim.tv_sec * nanoseconds + found.st_mtim.tv_nsec});
        }
    }
    return error;
}

std::error_code SystemPrivateFiles::Flush(const std::string& path) {
    return FlushPath(path, O_RDONLY);
}

// A temporary file is its user's alone from the beginning.
std::error_code SystemPrivateFiles::Write(const std::string& path, std::string_view bytes, Flushing flushing) {
    std::string temporary = FolderOf(path) + ".psf-XXXXXX";
    posix::Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    return Fill(file, temporary, path, bytes, flushing);
}

// No folder is looked through or changed, and no file is replaced: ext4 would bring the new content to the disk first.
std::error_code SystemPrivateFiles::Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) {
    posix::Descriptor& file = mOpen->files[path];
    if (!IsAt(file, path)) {
        constexpr mode_t ownerOnly = 0600;
        file = posix::Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, ownerOnly));
    }
    if (file.Number() < 0) {
        const std::error_code error = LastError();
        unlink(path.c_str()); // it may be a link
        return error;
    }
    return lseek(file.Number(), 0, SEEK_SET) == 0 ? WriteAll(file, bytes, flushing) : LastError();
}

std::error_code SystemPrivateFiles::Remove(const std::string& path) {
    mOpen->files.erase(path);
    return unlink(path.c_str()) == 0 || errno == ENOENT ? std::error_code() : LastError();
}

// The start in ticks since the system was started, and which start of the system that was. proc(5) has the fields:
// the state is the first one behind the name, which may have brackets and blanks itself; the start is number 20 there.
std::optional<std::string> SystemPrivateFiles::ProcessStart(std::uint64_t id) const {
    SystemFiles files;
    try {
        const std::string line = ReadWhole(files, "/proc/" + std::to_string(id) + "/stat");
        std::istringstream fields(line.substr(line.rfind(')') + 1));
        std::string state;
        std::string field;
        fields >> state;
        constexpr int fieldsToStart = 19;
        for (int i = 0; i < fieldsToStart; ++i) {
            fields >> field;
        }
        if (state == "Z" || state == "X") { // ended, and nobody has asked how
            return std::nullopt;
        }
        const std::string boot = ReadWhole(files, "/proc/sys/kernel/random/boot_id");
        return field + "@" + boot.substr(0, boot.find('\n'));
    } catch (const std::system_error&) { // no such process, or a system without these files
        const bool runs = kill(static_cast<pid_t>(id), 0) == 0 || errno == EPERM;
        return runs ? std::optional<std::string>("") : std::nullopt;
    }
}

std::uint64_t OwnProcess() {
    return static_cast<std::uint64_t>(getpid());
}

std::vector<std::string> RecoveryFolders(const Environment& environment) {
    const std::string temporary = environment("TMPDIR").value_or("");
    return {StateFolder(environment) + "/recovery",
            (temporary.starts_with('/') ? temporary : "/tmp") + "/tessaly-" + std::to_string(geteuid())};
}

} // namespace tessaly
