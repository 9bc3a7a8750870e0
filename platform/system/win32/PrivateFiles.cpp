// What a folder is made with holds for the files in it, too: they inherit who may read them.
#include "platform/system/PrivateFiles.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Move.h"
#include "platform/system/win32/Text.h"

#include <aclapi.h>
#include <algorithm>
#include <map>
#include <memory>
#include <sddl.h>

namespace tessaly {

namespace {

using win32::Handle;
using win32::LastError;

struct LocalMemory {
    void operator()(void* memory) const { LocalFree(memory); }
};
template <class Type>
using Local = std::unique_ptr<Type, LocalMemory>;

std::error_code NotPermitted() {
    return std::make_error_code(std::errc::operation_not_permitted);
}

// What this process has as `kind`, a structure that begins with a SID: its user, or who owns what it makes.
std::vector<char> OfThisProcess(TOKEN_INFORMATION_CLASS kind) {
    HANDLE open = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &open) == 0) {
        win32::ThrowLastError("token");
    }
    const Handle token(open);
    DWORD size = 0;
    GetTokenInformation(token.Get(), kind, nullptr, 0, &size);
    std::vector<char> information(size);
    if (GetTokenInformation(token.Get(), kind, information.data(), size, &size) == 0) {
        win32::ThrowLastError("token");
    }
    return information;
}

PSID Sid(const std::vector<char>& information) {
    return *reinterpret_cast<const PSID*>(information.data());
}

// Full access for the user, for those who own what the user makes, and for the system; none inherited from above.
Local<void> ForUserAlone() {
    std::string rights = "D:P(A;OICI;FA;;;SY)";
    for (const TOKEN_INFORMATION_CLASS kind : {TokenUser, TokenOwner}) {
        LPSTR text = nullptr;
        if (ConvertSidToStringSidA(Sid(OfThisProcess(kind)), &text) == 0) {
            win32::ThrowLastError("user");
        }
        const Local<char> owned(text);
        rights += std::string("(A;OICI;FA;;;") + text + ")";
    }
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorA(rights.c_str(), SDDL_REVISION_1, &descriptor, nullptr) ==
        0) {
        win32::ThrowLastError("rights");
    }
    return Local<void>(descriptor);
}

bool IsOwn(const std::wstring& folder) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = folder;
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr,
                              nullptr, &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const Local<void> owned(descriptor);
    return EqualSid(owner, Sid(OfThisProcess(TokenUser))) != 0 || EqualSid(owner, Sid(OfThisProcess(TokenOwner))) != 0;
}

// A folder of the user's own, and no link.
bool IsOwnFolder(const std::wstring& folder, DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 &&
           IsOwn(folder);
}

void MakeFoldersAbove(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L"\\/");
    const std::wstring above = end == std::wstring::npos ? L"" : path.substr(0, end);
    if (above.empty() || GetFileAttributesW(above.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return;
    }
    MakeFoldersAbove(above);
    CreateDirectoryW(above.c_str(), nullptr); // where this fails the next one does
}

std::error_code MakeFolderFor(const std::wstring& folder, PSECURITY_DESCRIPTOR rights) {
    MakeFoldersAbove(folder);
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, rights, FALSE};
    if (CreateDirectoryW(folder.c_str(), &attributes) != 0) {
        return {};
    }
    const std::error_code error = LastError();
    if (error.value() != ERROR_ALREADY_EXISTS) {
        return error;
    }
    if (!IsOwnFolder(folder, GetFileAttributesW(folder.c_str()))) {
        return NotPermitted();
    }
    return SetFileSecurityW(folder.c_str(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, rights) !=
                   0
               ? std::error_code()
               : LastError();
}

std::uint64_t Number(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32U | low;
}

struct FindEnd {
    void operator()(void* search) const { FindClose(search); }
};

std::error_code WriteAll(const Handle& file, std::string_view bytes, Flushing flushing) {
    constexpr std::size_t mostAtOnce = 1U << 30U;
    while (!bytes.empty()) {
        DWORD count = 0;
        if (WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), mostAtOnce)), &count,
                      nullptr) == 0) {
            return LastError();
        }
        bytes.remove_prefix(count);
    }
    const bool isFilled =
        SetEndOfFile(file.Get()) != 0 && (flushing == Flushing::Later || FlushFileBuffers(file.Get()) != 0);
    return isFilled ? std::error_code() : LastError();
}

// Makes the file `temporary`, fills it and gives it the name `path`. After an error it is gone.
std::error_code Fill(const std::wstring& temporary, DWORD attributes, const std::wstring& path, std::string_view bytes,
                     Flushing flushing) {
    Handle file(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
    if (!file) {
        return LastError();
    }
    std::error_code error = WriteAll(file, bytes, flushing);
    if (!error && !file.Close()) {
        error = LastError();
    }
    if (!error) {
        const DWORD through = flushing == Flushing::Now ? MOVEFILE_WRITE_THROUGH : 0U;
        error = win32::Move(temporary, path, MOVEFILE_REPLACE_EXISTING | through);
    }
    if (error) {
        file.Close();
        DeleteFileW(temporary.c_str());
    }
    return error;
}

std::size_t NameIn(const std::wstring& path) {
    return path.find_last_of(L"\\/:") + 1;
}

// A name with a dot in front is hidden.
DWORD AttributesOf(const std::wstring& path) {
    return path.substr(NameIn(path), 1) == L"." ? FILE_ATTRIBUTE_HIDDEN : FILE_ATTRIBUTE_NORMAL;
}

} // namespace

