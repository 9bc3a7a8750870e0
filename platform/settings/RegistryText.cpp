// One scanner reads the file line by line, for reading and for changing. Reading puts what stands there straight into
// the store. Changing replaces the bytes of the value. Then the new file is read as by every reader, to see whether
// that worked.
#include "platform/settings/RegistryText.h"

#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace tessaly {

namespace {

constexpr std::string_view RegistryFirstLine = "Windows Registry Editor Version 5.00";

struct RegistryRoot {
    std::uint32_t number;
    std::string_view name;
    std::string_view shortName;
};

constexpr RegistryRoot RegistryRoots[] = {
    {Registry::LocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},   {Registry::CurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {Registry::ClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},     {Registry::Users, "HKEY_USERS", "HKU"},
    {Registry::CurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"},
};

template <class Test>
const RegistryRoot* FindRoot(Test isWanted) {
    const auto* const root = std::find_if(std::begin(RegistryRoots), std::end(RegistryRoots), isWanted);
    return root != std::end(RegistryRoots) ? root : nullptr;
}

// A key or a value, with all lines that it takes, or a line that is neither. Positions are bytes of the text.
struct RegistryEntry {
    std::string error;      // why it cannot be read; "" when it is right
    std::size_t number = 0; // of its line, from 1; of a value of several lines the one that was looked at last
    std::size_t end = 0;    // behind its last line, in front of the line's end
    bool isKey = false;     // it begins with a bracket
    bool deletes = false;   // the key or the value
    std::optional<RegistryStore::Key> key; // a right one
    std::optional<std::string> name;       // of a value, and of one that is wrong behind its "="
    RegistryStore::Value value;
    std::size_t valueStart = 0; // where the value stands, without the blanks and the comment around it
    std::size_t valueEnd = 0;
};

struct LineError {
    std::string_view text;
    bool isInList = false; // the lines in which the list goes on would only be wrong again
};

void Expect(bool isRight, std::string_view complaint, bool isInList = false) {
    if (!isRight) {
        throw LineError{complaint, isInList};
    }
}

// Takes up to `most` hexadecimal digits off the front of `text`, one at least.
std::uint32_t TakeHex(std::string_view& text, std::size_t most, std::string_view complaint, bool isInList = false) {
    const std::size_t count = std::min({text.find_first_not_of("0123456789abcdefABCDEF"), text.size(), most});
    Expect(count > 0, complaint, isInList);
    const std::string digits(text.substr(0, count));
    text.remove_prefix(count);
    return static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
}

// Behind the text in quotes at the front of `text`, or text.size() when its closing quote is missing.
std::size_t QuotedSize(std::string_view text) {
    std::size_t position = 1;
    while (position < text.size() && text[position] != '"') {
        position += text[position] == '\\' ? 2 : 1;
    }
    return std::min(position + 1, text.size());
}

// Takes a text in quotes off the front of `line`.
std::string TakeQuoted(std::string_view& line) {
    std::string text;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return text;
        }
        if (line[i] == '\\') {
            ++i;
            Expect(i < line.size() && (line[i] == '\\' || line[i] == '"'),
                   "a backslash in a text is written twice, and before a quote once");
        }
        text += line[i];
    }
    throw LineError{"the closing quote is missing"};
}

bool IsEnd(std::string_view rest) {
    rest = TrimFront(rest);
    return rest.empty() || rest.front() == ';';
}

constexpr std::string_view SomethingBehind = "there is something behind the value";

// A value that is wrong is still found, so that it can be changed in its place. Every character is looked at a fixed
// number of times, whatever the text holds.
class RegistryScanner {
public:
    // `text` is the file without its mark, as UTF-8. Any bytes will do.
    explicit RegistryScanner(std::string_view text) : mText(text) {}

    // Calls `use` with each entry in order; blank lines, comments and a right first line are none. Without the first
    // line the file may be anything, but a key or value in its place is still meant.
    void Run(const std::function<void(const RegistryEntry& entry)>& use) {
        bool isPending = false;
        if (!NextLine() || mLine != RegistryFirstLine) {
            mEntry.error = "the first line must be \"" + std::string(RegistryFirstLine) + "\"";
            mEntry.number = 1;
            use(mEntry);
            isPending = mLine.find_first_of("[\"@") == 0;
        }
        for (; isPending || NextLine(); isPending = false) {
            if (!IsEnd(mLine)) {
                ReadEntry();
                use(mEntry);
            }
        }
    }

private:
    bool NextLine() {
        if (mPosition == mText.size()) {
            return false;
        }
        const std::size_t end = std::min(mText.find('\n', mPosition), mText.size());
        mLine = mText.substr(mPosition, end - mPosition);
        mLine.remove_suffix(mLine.ends_with('\r') ? 1 : 0);
        mLineEnd = mPosition + mLine.size();
        mLine = Trim(mLine);
        mPosition = std::min(end + 1, mText.size());
        ++mNumber;
        return true;
    }

