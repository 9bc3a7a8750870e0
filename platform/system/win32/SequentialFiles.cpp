// Bytes go through as they are: nothing here knows of text mode, or of the end of a file at byte 1A.
#include "platform/system/SequentialFiles.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <cstdint>

namespace tessaly {

using win32::Handle;
using win32::LastError;
using win32::ThrowLastError;
using win32::WidePath;

namespace {

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

void CloseFile(Handle& file) {
    if (!file.Close()) {
        ThrowLastError("close");
    }
}

class ByteInput final : public InputFile {
public:
    explicit ByteInput(Handle file) : mFile(std::move(file)) {}

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

    std::uint64_t Size() const override {
        LARGE_INTEGER size = {};
        return GetFileSizeEx(mFile.Get(), &size) == 0 ? 0 : static_cast<std::uint64_t>(size.QuadPart);
    }

    void Close() override { CloseFile(mFile); }

private:
    Handle mFile;
};

class ByteOutput final : public OutputFile {
public:
    explicit ByteOutput(Handle file) : mFile(std::move(file)) {}

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

    void Close() override { CloseFile(mFile); }

private:
    Handle mFile;
};

} // namespace

std::unique_ptr<InputFile> SystemFiles::OpenForInput(const std::string& path) {
    constexpr DWORD everything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return std::make_unique<ByteInput>(Open(path, GENERIC_READ, everything, OPEN_EXISTING));
}

// Emptied by hand: CREATE_ALWAYS refuses hidden files.
std::unique_ptr<OutputFile> SystemFiles::OpenForOutput(const std::string& path) {
    Handle file = Open(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
    if (GetFileType(file.Get()) == FILE_TYPE_DISK && SetEndOfFile(file.Get()) == 0) {
        ThrowLastError("open");
    }
    return std::make_unique<ByteOutput>(std::move(file));
}

bool SystemFiles::FileExists(const std::string& path) const {
    if (path.find('\0') != std::string::npos) {
        return false;
    }
    const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace tessaly
