// A registry that lives in memory; whoever reads a settings file fills it.
// A key is there when it or a key below it is in `keys`. Everybody may read and write: access rights do not count.
#pragma once

#include "platform/system/Registry.h"
#include "platform/text/Ascii.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace tessaly {

class RegistryStore : public Registry {
public:
    struct Value {
        std::uint32_t type = 0;
        std::string bytes;
        bool operator==(const Value&) const = default;
    };
    using Values = std::map<std::string, Value, LessIgnoringCase>; // by name

    struct Key {
        std::uint32_t root = 0;
        std::string path;

        // A backslash at the end of `keyPath` does not count.
        Key(std::uint32_t keyRoot, std::string_view keyPath)
            : root(keyRoot),
              path(keyPath.substr(0, keyPath.size() - (keyPath.ends_with('\\') ? 1 : 0))) {}
        bool operator<(const Key& other) const {
            return root != other.root ? root < other.root : LessIgnoringCase()(path, other.path);
        }
    };

    // As Registry promises. CreateKey always succeeds, and so does OpenKey for a root itself, whose path is "".
    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

    using Keys = std::map<Key, Values>;

    // A value, or null when there is none.
    const Value* Find(const Key& key, std::string_view valueName) const;

    // Deletes a key with its values and all keys below it; nothing happens when there is none.
    void DeleteKey(const Key& key);

    Keys keys;

protected:
    // An open key as whoever opened it called it; null for a handle that is not open.
    const Key* OpenedAs(Handle key) const;

private:
    std::pair<Keys::iterator, Keys::iterator> Below(const Key& key);

    std::map<Handle, Key> mOpen;
    Handle mLastHandle = 0;
};

} // namespace tessaly
