// A new file beside the old one, flushed, moved over it.
#include "platform/system/AtomicFile.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Move.h"
#include "platform/system/win32/Text.h"

#include <cstdint>
#include <optional>

namespace tessaly {

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Of the attributes, those that a user sets.
constexpr DWORD KeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

// Whether `path` is there and nothing that could be replaced, such as NUL.
bool IsDevice(const std::wstring& path) {
    const win32::Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    return file && GetFileType(file.Get()) != FILE_TYPE_DISK;
}

// The file that the link `path` leads to; no value when it leads nowhere.
std::optional<std::wstring> Target(const std::wstring& path) {
    const win32::Handle file(CreateFileW(path.c_str(), 0, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD room = file ? GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED) : 0;
    std::wstring target(room, L'\0');
    const DWORD length =
        room > 0 ? GetFinalPathNameByHandleW(file.Get(), target.data(), room, FILE_NAME_NORMALIZED) : 0;
    if (length == 0 || length >= room) {
        return std::nullopt;
    }
    target.resize(length);
    return target;
}

// A file that is gone again unless it was moved to its place.
class TemporaryFile {
public:
    // In `folder`, which is empty or ends with its separator.
    explicit TemporaryFile(const std::wstring& folder) {
        constexpr int mostNames = 1000;
        std::uint64_t number = GetTickCount64() * mostNames + GetCurrentProcessId();
        for (int i = 0; i < mostNames; ++i) {
            mPath = folder + L".psf-" + std::to_wstring(number++) + L".tmp";
            const win32::Handle file(
                CreateFileW(mPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            mError = file ? std::error_code() : win32::LastError();
            if (mError != std::errc::file_exists) {
                return;
            }
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!mError && !mMoved) {
            DeleteFileW(mPath.c_str());
        }
    }

    std::error_code Error() const { return mError; }
    const std::wstring& Path() const { return mPath; }

    std::error_code Flush() const {
        win32::Handle file(CreateFileW(mPath.c_str(), GENERIC_WRITE, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
        return file && FlushFileBuffers(file.Get()) != 0 && file.Close() ? std::error_code() : win32::LastError();
    }

    std::error_code MoveTo(const std::wstring& target, Existing existing) {
        const DWORD replacing = existing == Existing::Replace ? MOVEFILE_REPLACE_EXISTING : 0U;
        const std::error_code error = win32::Move(mPath, target, MOVEFILE_WRITE_THROUGH | replacing);
        mMoved = !error;
        return error;
    }

private:
    std::wstring mPath;
    std::error_code mError;
    bool mMoved = false;
};

std::error_code Replace(const std::wstring& target, Existing existing,
                        const std::function<bool(const std::string&)>& write) {
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && existing == Existing::Keep) {
        return std::make_error_code(std::errc::file_exists);
    }
    if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return {ERROR_ACCESS_DENIED, std::system_category()};
    }
    TemporaryFile temporary(target.substr(0, target.find_last_of(L"\\/:") + 1));
    if (temporary.Error()) {
        return temporary.Error();
    }
    if (!write(win32::ToUtf8(temporary.Path()))) {
        return std::make_error_code(std::errc::operation_canceled);
    }
    if (const std::error_code error = temporary.Flush()) {
        return error;
    }
    if (const DWORD kept = exists ? attributes & KeptAttributes : 0; kept != 0) {
        SetFileAttributesW(temporary.Path().c_str(), kept); // the content counts more than its attributes
    }
    return temporary.MoveTo(target, existing);
}

} // namespace

std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write) {
    try {
        const std::wstring wide = win32::WidePath(path);
        if (existing == Existing::Replace && IsDevice(wide)) {
            return write(path) ? std::error_code() : std::make_error_code(std::errc::operation_canceled);
        }
        const DWORD attributes = GetFileAttributesW(wide.c_str());
        const bool link = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        const std::optional<std::wstring> target = link ? Target(wide) : wide;
        return target ? Replace(*target, existing, write) : std::make_error_code(std::errc::no_such_file_or_directory);
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

} // namespace tessaly
