// Reading puts what stands in the file straight into the store. Changing replaces the bytes of the value. Then the new
// file is read as by every reader, to see whether that worked.
#include "platform/settings/RegistryText.h"

#include "platform/settings/RegistryScan.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

// The byte order marks. A file with neither is UTF-8.
constexpr std::string_view Utf8Bom = "\xEF\xBB\xBF";
constexpr std::string_view Utf16Bom = "\xFF\xFE";

// A file whose bytes can be replaced where something stands in its text.
class File {
public:
    explicit File(std::string_view bytes) : mBytes(bytes), mIsWide(Take(bytes, Utf16Bom)) {
        Take(bytes, mIsWide ? "" : Utf8Bom);
        mFront = mBytes.size() - bytes.size();
        mHalf = mIsWide ? bytes.size() % 2 : 0;
        bytes.remove_suffix(mHalf);
        mText = mIsWide ? DecodeUtf16(bytes) : std::string(bytes);
    }

    const std::string& Text() const { return mText; }

    // What stands for a single byte at the end of UTF-16. That is no part of the text and stays at the end.
    std::string_view Half() const { return std::string_view(&BrokenCharacter, mHalf); }

    // The bytes of the file with `part` in place of what stands from `start` to `end` in the text.
    std::string With(std::size_t start, std::size_t end, std::string_view part) const {
        std::string changed(mBytes.substr(0, Place(start)));
        return changed.append(Encoded(part)).append(mBytes.substr(Place(end)));
    }

private:
    std::string Encoded(std::string_view text) const { return mIsWide ? EncodeUtf16(text) : std::string(text); }
    std::size_t Place(std::size_t position) const {
        return mFront + Encoded(std::string_view(mText).substr(0, position)).size();
    }

    std::string_view mBytes;
    bool mIsWide;
    std::size_t mFront = 0; // bytes in front of the text
    std::size_t mHalf = 0;
    std::string mText;
};

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character == '"' || character == '\\' ? std::string("\\") + character : std::string(1, character);
    }
    return quoted + '"';
}

void AppendHex(std::uint32_t number, unsigned digits, std::string& text) {
    while (digits-- > 0) {
        text += "0123456789abcdef"[number >> (4U * digits) & 0xFU];
    }
}

std::string HexValue(std::uint32_t type, std::string_view bytes) {
    std::string text = "hex";
    if (type != Registry::BinaryType) {
        text += '(';
        AppendHex(type, type > 0xF ? 8 : 1, text);
        text += ')';
    }
    text += ':';
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += i > 0 ? "," : "";
        AppendHex(static_cast<unsigned char>(bytes[i]), 2, text);
    }
    return text;
}

// How a file writes the value.
std::string ValueText(const RegistryStore::Value& value) {
    const std::string_view bytes = value.bytes;
    if (value.type == Registry::DwordType && bytes.size() == 4) {
        std::string text = "dword:";
        AppendHex(Registry::DwordNumber(bytes), 8, text);
        return text;
    }
    if (value.type != Registry::StringType) {
        return HexValue(value.type, bytes);
    }
    const std::size_t special = bytes.find_first_of(std::string_view("\0\r\n", 3));
    const bool isPlain = special + 1 == bytes.size() && bytes.ends_with('\0');
    return isPlain ? Quoted(bytes.substr(0, special)) : HexValue(value.type, EncodeUtf16(bytes));
}

bool IsSame(const RegistryStore::Key& a, const RegistryStore::Key& b) {
    return !(a < b) && !(b < a);
}

// The last value of that name, and the end of the last key of that path, 0 when there is none.
struct Found {
    std::optional<std::pair<std::size_t, std::size_t>> value; // from and to
    std::size_t keyEnd = 0;
};

Found Find(std::string_view text, const RegistryStore::Key& key, std::string_view name) {
    Found found;
    bool isInside = false;
    for (RegistryScanner scanner(text); scanner.Next();) {
        const RegistryEntry& entry = scanner.Entry();
        if (entry.isKey) {
            isInside = entry.error.empty() && !entry.deletes && IsSame({entry.root, entry.path}, key);
        } else if (isInside && entry.name && EqualsIgnoringCase(*entry.name, name)) {
            found.value = {entry.valueStart, entry.valueEnd};
        }
        found.keyEnd = isInside ? entry.end : found.keyEnd;
    }
    return found;
}

// Whether readers of `file` find the value.
bool Holds(const std::string& file, const RegistryStore::Key& key, std::string_view name,
           const RegistryStore::Value& value) {
    RegistryStore store;
    ReadRegistryText(file, store);
    const RegistryStore::Value* const found = store.Find(key, name);
    return found != nullptr && *found == value;
}

} // namespace

std::vector<RegistryTextError> ReadRegistryText(std::string_view bytes, RegistryStore& store) {
    const File file(bytes);
    const std::string text = file.Text() + std::string(file.Half());
    std::vector<RegistryTextError> errors;
    RegistryStore::Values* values = nullptr; // of the key that the lines are below
    for (RegistryScanner scanner(text); scanner.Next();) {
        const RegistryEntry& entry = scanner.Entry();
        // The values below a key that cannot be read must not end up in the key before it.
        values = entry.isKey ? nullptr : values;
        if (!entry.error.empty()) {
            errors.push_back({entry.number, entry.error});
        } else if (entry.isKey && entry.deletes) {
            store.DeleteKey({entry.root, entry.path});
        } else if (entry.isKey) {
            values = &store.keys[{entry.root, entry.path}];
        } else if (values != nullptr && entry.deletes) {
            values->erase(*entry.name);
        } else if (values != nullptr) {
            (*values)[*entry.name] = {entry.type, entry.bytes};
        }
    }
    return errors;
}

std::optional<std::string> SetInRegistryText(std::string_view bytes, const RegistryStore::Key& key,
                                             std::string_view name, const RegistryStore::Value& value) {
    const auto* const root = std::find_if(RegistryRoots.begin(), RegistryRoots.end(),
                                          [&key](const RegistryRoot& each) { return each.number == key.root; });
    if (root == RegistryRoots.end() || (value.type == Registry::StringType && !IsUtf8(value.bytes))) {
        return std::nullopt;
    }
    const File file(bytes);
    const std::string& text = file.Text();
    const std::string valueText = ValueText(value);
    const std::string line = (name.empty() ? "@" : Quoted(name)) + "=" + valueText;
    const std::string lineEnd = text.find("\r\n") != std::string::npos ? "\r\n" : "\n";

    const Found found = Find(text, key, name);
    std::string changed;
    if (found.value) {
        changed = file.With(found.value->first, found.value->second, valueText);
    } else if (found.keyEnd > 0) {
        changed = file.With(found.keyEnd, found.keyEnd, lineEnd + line);
    }
    if (!changed.empty() && Holds(changed, key, name, value)) {
        return changed;
    }
    // Something further down, such as the deletion of the key, takes it away again: so it goes after everything.
    const std::string front = bytes.empty()          ? std::string(RegistryFirstLine) + lineEnd
                              : text.ends_with('\n') ? ""
                              : text.ends_with('\r') ? "\n" // of the last line's end
                                                     : lineEnd;
    const std::string keyLine = "[" + std::string(root->name) + (key.path.empty() ? "" : "\\") + key.path + "]";
    changed = file.With(text.size(), text.size(), front + lineEnd + keyLine + lineEnd + line + lineEnd);
    return Holds(changed, key, name, value) ? std::optional(std::move(changed)) : std::nullopt;
}

} // namespace tessaly
