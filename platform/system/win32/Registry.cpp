// Access rights are passed on as they come. A key that was made with none refuses to be written, and so it should.
#include "platform/system/win32/Registry.h"

#include "platform/system/CodePages.h"

#include <algorithm>
#include <windows.h>

namespace tessaly::win32 {

namespace {

static_assert(tessaly::Registry::Success == ERROR_SUCCESS && tessaly::Registry::NotFound == ERROR_FILE_NOT_FOUND);
static_assert(tessaly::Registry::AccessDenied == ERROR_ACCESS_DENIED &&
              tessaly::Registry::BadHandle == ERROR_INVALID_HANDLE);
static_assert(tessaly::Registry::MoreData == ERROR_MORE_DATA);
static_assert(tessaly::Registry::StringType == REG_SZ && tessaly::Registry::BinaryType == REG_BINARY);
static_assert(tessaly::Registry::QueryAccess == KEY_QUERY_VALUE && tessaly::Registry::SetAccess == KEY_SET_VALUE);

// In 64 bits the roots are sign-extended, as the Windows headers write them.
HKEY Root(std::uint32_t root) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the roots are numbers
    return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(static_cast<std::int32_t>(root)));
}

HKEY Key(tessaly::Registry::Handle key) {
    return reinterpret_cast<HKEY>(key); // NOLINT(performance-no-int-to-ptr): it was one before
}

bool IsText(std::uint32_t type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Reads a whole value as it is stored, as a rule in one call.
LSTATUS ReadWhole(HKEY key, const std::string& name, DWORD& type, std::string& bytes) {
    LSTATUS error = ERROR_MORE_DATA;
    DWORD size = 512; // more than most values have
    while (error == ERROR_MORE_DATA) {
        bytes.resize(size);
        error = RegQueryValueExA(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size);
    }
    if (error == ERROR_SUCCESS) {
        bytes.resize(size);
    }
    return error;
}

} // namespace

Registry::Registry() : mCodePage(MakeSystemCodePage()) {}

std::string Registry::Ansi(std::string_view text) const {
    std::string bytes;
    mCodePage->AppendEncoded(text, bytes);
    return bytes;
}

std::int32_t Registry::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    HKEY opened = nullptr;
    const LSTATUS error = RegOpenKeyExA(Root(root), Ansi(keyPath).c_str(), 0, access, &opened);
    if (error == ERROR_SUCCESS) {
        key = reinterpret_cast<Handle>(opened);
    }
    return error;
}

std::int32_t Registry::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                  std::uint32_t& size) {
    DWORD storedType = REG_NONE;
    std::string bytes;
    const LSTATUS error = ReadWhole(Key(key), Ansi(valueName), storedType, bytes);
    if (error != ERROR_SUCCESS) {
        return error;
    }
    if (IsText(storedType)) {
        std::string text;
        mCodePage->AppendDecoded(bytes, text);
        bytes = std::move(text);
    }
    const std::uint32_t room = size;
    type = storedType;
    size = static_cast<std::uint32_t>(bytes.size());
    if (data == nullptr) {
        return Success;
    }
    if (room < size) {
        return MoreData;
    }
    std::copy(bytes.begin(), bytes.end(), data);
    return Success;
}

std::int32_t Registry::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    HKEY opened = nullptr;
    DWORD disposition = 0;
    const LSTATUS error =
        RegCreateKeyExA(Root(root), Ansi(keyPath).c_str(), 0, nullptr, 0, access, nullptr, &opened, &disposition);
    if (error == ERROR_SUCCESS) {
        key = reinterpret_cast<Handle>(opened);
    }
    return error;
}

std::int32_t Registry::SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) {
    std::string stored = IsText(type) ? Ansi(bytes) : std::string(bytes);
    const auto size = static_cast<DWORD>(stored.size());
    stored += '.'; // Windows takes a NUL that stands behind a text for one that somebody forgot to count
    return RegSetValueExA(Key(key), Ansi(valueName).c_str(), 0, type, reinterpret_cast<const BYTE*>(stored.data()),
                          size);
}

std::int32_t Registry::CloseKey(Handle key) noexcept {
    return RegCloseKey(Key(key));
}

} // namespace tessaly::win32
