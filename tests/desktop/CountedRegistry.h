// A registry whose calls count among those of the desktop; all but CloseKey, which may not throw.
#pragma once

#include "platform/system/Registry.h"
#include "tests/desktop/Faults.h"

namespace tessaly::memory {

class CountedRegistry final : public tessaly::Registry {
public:
    CountedRegistry(Faults& faults, tessaly::Registry& registry) : mFaults(faults), mRegistry(registry) {}

    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

private:
    Faults& mFaults;
    tessaly::Registry& mRegistry;
};

} // namespace tessaly::memory
