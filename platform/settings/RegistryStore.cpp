// Keys stand in one sorted map, so those below a key are one run of it, however deep they lie.
#include "platform/settings/RegistryStore.h"

#include "platform/text/Ascii.h"

#include <limits>
#include <stdexcept>
#include <utility>

namespace tessaly {

namespace {

constexpr char Backslash = '\\';

// The character behind the backslash: a path that ends in it is behind all paths with the backslash instead.
constexpr char BehindBackslash = Backslash + 1;

} // namespace

std::int32_t RegistryStore::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    const Place place = MakePlace(root, keyPath);
    if (!mKeys.contains(place) && !IsAbove(place)) {
        return NotFound;
    }
    key = Open(root, keyPath, access);
    return Success;
}

std::int32_t RegistryStore::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                       std::uint32_t& size) {
    Values* values = nullptr;
    if (const std::int32_t error = Find(key, QueryAccess, values); error != Success) {
        return error;
    }
    const auto value = values->find(SmallLetters(valueName));
    if (value == values->end()) {
        return NotFound;
    }
    const std::string& bytes = value->second.bytes;
    const std::uint32_t room = std::exchange(size, static_cast<std::uint32_t>(bytes.size()));
    type = value->second.type;
    if (data != nullptr && room < bytes.size()) {
        return MoreData;
    }
    if (data != nullptr) {
        bytes.copy(data, bytes.size());
    }
    return Success;
}

bool RegistryStore::Holds(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) const {
    Values* values = nullptr;
    if (Find(key, QueryAccess, values) != Success) {
        return false;
    }
    const auto value = values->find(SmallLetters(valueName));
    return value != values->end() && value->second.type == type && value->second.bytes == bytes;
}

std::int32_t RegistryStore::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    key = Open(root, keyPath, access);
    return Success;
}

std::int32_t RegistryStore::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                     std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("registry value");
    }
    Values* values = nullptr;
    if (const std::int32_t error = Find(key, SetAccess, values); error != Success) {
        return error;
    }
    (*values)[SmallLetters(valueName)] = {type, std::string(bytes)};
    return Success;
}

std::int32_t RegistryStore::CloseKey(Handle key) noexcept {
    return mOpen.erase(key) == 1 ? Success : BadHandle;
}

void RegistryStore::DeleteKey(std::uint32_t root, std::string_view keyPath) {
    const Place place = MakePlace(root, keyPath);
    if (place.path.empty()) {
        std::erase_if(mKeys, [root](const auto& key) { return key.first.root == root; });
        return;
    }
    mKeys.erase(place);
    mKeys.erase(mKeys.lower_bound({root, place.path + Backslash}),
                mKeys.lower_bound({root, place.path + BehindBackslash}));
}

std::int32_t RegistryStore::DeleteValue(Handle key, std::string_view valueName) {
    Values* values = nullptr;
    if (const std::int32_t error = Find(key, SetAccess, values); error != Success) {
        return error;
    }
    return values->erase(SmallLetters(valueName)) == 1 ? Success : NotFound;
}

void RegistryStore::ChangeStrings(const std::function<void(std::string& bytes)>& change) {
    for (const auto& [place, values] : mKeys) {
        for (auto& [name, value] : *values) {
            if (value.type == StringType) {
                change(value.bytes);
            }
        }
    }
}

const RegistryStore::KeyName* RegistryStore::NameOf(Handle key) const {
    const auto open = mOpen.find(key);
    return open != mOpen.end() ? &open->second.name : nullptr;
}

RegistryStore::Place RegistryStore::MakePlace(std::uint32_t root, std::string_view keyPath) {
    keyPath.remove_suffix(keyPath.ends_with(Backslash) ? 1 : 0);
    return {root, SmallLetters(keyPath)};
}

// Whether `place` is a root or a key was made below it.
bool RegistryStore::IsAbove(const Place& place) const {
    if (place.path.empty()) {
        return true;
    }
    const std::string below = place.path + Backslash;
    const auto next = mKeys.lower_bound({place.root, below});
    return next != mKeys.end() && next->first.root == place.root && next->first.path.starts_with(below);
}

// Opens the key, which is made unless it is there.
Registry::Handle RegistryStore::Open(std::uint32_t root, std::string_view keyPath, std::uint32_t access) {
    std::shared_ptr<Values>& values = mKeys[MakePlace(root, keyPath)];
    if (!values) {
        values = std::make_shared<Values>();
    }
    mOpen.emplace(mLastHandle + 1, OpenedKey{values, access, {root, std::string(keyPath)}});
    return ++mLastHandle;
}

// Finds the values of an open key for an operation that wants `right`; an error leaves `values` alone.
std::int32_t RegistryStore::Find(Handle key, std::uint32_t right, Values*& values) const {
    const auto open = mOpen.find(key);
    if (open == mOpen.end()) {
        return BadHandle;
    }
    if (mRights == AccessRights::Enforced && (open->second.access & right) == 0) {
        return AccessDenied;
    }
    values = open->second.values.get();
    return Success;
}

} // namespace tessaly
