// What the tests of the registry share: a file's text, and values in a form that can be compared.
#pragma once

#include "platform/system/Registry.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tessaly {

inline constexpr std::string_view First = "Windows Registry Editor Version 5.00\n";

// The UTF-16LE bytes of ASCII text.
inline std::string Wide(std::string_view text) {
    std::string bytes;
    for (const char character : text) {
        bytes += character;
        bytes += '\0';
    }
    return bytes;
}

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
