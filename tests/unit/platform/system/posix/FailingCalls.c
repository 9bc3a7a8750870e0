// Each call counts itself and either fails or goes on to the real one. Nothing here allocates.
#define _GNU_SOURCE
#include "FailingCalls.h"

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

struct FailingCalls failingCalls;

// Whether this call of `name` fails.
int FailingCallIsDue(const char* name) {
    if (failingCalls.name == NULL || strcmp(failingCalls.name, name) != 0) {
        return 0;
    }
    ++failingCalls.count;
    return failingCalls.at > 0 && (failingCalls.count == failingCalls.at ||
                                   (failingCalls.forEver == 1 && failingCalls.count > failingCalls.at) ||
                                   (failingCalls.forEver == 2 && failingCalls.count == failingCalls.at + 1));
}

// The address of the real call. ISO C knows no conversion from an object's address.
#define REAL(result, function, ...)                                                                                    \
    static result (*real)(__VA_ARGS__);                                                                                \
    if (real == NULL) {                                                                                                \
        *(void**)&real = dlsym(RTLD_NEXT, function);                                                                   \
    }

#define FAIL(name, number)                                                                                             \
    if (FailingCallIsDue(name)) {                                                                                      \
        errno = number;                                                                                                \
        return -1;                                                                                                     \
    }

int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    FAIL("open", EMFILE)
    REAL(int, "open", const char*, int, ...)
    return real(path, flags, mode);
}

int mkostemp(char* path, int flags) {
    FAIL("open", EACCES)
    REAL(int, "mkostemp", char*, int)
    return real(path, flags);
}

ssize_t read(int file, void* buffer, size_t size) {
    FAIL("read", EIO)
    REAL(ssize_t, "read", int, void*, size_t)
    return real(file, buffer, size);
}

ssize_t __read_chk(int file, void* buffer, size_t size, size_t room);
ssize_t __read_chk(int file, void* buffer, size_t size, size_t room) {
    FAIL("read", EIO)
    REAL(ssize_t, "__read_chk", int, void*, size_t, size_t)
    return real(file, buffer, size, room);
}

ssize_t write(int file, const void* bytes, size_t size) {
    FAIL("write", ENOSPC)
    REAL(ssize_t, "write", int, const void*, size_t)
    return real(file, bytes, size > 1 && FailingCallIsDue("short-write") ? size / 2 : size);
}

int close(int file) {
    REAL(int, "close", int)
    const int result = real(file); // it is gone in any case
    FAIL("close", EIO)
    return result;
}

int fsync(int file) {
    FAIL("fsync", EIO)
    REAL(int, "fsync", int)
    return real(file);
}

int ftruncate(int file, off_t size) {
    FAIL("ftruncate", EIO)
    REAL(int, "ftruncate", int, off_t)
    return real(file, size);
}

int rename(const char* from, const char* to) {
    FAIL("rename", EXDEV)
    REAL(int, "rename", const char*, const char*)
    return real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    FAIL("rename", EIO)
    REAL(int, "renameat2", int, const char*, int, const char*, unsigned)
    return real(fromFolder, from, toFolder, to, flags);
}

int chmod(const char* path, mode_t mode) {
    FAIL("chmod", EPERM)
    REAL(int, "chmod", const char*, mode_t)
    return real(path, mode);
}

int fchmod(int file, mode_t mode) {
    FAIL("chmod", EPERM)
    REAL(int, "fchmod", int, mode_t)
    return real(file, mode);
}

int fchown(int file, uid_t owner, gid_t group) {
    FAIL("chown", EPERM)
    REAL(int, "fchown", int, uid_t, gid_t)
    return real(file, owner, group);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    FAIL("link", ENOSPC)
    REAL(int, "linkat", int, const char*, int, const char*, int)
    return real(fromFolder, from, toFolder, to, flags);
}

int chown(const char* path, uid_t owner, gid_t group) {
    FAIL("chown", EPERM)
    REAL(int, "chown", const char*, uid_t, gid_t)
    return real(path, owner, group);
}

int stat(const char* path, struct stat* found) {
    FAIL("stat", EIO)
    REAL(int, "stat", const char*, struct stat*)
    return real(path, found);
}

int lstat(const char* path, struct stat* found) {
    FAIL("stat", EIO)
    REAL(int, "lstat", const char*, struct stat*)
    return real(path, found);
}

ssize_t readlink(const char* path, char* buffer, size_t size) {
    FAIL("readlink", EIO)
    REAL(ssize_t, "readlink", const char*, char*, size_t)
    return real(path, buffer, size);
}

int mkdir(const char* path, mode_t mode) {
    FAIL("mkdir", ENOSPC)
    REAL(int, "mkdir", const char*, mode_t)
    return real(path, mode);
}

int pipe2(int ends[2], int flags) {
    FAIL("pipe", EMFILE)
    REAL(int, "pipe2", int*, int)
    return real(ends, flags);
}

int posix_spawnp(pid_t* process, const char* file, const posix_spawn_file_actions_t* actions,
                 const posix_spawnattr_t* attributes, char* const* arguments, char* const* environment) {
    if (FailingCallIsDue("spawn")) {
        return EAGAIN;
    }
    REAL(int, "posix_spawnp", pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
         char* const*, char* const*)
    return real(process, file, actions, attributes, arguments, environment);
}

pid_t fork(void) {
    FAIL("fork", EAGAIN)
    REAL(pid_t, "fork", void)
    return real();
}

int poll(struct pollfd* entries, nfds_t count, int timeout) {
    FAIL("poll", ENOMEM)
    REAL(int, "poll", struct pollfd*, nfds_t, int)
    return real(entries, count, timeout);
}

pid_t waitpid(pid_t process, int* status, int options) {
    FAIL("waitpid", ECHILD)
    REAL(pid_t, "waitpid", pid_t, int*, int)
    return real(process, status, options);
}

int ioctl(int file, unsigned long request, ...) {
    va_list rest;
    va_start(rest, request);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    FAIL("ioctl", EIO)
    REAL(int, "ioctl", int, unsigned long, ...)
    return real(file, request, argument);
}

int flock(int file, int operation) {
    FAIL("flock", ENOLCK)
    REAL(int, "flock", int, int)
    return real(file, operation);
}
