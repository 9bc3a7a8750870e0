// Values of a registry in a form that tests can compare.
#pragma once

#include "platform/system/Registry.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tessaly {

// "type:bytes" of a value, the bytes in hexadecimal, or "missing" or "no key".
inline std::string ValueIn(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view name) {
    Registry::Handle key = 0;
    if (registry.OpenKey(root, keyPath, Registry::QueryAccess, key) != Registry::Success) {
        return "no key";
    }
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    std::string text = "missing";
    if (registry.QueryValue(key, name, type, nullptr, size) == Registry::Success) {
        std::string bytes(size, '\0');
        EXPECT_EQ(registry.QueryValue(key, name, type, bytes.data(), size), Registry::Success);
        text = std::to_string(type) + ":";
        for (const char byte : bytes) {
            constexpr std::string_view digits = "0123456789abcdef";
            text += digits[static_cast<unsigned char>(byte) >> 4U];
            text += digits[static_cast<unsigned char>(byte) & 0xFU];
        }
    }
    EXPECT_EQ(registry.CloseKey(key), Registry::Success);
    return text;
}

} // namespace tessaly
