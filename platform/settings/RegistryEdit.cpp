// The file is looked at as a row of units: bytes, or the 16-bit units of UTF-16LE, so that even what is no text comes
// out as it went in. Whether the change worked is seen by reading the new file as every reader does.
#include "platform/settings/RegistryEdit.h"

#include "platform/settings/RegistryStore.h"
#include "platform/settings/RegistryText.h"
#include "platform/system/Registry.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <array>
#include <vector>

namespace tessaly {

namespace {

constexpr std::string_view Utf16Bom = "\xFF\xFE";
constexpr std::string_view FirstLine = "Windows Registry Editor Version 5.00";

struct RootName {
    std::uint32_t number;
    std::string_view name;
    std::string_view shortName;
};

constexpr std::array<RootName, 5> RootNames = {{
    {Registry::LocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},
    {Registry::CurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {Registry::ClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},
    {Registry::Users, "HKEY_USERS", "HKU"},
    {Registry::CurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"},
}};

using Units = std::u16string;
using UnitView = std::u16string_view;

Units ToUtf16(std::string_view text) {
    Units units;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = ReadUtf8(text, position);
        if (character >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
        } else {
            units += static_cast<char16_t>(character);
        }
    }
    return units;
}

Units FromBytes(std::string_view bytes) {
    Units units;
    for (const char byte : bytes) {
        units += static_cast<unsigned char>(byte);
    }
    return units;
}

// A file as units, and back.
class File {
public:
    explicit File(std::string_view bytes) : mIsWide(bytes.starts_with(Utf16Bom)) {
        if (!mIsWide) {
            mUnits = FromBytes(bytes);
            return;
        }
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            mUnits += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                            static_cast<unsigned char>(bytes[i + 1]) << 8U);
        }
        mOddByte = bytes.size() % 2 != 0 ? bytes.substr(bytes.size() - 1) : "";
    }

    UnitView Text() const { return mUnits; }

    // UTF-8 as units of this file.
    Units Encode(std::string_view text) const { return mIsWide ? ToUtf16(text) : FromBytes(text); }

    void Replace(std::size_t start, std::size_t length, const Units& units) { mUnits.replace(start, length, units); }

    std::string Bytes() const {
        std::string bytes;
        for (const char16_t unit : mUnits) {
            bytes += static_cast<char>(unit & 0xFFU);
            if (mIsWide) {
                bytes += static_cast<char>(unit >> 8U);
            }
        }
        return bytes.append(mOddByte);
    }

private:
    bool mIsWide;
    Units mUnits;
    std::string mOddByte;
};

char16_t Folded(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool EqualsFolded(UnitView a, UnitView b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return Folded(x) == Folded(y); });
}

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r';
}

std::size_t SkipBlanks(UnitView text, std::size_t position) {
    while (position < text.size() && IsBlank(text[position])) {
        ++position;
    }
    return position;
}

// Where the text in quotes that begins at `start` ends, behind its quote.
std::size_t QuoteEnd(UnitView text, std::size_t start, std::size_t end) {
    for (std::size_t i = start + 1; i < end; ++i) {
        if (text[i] == u'"') {
            return i + 1;
        }
        i += text[i] == u'\\' ? 1 : 0;
    }
    return end;
}

Units Unescaped(UnitView quoted) {
    Units text;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        i += quoted[i] == u'\\' ? 1 : 0;
        text += quoted[i];
    }
    return text;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character == '"' || character == '\\' ? std::string("\\") + character : std::string(1, character);
    }
    return quoted + '"';
}

void AppendHex(std::uint32_t number, int digits, std::string& text) {
    for (int digit = digits - 1; digit >= 0; --digit) {
        text += "0123456789abcdef"[number >> (4U * static_cast<unsigned>(digit)) & 0xFU];
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

std::string LowByteFirst(const Units& units) {
    std::string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFFU);
        bytes += static_cast<char>(unit >> 8U);
    }
    return bytes;
}

// How a file writes the value.
std::string ValueText(std::uint32_t type, std::string_view bytes) {
    if (type == Registry::DwordType && bytes.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
        }
        std::string text = "dword:";
        AppendHex(number, 8, text);
        return text;
    }
    if (type != Registry::StringType) {
        return HexValue(type, bytes);
    }
    const std::size_t special = bytes.find_first_of(std::string_view("\0\r\n", 3));
    const bool isPlain = special + 1 == bytes.size() && bytes.ends_with('\0');
    return isPlain ? Quoted(bytes.substr(0, special)) : HexValue(type, LowByteFirst(ToUtf16(bytes)));
}

struct Span {
    std::size_t start = 0;
    std::size_t end = 0;
};

// Where things are in a file.
class Finder {
public:
    Finder(UnitView text, std::vector<Units> keys, Units name)
        : mText(text),
          mKeys(std::move(keys)),
          mName(std::move(name)) {}

    void Run() {
        for (std::size_t start = 0; start < mText.size();) {
            const std::size_t end = std::min(mText.find(u'\n', start), mText.size());
            LookAt({start, end});
            start = std::max(end, mValueEnd) + 1;
        }
    }

    std::optional<Span> value;          // of the last value of that name
    std::optional<std::size_t> lastEnd; // behind the last line of the last key of that name

private:
    void LookAt(const Span& line) {
        const std::size_t start = SkipBlanks(mText, line.start);
        mValueEnd = line.end;
        if (start >= line.end || mText[start] == u';') {
            return;
        }
        if (mText[start] == u'[') {
            mIsInside = IsKey({start + 1, line.end});
        } else if (mIsInside) {
            LookAtValue({start, line.end});
        }
        if (mIsInside) {
            lastEnd = mValueEnd;
        }
    }

