// Counts and passes on.
#include "tests/desktop/CountedRegistry.h"

namespace tessaly::memory {

std::int32_t CountedRegistry::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) {
    mFaults.Count();
    return mRegistry.OpenKey(root, keyPath, access, key);
}

std::int32_t CountedRegistry::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                         std::uint32_t& size) {
    mFaults.Count();
    return mRegistry.QueryValue(key, valueName, type, data, size);
}

std::int32_t CountedRegistry::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access,
                                        Handle& key) {
    mFaults.Count();
    return mRegistry.CreateKey(root, keyPath, access, key);
}

std::int32_t CountedRegistry::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                       std::string_view bytes) {
    mFaults.Count();
    return mRegistry.SetValue(key, valueName, type, bytes);
}

std::int32_t CountedRegistry::CloseKey(Handle key) noexcept {
    return mRegistry.CloseKey(key);
}

} // namespace tessaly::memory
