// A registry that lives in memory; whoever reads a settings file fills it.
// A key exists as long as it or a key below it was made: the keys above one are not kept on their own.
#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <tuple>

namespace tessaly {

class RegistryStore final : public Registry {
public:
    // As Registry promises. The access rights are not looked at. A root itself can always be opened, with the
    // path "".
    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CloseKey(Handle key) noexcept override;

    // Makes a key, unless it is there, and opens it. A backslash at the end of `keyPath` does not count, here and
    // in the other operations.
    Handle CreateKey(std::uint32_t root, std::string_view keyPath);

    // Deletes a key with its values and all keys below it; nothing happens when there is none. Where one of them
    // is open its values can still be read.
    void DeleteKey(std::uint32_t root, std::string_view keyPath);

    // Stores a value as the bytes given, in place of one of the same name. Success or BadHandle, which a key
    // gives, too, that was opened by a path above the keys that were made. Throws std::length_error for 4 GB or
    // more.
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string bytes);

    // Deletes a value. Success, NotFound or BadHandle.
    std::int32_t DeleteValue(Handle key, std::string_view valueName);

    // How many keys are open.
    std::size_t OpenCount() const { return mOpen.size(); }

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

    static Place MakePlace(std::uint32_t root, std::string_view keyPath);
    bool IsAbove(const Place& place) const;
    Handle Open(std::shared_ptr<Values> values);
    Values* Find(Handle key) const;

    std::map<Place, std::shared_ptr<Values>> mKeys;
    std::map<Handle, std::shared_ptr<Values>> mOpen; // null for a key above those that were made
    Handle mLastHandle = 0;
};

} // namespace tessaly
