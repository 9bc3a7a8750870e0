// Keys stand in one sorted map, so those below a key are one run of it, however deep they lie.
#include "platform/settings/RegistryStore.h"

namespace tessaly {

std::int32_t RegistryStore::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    const Key wanted(root, keyPath);
    const auto [first, last] = Below(wanted);
    return wanted.path.empty() || keys.contains(wanted) || first != last ? CreateKey(root, keyPath, access, key)
                                                                         : NotFound;
}

std::int32_t RegistryStore::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                       std::uint32_t& size) {
    const Key* const opened = OpenedAs(key);
    if (opened == nullptr) {
        return BadHandle;
    }
    const Value* const value = Find(*opened, valueName);
    if (value == nullptr) {
        return NotFound;
    }
    const std::uint32_t room = std::exchange(size, static_cast<std::uint32_t>(value->bytes.size()));
    type = value->type;
    if (data != nullptr && room < size) {
        return MoreData;
    }
    if (data != nullptr) {
        value->bytes.copy(data, size);
    }
    return Success;
}

std::int32_t RegistryStore::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t /*access*/,
                                      Handle& key) {
    const Key made(root, keyPath);
    keys[made];
    mOpen.emplace(++mLastHandle, made);
    key = mLastHandle;
    return Success;
}

std::int32_t RegistryStore::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                     std::string_view bytes) {
    const Key* const opened = OpenedAs(key);
    if (opened == nullptr) {
        return BadHandle;
    }
    keys[*opened][std::string(valueName)] = {type, std::string(bytes)};
    return Success;
}

std::int32_t RegistryStore::CloseKey(Handle key) noexcept {
    return mOpen.erase(key) == 1 ? Success : BadHandle;
}

const RegistryStore::Value* RegistryStore::Find(const Key& key, std::string_view valueName) const {
    const auto values = keys.find(key);
    if (values == keys.end()) {
        return nullptr;
    }
    const auto value = values->second.find(valueName);
    return value != values->second.end() ? &value->second : nullptr;
}

void RegistryStore::DeleteKey(const Key& key) {
    const auto [first, last] = Below(key);
    keys.erase(first, last);
    keys.erase(key);
}

const RegistryStore::Key* RegistryStore::OpenedAs(Handle key) const {
    const auto opened = mOpen.find(key);
    return opened != mOpen.end() ? &opened->second : nullptr;
}

// From the first key below `key` to behind the last. All keys of a root are below it, and itself is the first.
std::pair<RegistryStore::Keys::iterator, RegistryStore::Keys::iterator> RegistryStore::Below(const Key& key) {
    Key first = key;
    Key last = key;
    if (key.path.empty()) {
        ++last.root;
    } else {
        first.path += '\\';
        last.path += static_cast<char>('\\' + 1);
    }
    return {keys.lower_bound(first), keys.lower_bound(last)};
}

} // namespace tessaly
