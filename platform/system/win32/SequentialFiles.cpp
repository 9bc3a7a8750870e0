// Bytes go through as they are: nothing here knows of text mode, or of the end of a file at byte 1A.
#include "platform/system/win32/SequentialFiles.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <cstdint>

namespace tessaly::win32 {

namespace {

// Longer paths are given in their full form behind a prefix. Windows itself wants that from 260 on, and earlier for
// folders; files beside this one may have longer names.
constexpr std::size_t LongestPlainPath = 200;

// No call of Windows moves more bytes at once.
constexpr std::size_t LargestPiece = std::size_t{1} << 30U;

DWORD PieceSize(std::size_t size) {
    return static_cast<DWORD>(std::min(size, LargestPiece));
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Handle Open(const std::string& path, DWORD access, DWORD share, DWORD disposition) {
    const std::wstring wide = WidePath(path);
    Handle file(CreateFileW(wide.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        const std::error_code error = LastError();
        throw std::system_error(IsFolder(wide) ? std::make_error_code(std::errc::is_a_directory) : error, "open");
    }
    return file;
}

void Close(Handle& file) {
    if (!file.Close()) {
        ThrowLastError("close");
    }
}

class InputFile final : public tessaly::InputFile {
public:
    explicit InputFile(Handle file) : mFile(std::move(file)) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        DWORD count = 0;
        if (ReadFile(mFile.Get(), buffer, PieceSize(size), &count, nullptr) == 0) {
            if (GetLastError() == ERROR_BROKEN_PIPE) { // the end of a pipe
                return 0;
            }
            ThrowLastError("read");
        }
        return count;
    }

    void Close() override { win32::Close(mFile); }

private:
    Handle mFile;
};

class OutputFile final : public tessaly::OutputFile {
public:
    explicit OutputFile(Handle file) : mFile(std::move(file)) {}

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            DWORD count = 0;
            if (WriteFile(mFile.Get(), bytes.data(), PieceSize(bytes.size()), &count, nullptr) == 0) {
                ThrowLastError("write");
            }
            if (count == 0) { // a device that takes nothing
                throw std::system_error(ERROR_HANDLE_DISK_FULL, std::system_category(), "write");
            }
            bytes.remove_prefix(count);
        }
    }

    void Close() override { win32::Close(mFile); }

private:
    Handle mFile;
};

} // namespace

std::wstring WidePath(const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        throw std::system_error(ERROR_INVALID_NAME, std::system_category(), "open");
    }
    std::wstring wide = ToWide(path);
    if (wide.size() <= LongestPlainPath || wide.starts_with(L"\\\\?\\") || wide.starts_with(L"\\\\.\\")) {
        return wide;
    }
    const DWORD room = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    const DWORD length = GetFullPathNameW(wide.c_str(), room, full.data(), nullptr);
    if (length == 0 || length >= room) {
        return wide; // the call that is to take it says what is wrong
    }
    full.resize(length);
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

std::unique_ptr<tessaly::InputFile> SequentialFiles::OpenForInput(const std::string& path) {
    constexpr DWORD everything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return std::make_unique<InputFile>(Open(path, GENERIC_READ, everything, OPEN_EXISTING));
}

// Emptied by hand: CREATE_ALWAYS refuses hidden files.
std::unique_ptr<tessaly::OutputFile> SequentialFiles::OpenForOutput(const std::string& path) {
    Handle file = Open(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (GetFileType(file.Get()) == FILE_TYPE_DISK && SetEndOfFile(file.Get()) == 0) {
        ThrowLastError("open");
    }
    return std::make_unique<OutputFile>(std::move(file));
}

bool SequentialFiles::FileExists(const std::string& path) const {
    if (path.find('\0') != std::string::npos) {
        return false;
    }
    const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace tessaly::win32