    void ReadEntry() {
        mEntry = {};
        const bool isText = IsUtf8(mLine) && mLine.find('\0') == std::string_view::npos;
        bool goesOn = false;
        try {
            mEntry.isKey = mLine.front() == '[';
            if (!mEntry.isKey) {
                ReadValueLine(isText);
            } else if (isText) {
                ReadKey();
            }
            Expect(mEntry.isKey || mIsBelowKey, "the value stands before the first key");
        } catch (const LineError& error) {
            mEntry.error = error.text;
            goesOn = error.isInList;
        }
        mEntry.error = isText ? mEntry.error : "the line is not valid text";
        mIsBelowKey = mIsBelowKey || mEntry.isKey;
        mEntry.number = mNumber;
        while (goesOn && mLine.ends_with('\\') && NextLine()) {
        }
        mEntry.end = mLineEnd;
        // The end of a right value and of a wrong one; its last line is the current one.
        const std::size_t start = std::max(mEntry.valueStart, PositionOf(mLine));
        std::string_view rest = mText.substr(start, mLineEnd - start);
        rest = rest.starts_with('"') ? rest.substr(0, QuotedSize(rest)) : rest.substr(0, rest.find(';'));
        mEntry.valueEnd = start + (rest.starts_with('"') ? rest : TrimBack(rest, " \t\r")).size();
    }

    void ReadKey() {
        std::string_view name = mLine.substr(1);
        mEntry.deletes = Take(name, "-");
        const std::size_t end = name.rfind(']');
        Expect(end != std::string_view::npos, "the closing bracket is missing");
        Expect(IsEnd(name.substr(end + 1)), SomethingBehind);
        name = name.substr(0, end);
        const std::string_view rootName = name.substr(0, name.find('\\'));
        const RegistryRoot* const root = FindRoot([rootName](const RegistryRoot& each) {
            return EqualsIgnoringCase(rootName, each.name) || EqualsIgnoringCase(rootName, each.shortName);
        });
        if (root == nullptr) {
            throw LineError{"the key does not begin with a known root such as HKEY_LOCAL_MACHINE"};
        }
        mEntry.key.emplace(root->number, name.substr(std::min(rootName.size() + 1, name.size())));
    }

    void ReadValueLine(bool isText) {
        std::string_view rest = mLine;
        std::string name;
        if (rest.front() == '"') {
            name = TakeQuoted(rest);
        } else {
            Expect(Take(rest, "@"), "the line is neither a key in brackets nor a value that begins with a quote");
        }
        rest = TrimFront(rest);
        Expect(Take(rest, "="), "there is no \"=\" behind the name");
        mEntry.name = std::move(name);
        mEntry.valueStart = PositionOf(TrimFront(rest, " \t\r"));
        if (isText) {
            ReadValue(TrimFront(rest));
        }
    }

    void ReadValue(std::string_view value) {
        if (Take(value, "hex")) {
            ReadBytes(value);
        } else if (value.starts_with('"')) {
            mEntry.value = {Registry::StringType, TakeQuoted(value) + '\0'};
        } else if (Take(value, "dword:")) {
            const std::uint32_t number = TakeHex(value, 8, "there are no hexadecimal digits behind \"dword:\"");
            mEntry.value = {Registry::DwordType, Registry::DwordBytes(number)};
        } else {
            Expect(Take(value, "-"), "the value is neither a text in quotes nor begins with \"dword:\" or \"hex\"");
            mEntry.deletes = true;
        }
        Expect(IsEnd(value), SomethingBehind);
    }

    // Takes the bytes off `list`, which stands at the end of the current line, and off the lines it goes on in.
    void ReadBytes(std::string_view& list) {
        constexpr std::string_view badType = "the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N";
        const bool hasType = Take(list, "(");
        mEntry.value.type = hasType ? TakeHex(list, 8, badType, true) : Registry::BinaryType;
        Expect((!hasType || Take(list, ")")) && Take(list, ":"), badType, true);
        std::string bytes;
        for (bool isDone = false; !isDone;) {
            list = TrimFront(list);
            if (Take(list, "\\")) {
                Expect(IsEnd(list), SomethingBehind);
                Expect(NextLine(), "the value goes on behind the end of the file");
                list = mLine;
            } else if (bytes.empty() && IsEnd(list)) {
                isDone = true;
            } else {
                bytes +=
                    static_cast<char>(TakeHex(list, 2, "a byte of the value is missing or is not hexadecimal", true));
                list = TrimFront(list);
                isDone = !Take(list, ",");
            }
        }
        Expect(IsEnd(list), "there is no comma between two bytes", true);
        const bool isString = mEntry.value.type == Registry::StringType;
        mEntry.value.bytes = isString ? DecodeUtf16(bytes) : std::move(bytes);
        Expect(!isString || IsUtf8(mEntry.value.bytes), "the bytes of the string are not UTF-16");
    }

