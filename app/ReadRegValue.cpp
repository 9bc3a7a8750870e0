// Two queries for every value: the first learns type and size, the second fetches it.
#include "app/Settings.h"
#include "platform/system/Registry.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <array>
#include <exception>

namespace tessaly {

namespace {

// No setting is as long as this; a size above it is what a failed query has left behind.
constexpr std::uint32_t LargestString = 16 * 1024 * 1024;

class OpenedKey {
public:
    OpenedKey(Registry& registry, Registry::Handle key) : mRegistry(registry), mKey(key) {}
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() { mRegistry.CloseKey(mKey); }

    std::int32_t Query(std::string_view valueName, std::uint32_t& type, char* data, std::uint32_t& size) const {
        return mRegistry.QueryValue(mKey, valueName, type, data, size);
    }

private:
    Registry& mRegistry;
    Registry::Handle mKey;
};

// Removes the last character. It is a single byte where strings are ANSI; here it may have up to four.
void DropLastCharacter(std::string& text) {
    const std::size_t nearest = text.size() - std::min<std::size_t>(text.size(), 4);
    for (std::size_t start = nearest; start + 1 < text.size(); ++start) {
        std::size_t end = start;
        if (ReadUtf8(text, end) != NotACharacter && end == text.size()) {
            text.resize(start);
            return;
        }
    }
    text.pop_back();
}

// `size` is that of the first query: what the second one says, and whether it works, does not count.
std::string ReadString(const OpenedKey& key, std::string_view valueName, std::uint32_t size) {
    if (size == 0 || size > LargestString) {
        return "";
    }
    std::string text(size, '\0');
    std::uint32_t type = 0;
    std::uint32_t room = size;
    key.Query(valueName, type, text.data(), room);
    DropLastCharacter(text);
    return text;
}

std::string ReadNumber(const OpenedKey& key, std::string_view valueName) {
    std::array<char, 4> bytes = {};
    std::uint32_t type = 0;
    auto room = static_cast<std::uint32_t>(bytes.size());
    if (key.Query(valueName, type, bytes.data(), room) != Registry::Success) {
        return "";
    }
    return std::to_string(static_cast<std::int32_t>(Registry::DwordNumber({bytes.data(), bytes.size()})));
}

std::string ReadValue(const OpenedKey& key, std::string_view valueName) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    key.Query(valueName, type, nullptr, size);
    switch (type) {
    case Registry::StringType:
        return ReadString(key, valueName, size);
    case Registry::DwordType:
        return ReadNumber(key, valueName);
    default:
        return "";
    }
}

} // namespace

std::string ReadRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view valueName) {
    try {
        Registry::Handle handle = 0;
        if (registry.OpenKey(root, keyPath, Registry::QueryAccess, handle) != Registry::Success) {
            return "";
        }
        const OpenedKey key(registry, handle);
        return ReadValue(key, valueName);
    } catch (const std::exception&) {
        return ""; // a setting that cannot be read is one that is not set
    }
}

} // namespace tessaly
