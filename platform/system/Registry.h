// The settings store, as the registry calls of Windows see it: RegOpenKeyExA, RegQueryValueExA, RegCreateKeyExA,
// RegSetValueExA, RegCloseKey.
// The numbers are Microsoft's, as its registry documentation gives them. Unlike there, strings are UTF-8 here,
// names and string data alike; an implementation on top of Windows converts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class Registry {
public:
    // An open key.
    using Handle = std::uintptr_t;

    // What the calls return. A call may fail with any other number that Windows has.
    static constexpr std::int32_t Success = 0;
    static constexpr std::int32_t NotFound = 2;
    static constexpr std::int32_t AccessDenied = 5;
    static constexpr std::int32_t BadHandle = 6;
    static constexpr std::int32_t MoreData = 234;

    // Types of values.
    static constexpr std::uint32_t StringType = 1; // REG_SZ
    static constexpr std::uint32_t BinaryType = 3; // REG_BINARY
    static constexpr std::uint32_t DwordType = 4;  // REG_DWORD: 4 bytes, the lowest first

    // Roots.
    static constexpr std::uint32_t ClassesRoot = 0x80000000;
    static constexpr std::uint32_t CurrentUser = 0x80000001;
    static constexpr std::uint32_t LocalMachine = 0x80000002;
    static constexpr std::uint32_t Users = 0x80000003;
    static constexpr std::uint32_t CurrentConfig = 0x80000005;

    // Access rights, to be or-ed.
    static constexpr std::uint32_t NoAccess = 0;
    static constexpr std::uint32_t QueryAccess = 1; // KEY_QUERY_VALUE
    static constexpr std::uint32_t SetAccess = 2;   // KEY_SET_VALUE

    // The bytes of a DwordType value, and back.
    static std::string DwordBytes(std::uint32_t number) {
        std::string bytes;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(number >> shift & 0xFFU);
        }
        return bytes;
    }
    static std::uint32_t DwordNumber(std::string_view bytes) {
        std::uint32_t number = 0;
        for (unsigned i = 0; i < 4; ++i) {
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << 8U * i;
        }
        return number;
    }

    virtual ~Registry() = default;

    // Opens the key `keyPath` ("SOFTWARE\Name", without regard to ASCII case) below `root` with the rights
    // `access` and options 0. Success, and `key` must then be closed; NotFound, or another error, and there is
    // nothing to close.
    virtual std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) = 0;

    // Reads the value `valueName` ("" for the default value) of an open key. `size` goes in as the size of `data` in
    // bytes, unless `data` is null, and comes out as the size of the value in bytes. A string's size counts its
    // terminating NUL if it is stored with one; nobody adds one.
    // Success: `type` and `size` are set, and the value is in `data` unless that is null.
    // MoreData: `data` is too small; `type` and `size` are set, what `data` holds is not promised.
    // NotFound, BadHandle, AccessDenied or another error: what the arguments hold is not promised.
    virtual std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                    std::uint32_t& size) = 0;

    // Opens the key `keyPath` below `root` with the rights `access`. If it is missing it is made first, with the keys
    // above it: RegCreateKeyExA with reserved 0, no class, options 0 and no security attributes. Whether the key was
    // made is not told.
    // Success, and `key` must then be closed; AccessDenied when the user may not make or open it, or another error,
    // and there is nothing to close.
    // With NoAccess a key can be had that neither gives nor takes values where rights are enforced; today's Windows
    // enforces them, an implementation need not.
    virtual std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) = 0;

    // Stores the value `valueName` ("" for the default value) of an open key, in place of one of the same name:
    // RegSetValueExA with reserved 0. `bytes` are stored as they are, a string's terminating NUL only if it is one of
    // them; DwordType wants 4.
    // Success. AccessDenied: the key was opened without SetAccess, or the user may not write there; BadHandle or
    // another error. Nothing is stored then, and the key stays open.
    virtual std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                  std::string_view bytes) = 0;

    // Closes an open key. Success or BadHandle. Never throws, so that every way out can close.
    virtual std::int32_t CloseKey(Handle key) noexcept = 0;
};

} // namespace tessaly
