// Keys stand in one sorted map, so those below a key are one run of it, however deep they lie.
#include "platform/RegistryStore.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace tessaly {

namespace {

constexpr char Backslash = '\\';

// The character behind the backslash: a path that ends in it is behind all paths with the backslash instead.
constexpr char BehindBackslash = Backslash + 1;

std::string FoldAscii(std::string_view text) {
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return folded;
}

} // namespace

std::int32_t RegistryStore::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t, Handle& key) {
    const Place place = MakePlace(root, keyPath);
    const auto found = mKeys.find(place);
    if (found == mKeys.end() && !IsAbove(place)) {
        return NotFound;
    }
    key = Open(found == mKeys.end() ? nullptr : found->second);
    return Success;
}

std::int32_t RegistryStore::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                       std::uint32_t& size) {
    if (!mOpen.contains(key)) {
        return BadHandle;
    }
    const Values* values = Find(key);
    const auto value = values != nullptr ? values->find(FoldAscii(valueName)) : Values::const_iterator();
    if (values == nullptr || value == values->end()) {
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

std::int32_t RegistryStore::CloseKey(Handle key) noexcept {
    return mOpen.erase(key) == 1 ? Success : BadHandle;
}

Registry::Handle RegistryStore::CreateKey(std::uint32_t root, std::string_view keyPath) {
    std::shared_ptr<Values>& values = mKeys[MakePlace(root, keyPath)];
    if (!values) {
        values = std::make_shared<Values>();
    }
    return Open(values);
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

std::int32_t RegistryStore::SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string bytes) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("registry value");
    }
    Values* values = Find(key);
    if (values == nullptr) {
        return BadHandle;
    }
    (*values)[FoldAscii(valueName)] = {type, std::move(bytes)};
    return Success;
}

std::int32_t RegistryStore::DeleteValue(Handle key, std::string_view valueName) {
    Values* values = Find(key);
    if (values == nullptr) {
        return BadHandle;
    }
    return values->erase(FoldAscii(valueName)) == 1 ? Success : NotFound;
}

RegistryStore::Place RegistryStore::MakePlace(std::uint32_t root, std::string_view keyPath) {
    keyPath.remove_suffix(keyPath.ends_with(Backslash) ? 1 : 0);
    return {root, FoldAscii(keyPath)};
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

Registry::Handle RegistryStore::Open(std::shared_ptr<Values> values) {
    mOpen.emplace(mLastHandle + 1, std::move(values));
    return ++mLastHandle;
}

RegistryStore::Values* RegistryStore::Find(Handle key) const {
    const auto open = mOpen.find(key);
    return open != mOpen.end() ? open->second.get() : nullptr;
}

} // namespace tessaly