    std::size_t PositionOf(std::string_view part) const { return static_cast<std::size_t>(part.data() - mText.data()); }

    std::string_view mText;
    std::size_t mPosition = 0; // of the next line
    std::string_view mLine;    // without its end and the blanks around it
    std::size_t mLineEnd = 0;
    std::size_t mNumber = 0;
    bool mIsBelowKey = false;
    RegistryEntry mEntry;
};

// A file whose bytes can be replaced where something stands in its text.
class File {
public:
    explicit File(std::string_view bytes) : mBytes(bytes), mIsWide(Take(bytes, "\xFF\xFE")) {
        Take(bytes, mIsWide ? "" : "\xEF\xBB\xBF"); // the byte order mark, which UTF-8 may be without
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

std::string Hex(std::uint32_t number, unsigned digits) {
    std::string text;
    while (digits-- > 0) {
        text += "0123456789abcdef"[number >> (4U * digits) & 0xFU];
    }
    return text;
}

std::string HexValue(std::uint32_t type, std::string_view bytes) {
    std::string text = type == Registry::BinaryType ? "hex:" : "hex(" + Hex(type, type > 0xF ? 8 : 1) + "):";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += (i > 0 ? "," : "") + Hex(static_cast<unsigned char>(bytes[i]), 2);
    }
    return text;
}

// How a file writes the value.
std::string ValueText(const RegistryStore::Value& value) {
    const std::string_view bytes = value.bytes;
    if (value.type == Registry::DwordType && bytes.size() == 4) {
        return "dword:" + Hex(Registry::DwordNumber(bytes), 8);
    }
    if (value.type != Registry::StringType) {
        return HexValue(value.type, bytes);
    }
    const std::size_t special = bytes.find_first_of(std::string_view("\0\r\n", 3));
    const bool isPlain = special + 1 == bytes.size() && bytes.ends_with('\0');
    return isPlain ? Quoted(bytes.substr(0, special)) : HexValue(value.type, EncodeUtf16(bytes));
}

// The last value of that name, or else the end of the last key of that path; all 0 when there is none.
struct Found {
    std::size_t start = 0;
    std::size_t end = 0;
    bool isValue = false;
};

Found Find(std::string_view text, const RegistryStore::Key& key, std::string_view name) {
    Found found;
    bool isInside = false;
    RegistryScanner(text).Run([&](const RegistryEntry& entry) {
        if (entry.isKey) {
            isInside = entry.error.empty() && !entry.deletes && !(*entry.key < key) && !(key < *entry.key);
        } else if (isInside && entry.name && EqualsIgnoringCase(*entry.name, name)) {
            found = {entry.valueStart, entry.valueEnd, true};
        }
        found = isInside && !found.isValue ? Found{entry.end, entry.end, false} : found;
    });
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
    RegistryScanner(text).Run([&](const RegistryEntry& entry) {
        // The values below a key that cannot be read must not end up in the key before it.
        values = entry.isKey ? nullptr : values;
        if (!entry.error.empty()) {
            errors.push_back({entry.number, entry.error});
        } else if (entry.isKey && entry.deletes) {
            store.DeleteKey(*entry.key);
        } else if (entry.isKey) {
            values = &store.keys[*entry.key];
        } else if (values != nullptr && entry.deletes) {
            values->erase(*entry.name);
        } else if (values != nullptr) {
            (*values)[*entry.name] = entry.value;
        }
    });
    return errors;
}

std::optional<std::string> SetInRegistryText(std::string_view bytes, const RegistryStore::Key& key,
                                             std::string_view name, const RegistryStore::Value& value) {
    const RegistryRoot* const root = FindRoot([&key](const RegistryRoot& each) { return each.number == key.root; });
    if (root == nullptr || (value.type == Registry::StringType && !IsUtf8(value.bytes))) {
        return std::nullopt;
    }
    const File file(bytes);
    const std::string& text = file.Text();
    const std::string valueText = ValueText(value);
    const std::string line = (name.empty() ? "@" : Quoted(name)) + "=" + valueText;
    const std::string lineEnd = text.find("\r\n") != std::string::npos ? "\r\n" : "\n";

    const Found found = Find(text, key, name);
    std::string changed = file.With(found.start, found.end, found.isValue ? valueText : lineEnd + line);
    if (found.end > 0 && Holds(changed, key, name, value)) {
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
