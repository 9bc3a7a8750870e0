// The scanner says where things are in the text, and the bytes of the file are replaced there and nowhere else.
// Whether the change worked is seen by reading the new file as every reader does.
#include "platform/settings/RegistryEdit.h"

#include "platform/settings/RegistryScan.h"
#include "platform/settings/RegistryStore.h"
#include "platform/settings/RegistryText.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>

namespace tessaly {

namespace {

// A file whose bytes can be replaced where something stands in its text.
class File {
public:
    // A single byte at the end of UTF-16 is no part of the text: it stays at the end.
    explicit File(std::string_view bytes) : mBytes(bytes), mBom(RegistryBom(bytes)), mIsWide(mBom == Utf16Bom) {
        bytes.remove_prefix(mBom.size());
        bytes.remove_suffix(mIsWide ? bytes.size() % 2 : 0);
        mText = mIsWide ? DecodeUtf16(bytes) : std::string(bytes);
    }

    const std::string& Text() const { return mText; }

    // The bytes of the file with `part` in place of what stands from `start` to `end` in the text.
    std::string With(std::size_t start, std::size_t end, std::string_view part) const {
        std::string changed(mBytes.substr(0, Place(start)));
        return changed.append(Encoded(part)).append(mBytes.substr(Place(end)));
    }

private:
    std::string Encoded(std::string_view text) const { return mIsWide ? EncodeUtf16(text) : std::string(text); }
    std::size_t Place(std::size_t position) const {
        return mBom.size() + Encoded(std::string_view(mText).substr(0, position)).size();
    }

    std::string_view mBytes;
    std::string_view mBom;
    bool mIsWide;
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
std::string ValueText(std::uint32_t type, std::string_view bytes) {
    if (type == Registry::DwordType && bytes.size() == 4) {
        std::string text = "dword:";
        AppendHex(Registry::DwordNumber(bytes), 8, text);
        return text;
    }
    if (type != Registry::StringType) {
        return HexValue(type, bytes);
    }
    const std::size_t special = bytes.find_first_of(std::string_view("\0\r\n", 3));
    const bool isPlain = special + 1 == bytes.size() && bytes.ends_with('\0');
    return isPlain ? Quoted(bytes.substr(0, special)) : HexValue(type, EncodeUtf16(bytes));
}

// The last value of that name, and where the last key of that path ends, 0 when there is none.
struct Found {
    std::optional<std::pair<std::size_t, std::size_t>> value; // from and to
    std::size_t keyEnd = 0;
};

Found Find(std::string_view text, std::uint32_t root, std::string_view keyPath, std::string_view name) {
    Found found;
    bool isInside = false;
    for (RegistryScanner scanner(text); scanner.Next();) {
        const RegistryEntry& entry = scanner.Entry();
        if (entry.isKey) {
            const std::string_view path =
                entry.path.substr(0, entry.path.size() - (entry.path.ends_with('\\') ? 1 : 0));
            isInside = entry.error.empty() && !entry.deletes && entry.root == root && EqualsIgnoringCase(path, keyPath);
        } else if (isInside && entry.name && EqualsIgnoringCase(*entry.name, name)) {
            found.value = {entry.valueStart, entry.valueEnd};
        }
        found.keyEnd = isInside ? entry.end : found.keyEnd;
    }
    return found;
}

// Whether readers of `file` find the value.
bool Holds(const std::string& file, std::uint32_t root, std::string_view keyPath, std::string_view name,
           std::uint32_t type, std::string_view bytes) {
    RegistryStore store;
    ReadRegistryText(file, store);
    Registry::Handle key = 0;
    return store.OpenKey(root, keyPath, Registry::QueryAccess, key) == Registry::Success &&
           store.Holds(key, name, type, bytes);
}

} // namespace

std::optional<std::string> SetInRegistryText(std::string_view bytes, std::uint32_t root, std::string_view keyPath,
                                             std::string_view name, std::uint32_t type, std::string_view valueBytes) {
    const auto* const rootName = std::find_if(RegistryRoots.begin(), RegistryRoots.end(),
                                              [root](const RegistryRoot& each) { return each.number == root; });
    if (rootName == RegistryRoots.end() || (type == Registry::StringType && !IsUtf8(valueBytes))) {
        return std::nullopt;
    }
    keyPath.remove_suffix(keyPath.ends_with('\\') ? 1 : 0);
    const File file(bytes);
    const std::string& text = file.Text();
    const std::string value = ValueText(type, valueBytes);
    const std::string line = (name.empty() ? "@" : Quoted(name)) + "=" + value;
    const std::string lineEnd = text.find("\r\n") != std::string::npos ? "\r\n" : "\n";

    const Found found = Find(text, root, keyPath, name);
    std::string changed;
    if (found.value) {
        changed = file.With(found.value->first, found.value->second, value);
    } else if (found.keyEnd > 0) {
        changed = file.With(found.keyEnd, found.keyEnd, lineEnd + line);
    }
    if (!changed.empty() && Holds(changed, root, keyPath, name, type, valueBytes)) {
        return changed;
    }
    // What stands further down, such as the deletion of the key, takes it away again: so it goes behind everything.
    const std::string front = bytes.empty()          ? std::string(RegistryFirstLine) + lineEnd
                              : text.ends_with('\n') ? ""
                              : text.ends_with('\r') ? "\n" // of the last line's end
                                                     : lineEnd;
    const std::string key =
        "[" + std::string(rootName->name) + (keyPath.empty() ? "" : "\\") + std::string(keyPath) + "]";
    changed = file.With(text.size(), text.size(), front + lineEnd + key + lineEnd + line + lineEnd);
    return Holds(changed, root, keyPath, name, type, valueBytes) ? std::optional(std::move(changed)) : std::nullopt;
}

} // namespace tessaly
