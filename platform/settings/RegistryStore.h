// A registry that lives in memory; whoever reads a settings file fills it.
// A key exists as long as it or a key below it was made or opened: the keys above one are not kept on their own.
#pragma once

#include "platform/system/Registry.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>

namespace tessaly {

class RegistryStore : public Registry {
public:
    // Whether the rights that a key was opened with count.
    enum class AccessRights {
        Ignored,  // every open key can be read and written, as a settings file of the user's own can
        Enforced, // as on Windows: reading wants QueryAccess, writing SetAccess, and neither comes by itself
    };

    explicit RegistryStore(AccessRights rights = AccessRights::Ignored) : mRights(rights) {}

    // As Registry promises. Any key can be opened and made with any rights, so CreateKey always succeeds. A root itself
    // can always be opened, with the path "". A backslash at the end of `keyPath` does not count, here and in the other
    // operations. SetValue throws std::length_error for 4 GB or more.
    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

    // Deletes a key with its values and all keys below it; nothing happens when there is none. Where one of them
    // is open its values can still be read, and what is written to it is lost.
    void DeleteKey(std::uint32_t root, std::string_view keyPath);

    // Deletes a value. Success, NotFound or BadHandle; AccessDenied without SetAccess where that counts.
    std::int32_t DeleteValue(Handle key, std::string_view valueName);

    // Whether an open key has that value, of that type and with those bytes.
    bool Holds(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) const;

    // Calls `change` with the bytes of every string value, its terminating NUL included.
    void ChangeStrings(const std::function<void(std::string& bytes)>& change);

    // How many keys are open.
    std::size_t OpenCount() const { return mOpen.size(); }

protected:
    // A key as whoever opened it called it.
    struct KeyName {
        std::uint32_t root = 0;
        std::string path;
    };

    // The name of an open key; null for a handle that is not open.
    const KeyName* NameOf(Handle key) const;

private:
    struct Value {
        std::uint32_t type = 0;
        std::string bytes;
    };
    // A place in the registry; the path is folded.
    struct Place {
        std::uint32_t root = 0;
        std::string path;
        bool operator<(const Place& other) const { return std::tie(root, path) < std::tie(other.root, other.path); }
    };
    using Values = std::map<std::string, Value, std::less<>>; // by folded name
    struct OpenedKey {
        std::shared_ptr<Values> values;
        std::uint32_t access = NoAccess;
        KeyName name;
    };

    static Place MakePlace(std::uint32_t root, std::string_view keyPath);
    bool IsAbove(const Place& place) const;
    Handle Open(std::uint32_t root, std::string_view keyPath, std::uint32_t access);
    std::int32_t Find(Handle key, std::uint32_t right, Values*& values) const;

    std::map<Place, std::shared_ptr<Values>> mKeys;
    std::map<Handle, OpenedKey> mOpen;
    Handle mLastHandle = 0;
    AccessRights mRights;
};

} // namespace tessaly