    bool IsKey(const Span& line) const {
        const std::size_t bracket = mText.substr(0, line.end).rfind(u']');
        if (bracket == UnitView::npos || bracket < line.start) {
            return false;
        }
        UnitView key = mText.substr(line.start, bracket - line.start);
        key.remove_suffix(key.ends_with(u'\\') ? 1 : 0);
        return std::any_of(mKeys.begin(), mKeys.end(), [key](const Units& each) { return EqualsFolded(key, each); });
    }

    void LookAtValue(const Span& line) {
        const bool isDefault = mText[line.start] == u'@';
        const std::size_t nameEnd = isDefault ? line.start + 1 : QuoteEnd(mText, line.start, line.end);
        const std::size_t equals = SkipBlanks(mText, nameEnd);
        if (equals >= line.end || mText[equals] != u'=') {
            return;
        }
        const Units name = isDefault ? Units() : Unescaped(mText.substr(line.start, nameEnd - line.start));
        const std::size_t start = SkipBlanks(mText, equals + 1);
        const std::size_t end = ValueEnd({std::min(start, line.end), line.end});
        if (EqualsFolded(name, mName)) {
            value = Span{std::min(start, line.end), end};
        }
    }

    // Behind the value, in front of blanks and a comment. Bytes go on in the next line behind a backslash.
    std::size_t ValueEnd(const Span& line) {
        if (line.start < line.end && mText[line.start] == u'"') {
            return QuoteEnd(mText, line.start, line.end);
        }
        Span rest = line;
        while (true) {
            mValueEnd = rest.end;
            std::size_t end = std::min(mText.find(u';', rest.start), rest.end);
            while (end > rest.start && IsBlank(mText[end - 1])) {
                --end;
            }
            const bool goesOn = end > rest.start && mText[end - 1] == u'\\' && rest.end < mText.size();
            if (!goesOn) {
                return end;
            }
            rest = {rest.end + 1, std::min(mText.find(u'\n', rest.end + 1), mText.size())};
        }
    }

    UnitView mText;
    std::vector<Units> mKeys;
    Units mName;
    bool mIsInside = false;
    std::size_t mValueEnd = 0; // of the line, or of the last one that its value goes on in
};

// Whether readers of `file` find the value.
bool Holds(const std::string& file, std::uint32_t root, std::string_view keyPath, std::string_view name,
           std::uint32_t type, std::string_view bytes) {
    RegistryStore store;
    ReadRegistryText(file, store);
    Registry::Handle key = 0;
    if (store.OpenKey(root, keyPath, Registry::QueryAccess, key) != Registry::Success) {
        return false;
    }
    std::uint32_t foundType = 0;
    std::string found(bytes.size(), '\0');
    auto size = static_cast<std::uint32_t>(bytes.size());
    const std::int32_t error = store.QueryValue(key, name, foundType, found.data(), size);
    return error == Registry::Success && foundType == type && size == bytes.size() && found == bytes;
}

} // namespace

std::optional<std::string> SetInRegistryText(std::string_view file, std::uint32_t root, std::string_view keyPath,
                                             std::string_view name, std::uint32_t type, std::string_view bytes) {
    const auto* const rootName =
        std::find_if(RootNames.begin(), RootNames.end(), [root](const RootName& each) { return each.number == root; });
    if (rootName == RootNames.end() || (type == Registry::StringType && !IsUtf8(bytes))) {
        return std::nullopt;
    }
    keyPath.remove_suffix(keyPath.ends_with('\\') ? 1 : 0);
    File text(file);
    const std::string below = keyPath.empty() ? "" : "\\" + std::string(keyPath);
    const std::string key = std::string(rootName->name) + below;
    Finder finder(text.Text(), {text.Encode(key), text.Encode(std::string(rootName->shortName) + below)},
                  text.Encode(name));
    finder.Run();

    const std::string value = ValueText(type, bytes);
    const std::string line = (name.empty() ? "@" : Quoted(name)) + "=" + value;
    const std::string lineEnd = text.Text().find(u"\r\n") != UnitView::npos ? "\r\n" : "\n";
    if (finder.value) {
        text.Replace(finder.value->start, finder.value->end - finder.value->start, text.Encode(value));
    } else if (finder.lastEnd) {
        const std::size_t place = *finder.lastEnd - (text.Text().substr(0, *finder.lastEnd).ends_with(u'\r') ? 1 : 0);
        text.Replace(place, 0, text.Encode(lineEnd + line));
    }
    const bool isInPlace = finder.value || finder.lastEnd;
    if (isInPlace && Holds(text.Bytes(), root, keyPath, name, type, bytes)) {
        return text.Bytes();
    }
    // What stands further down, such as the deletion of the key, takes it away again: so it goes behind everything.
    text = File(file);
    const std::string rest = text.Text().empty() || text.Text().ends_with(u'\n') ? "" // of the last line's end
                             : text.Text().ends_with(u'\r')                      ? "\n"
                                                                                 : lineEnd;
    const std::string front = (file.empty() ? std::string(FirstLine) + lineEnd : rest) + lineEnd;
    text.Replace(text.Text().size(), 0, text.Encode(front + "[" + key + "]" + lineEnd + line + lineEnd));
    std::string result = text.Bytes();
    return Holds(result, root, keyPath, name, type, bytes) ? std::optional(std::move(result)) : std::nullopt;
}

} // namespace tessaly
