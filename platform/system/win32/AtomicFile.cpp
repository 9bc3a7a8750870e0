// A new file beside the old one, flushed, moved over it.
#include "platform/system/AtomicFile.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Move.h"
#include "platform/system/win32/Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

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

std::optional<BY_HANDLE_FILE_INFORMATION> Information(const std::wstring& path) {
    const win32::Handle file(CreateFileW(path.c_str(), 0, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    BY_HANDLE_FILE_INFORMATION found = {};
    return file && GetFileType(file.Get()) == FILE_TYPE_DISK && GetFileInformationByHandle(file.Get(), &found) != 0
               ? std::optional(found)
               : std::nullopt;
}

DWORD NameCount(const std::wstring& path) {
    const std::optional<BY_HANDLE_FILE_INFORMATION> found = Information(path);
    return found ? found->nNumberOfLinks : 1;
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32U | low;
}

std::optional<FileState> StateOfFile(const std::wstring& path) {
    const std::optional<BY_HANDLE_FILE_INFORMATION> found = Information(path);
    if (!found) {
        return std::nullopt;
    }
    const FILETIME& written = found->ftLastWriteTime;
    return FileState{found->dwVolumeSerialNumber, Joined(found->nFileIndexHigh, found->nFileIndexLow),
                     Joined(found->nFileSizeHigh, found->nFileSizeLow),
                     static_cast<std::int64_t>(Joined(written.dwHighDateTime, written.dwLowDateTime)), 0};
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

// Removes what killed programs left in `folder`. The file of a running one is open and cannot be deleted.
void Sweep(const std::wstring& folder) {
    static std::wstring swept; // of many files in one folder only the first one looks
    if (std::exchange(swept, folder) == folder) {
        return;
    }
    WIN32_FIND_DATAW found = {};
    HANDLE search = FindFirstFileW((folder + L".psf-*.tmp").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            DeleteFileW((folder + found.cFileName).c_str());
        } while (FindNextFileW(search, &found) != 0);
        FindClose(search);
    }
}

// The content counts more than what follows it from the old file, so failures do not count.
void CopyAccessList(const std::wstring& from, const std::wstring& to) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    if (size > 0 && GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) != 0) {
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
    }
}

void CopyStreams(const std::wstring& from, const std::wstring& to) {
    WIN32_FIND_STREAM_DATA found = {};
    HANDLE search = FindFirstStreamW(from.c_str(), FindStreamInfoStandard, &found, 0);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        if (std::wstring_view(found.cStreamName) != L"::$DATA") {
            CopyFileW((from + found.cStreamName).c_str(), (to + found.cStreamName).c_str(), FALSE);
        }
    } while (FindNextStreamW(search, &found) != 0);
    FindClose(search);
}

// A file that is gone again unless it was moved to its place. Nobody else can delete it meanwhile.
class TemporaryFile {
public:
    // In `folder`, which is empty or ends with its separator.
    explicit TemporaryFile(const std::wstring& folder) {
        constexpr int mostNames = 1000;
        std::uint64_t number = GetTickCount64() * mostNames + GetCurrentProcessId();
        for (int i = 0; i < mostNames; ++i) {
            mPath = folder + L".psf-" + std::to_wstring(number++) + L".tmp";
            mFile = win32::Handle(CreateFileW(mPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                              CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            mError = mFile ? std::error_code() : win32::LastError();
            if (mError != std::errc::file_exists) {
                return;
            }
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        mFile.Close();
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
        const DWORD replacing = existing != Existing::Keep ? MOVEFILE_REPLACE_EXISTING : 0U;
        mFile.Close();
        const std::error_code error = win32::Move(mPath, target, MOVEFILE_WRITE_THROUGH | replacing);
        mMoved = !error;
        return error;
    }

private:
    std::wstring mPath;
    win32::Handle mFile;
    std::error_code mError;
    bool mMoved = false;
};

std::error_code Replace(const std::wstring& target, Existing existing,
                        const std::function<bool(const std::string&)>& write,
                        const std::optional<FileState>& expected) {
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && existing == Existing::Keep) {
        return std::make_error_code(std::errc::file_exists);
    }
    if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return std::make_error_code(std::errc::operation_not_permitted);
    }
    if (existing == Existing::Replace && NameCount(target) > 1) {
        return std::make_error_code(std::errc::too_many_links);
    }
    const std::wstring folder = target.substr(0, target.find_last_of(L"\\/:") + 1);
    Sweep(folder);
    TemporaryFile temporary(folder);
    if (temporary.Error()) {
        return temporary.Error();
    }
    if (!write(win32::ToUtf8(temporary.Path()))) {
        return std::make_error_code(std::errc::operation_canceled);
    }
    if (const std::error_code error = temporary.Flush()) {
        return error;
    }
    if (exists) {
        CopyAccessList(target, temporary.Path());
        CopyStreams(target, temporary.Path());
    }
    if (const DWORD kept = exists ? attributes & KeptAttributes : 0; kept != 0) {
        SetFileAttributesW(temporary.Path().c_str(), kept); // the content counts more than its attributes
    }
    if (expected && StateOfFile(target) != expected) {
        return std::make_error_code(std::errc::resource_unavailable_try_again);
    }
    return temporary.MoveTo(target, existing);
}

} // namespace

std::optional<FileState> StateOf(const std::string& path) {
    try {
        return StateOfFile(win32::WidePath(path));
    } catch (const std::system_error&) { // of the path
        return std::nullopt;
    }
}

std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write,
                             const std::optional<FileState>& expected) {
    try {
        const std::wstring wide = win32::WidePath(path);
        if (existing != Existing::Keep && IsDevice(wide)) {
            return write(path) ? std::error_code() : std::make_error_code(std::errc::operation_canceled);
        }
        const DWORD attributes = GetFileAttributesW(wide.c_str());
        const bool link = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        const std::optional<std::wstring> target = link ? Target(wide) : wide;
        return target ? Replace(*target, existing, write, expected)
                      : std::make_error_code(std::errc::no_such_file_or_directory);
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

} // namespace tessaly
