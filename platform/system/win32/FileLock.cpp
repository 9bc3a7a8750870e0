// A file that is open cannot be replaced here, so the turn to replace one is a mutex that has its name.
#include "platform/system/FileLock.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <cstdint>

namespace tessaly {

namespace {

constexpr DWORD NapInMilliseconds = 20;
constexpr DWORD PatienceInMilliseconds = 1000;

class NamedMutex final : public FileLock {
public:
    explicit NamedMutex(const std::wstring& name) : mMutex(CreateMutexW(nullptr, FALSE, name.c_str())) {
        if (mMutex) {
            WaitForSingleObject(mMutex.Get(), INFINITE);
        }
    }
    NamedMutex(const NamedMutex&) = delete;
    NamedMutex& operator=(const NamedMutex&) = delete;
    ~NamedMutex() override {
        if (mMutex) {
            ReleaseMutex(mMutex.Get());
        }
    }

private:
    win32::Handle mMutex;
};

class OpenFileLock final : public FileLock {
public:
    explicit OpenFileLock(win32::Handle file) : mFile(std::move(file)) {}

private:
    win32::Handle mFile; // its closing unlocks it
};

// The path by which Windows finds the file, in capitals, as a number.
std::uint64_t HashOf(const std::string& path) {
    std::wstring full = win32::WidePath(path);
    std::wstring found(32768, L'\0');
    const DWORD size = GetFullPathNameW(full.c_str(), static_cast<DWORD>(found.size()), found.data(), nullptr);
    found.resize(size < found.size() ? size : 0);
    CharUpperBuffW(found.data(), static_cast<DWORD>(found.size()));
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const wchar_t c : found) {
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 0x100000001B3U;
    }
    return hash;
}

} // namespace

std::unique_ptr<FileLock> LockForReplacing(const std::string& path) {
    try {
        return std::make_unique<NamedMutex>(L"TessalyFile-" + std::to_wstring(HashOf(path)));
    } catch (const std::system_error&) { // of the path
        return nullptr;
    }
}

std::unique_ptr<FileLock> TryLockForWriting(const std::string& path, bool& isFree) {
    win32::Handle file;
    isFree = true;
    try {
        file = win32::Handle(CreateFileW(win32::WidePath(path).c_str(), GENERIC_READ,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
    } catch (const std::system_error&) { // of the path
        return nullptr;
    }
    if (!file || GetFileType(file.Get()) != FILE_TYPE_DISK) {
        return nullptr;
    }
    OVERLAPPED behindAll = {};
    behindAll.OffsetHigh = 0x7FFFFFFF;
    if (LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &behindAll) != 0) {
        return std::make_unique<OpenFileLock>(std::move(file));
    }
    isFree = GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING;
    return nullptr;
}

std::unique_ptr<FileLock> LockForWriting(const std::string& path, const std::function<void()>& onWait) {
    bool isFree = false;
    std::unique_ptr<FileLock> lock = TryLockForWriting(path, isFree);
    for (DWORD waited = 0; !isFree; waited += NapInMilliseconds) {
        if (waited == PatienceInMilliseconds && onWait) {
            onWait();
        }
        Sleep(NapInMilliseconds);
        lock = TryLockForWriting(path, isFree);
    }
    return lock;
}

} // namespace tessaly