struct SystemPrivateFiles::OpenFiles {
    std::map<std::string, Handle> files;
};

SystemPrivateFiles::SystemPrivateFiles() : mOpen(std::make_unique<OpenFiles>()) {}

SystemPrivateFiles::~SystemPrivateFiles() = default;

std::error_code SystemPrivateFiles::MakeFolder(const std::string& folder) {
    try {
        return MakeFolderFor(win32::WidePath(folder), ForUserAlone().get());
    } catch (const std::system_error& error) {
        return error.code();
    }
}

std::error_code SystemPrivateFiles::List(const std::string& folder, std::vector<FolderEntry>& entries) const {
    entries.clear();
    try {
        const std::wstring wide = win32::WidePath(folder);
        const DWORD attributes = GetFileAttributesW(wide.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            const std::error_code error = LastError();
            return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
        }
        if (!IsOwnFolder(wide, attributes)) {
            return NotPermitted();
        }
        WIN32_FIND_DATAW found = {};
        HANDLE search = FindFirstFileW((wide + L"\\*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) {
            return LastError();
        }
        const std::unique_ptr<void, FindEnd> closed(search);
        do {
            if ((found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0) {
                const FILETIME& time = found.ftLastWriteTime;
                entries.push_back({win32::ToUtf8(found.cFileName), Number(found.nFileSizeHigh, found.nFileSizeLow),
                                   static_cast<std::int64_t>(Number(time.dwHighDateTime, time.dwLowDateTime))});
            }
        } while (FindNextFileW(search, &found) != 0);
        return GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
    } catch (const std::system_error& error) {
        return error.code();
    }
}

// Each call for a file takes a while, so none is made that is not needed.
std::error_code SystemPrivateFiles::Write(const std::string& path, std::string_view bytes, Flushing flushing) {
    try {
        const std::wstring wide = win32::WidePath(path);
        static std::uint64_t number = 0;
        const std::wstring temporary = wide.substr(0, NameIn(wide)) + L".psf-" +
                                       std::to_wstring(GetCurrentProcessId()) + L"-" +
                                       std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(++number) + L".tmp";
        return Fill(temporary, AttributesOf(wide), wide, bytes, flushing);
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

std::error_code SystemPrivateFiles::Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) {
    try {
        const std::wstring wide = win32::WidePath(path);
        Handle& file = mOpen->files[path];
        if (!file) {
            file = Handle(CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                      AttributesOf(wide), nullptr));
        }
        return file && SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) == 0 ? WriteAll(file, bytes, flushing)
                                                                               : LastError();
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

std::error_code SystemPrivateFiles::Flush(const std::string& path) {
    try {
        constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const Handle file(
            CreateFileW(win32::WidePath(path).c_str(), GENERIC_WRITE, shareAll, nullptr, OPEN_EXISTING, 0, nullptr));
        return file && FlushFileBuffers(file.Get()) != 0 ? std::error_code() : LastError();
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

std::error_code SystemPrivateFiles::Remove(const std::string& path) {
    try {
        mOpen->files.erase(path);
        if (DeleteFileW(win32::WidePath(path).c_str()) != 0) {
            return {};
        }
        const std::error_code error = LastError();
        return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
    } catch (const std::system_error& error) { // of the path
        return error.code();
    }
}

std::optional<std::string> SystemPrivateFiles::ProcessStart(std::uint64_t id) const {
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(id)));
    if (!process) { // one that may not be looked at is somebody else's, and never a window of this user
        return std::nullopt;
    }
    DWORD exitCode = 0;
    FILETIME start = {};
    FILETIME ignored = {};
    if (GetExitCodeProcess(process.Get(), &exitCode) == 0 || exitCode != STILL_ACTIVE ||
        GetProcessTimes(process.Get(), &start, &ignored, &ignored, &ignored) == 0) {
        return std::nullopt;
    }
    return std::to_string(Number(start.dwHighDateTime, start.dwLowDateTime));
}

std::uint64_t OwnProcess() {
    return GetCurrentProcessId();
}

std::vector<std::string> RecoveryFolders(const Environment& environment) {
    const std::string below = "\\Ostrel\\Tessaly\\Recovery";
    std::wstring temporary(MAX_PATH + 1, L'\0');
    temporary.resize(GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data()));
    temporary.resize(temporary.find_last_not_of(L'\\') + 1);
    const std::string local = environment("LOCALAPPDATA").value_or("");
    std::vector<std::string> folders;
    if (!local.empty()) {
        folders.push_back(local + below);
    }
    folders.push_back(win32::ToUtf8(temporary) + below);
    return folders;
}

} // namespace tessaly
