// One pass over the lines. Every character is looked at a fixed number of times, whatever the file holds.
#include "platform/settings/RegistryText.h"

#include "platform/settings/RegistryStore.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

namespace tessaly {

namespace {

constexpr std::string_view Utf8Bom = "\xEF\xBB\xBF";
constexpr std::string_view Utf16Bom = "\xFF\xFE";
constexpr std::string_view FirstLine = "Windows Registry Editor Version 5.00";
constexpr std::string_view Blanks = " \t";

struct RootName {
    std::string_view name;
    std::string_view shortName;
    std::uint32_t number;
};

constexpr RootName RootNames[] = {
    {"HKEY_LOCAL_MACHINE", "HKLM", Registry::LocalMachine},   {"HKEY_CURRENT_USER", "HKCU", Registry::CurrentUser},
    {"HKEY_CLASSES_ROOT", "HKCR", Registry::ClassesRoot},     {"HKEY_USERS", "HKU", Registry::Users},
    {"HKEY_CURRENT_CONFIG", "HKCC", Registry::CurrentConfig},
};

// Why a line cannot be read.
struct LineError {
    std::string text;
};

char Capital(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view capitals) {
    return std::equal(text.begin(), text.end(), capitals.begin(), capitals.end(),
                      [](char a, char b) { return Capital(a) == b; });
}

std::string_view TrimFront(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text;
}

std::string_view Trim(std::string_view text) {
    text = text.substr(0, text.find_last_not_of(Blanks) + 1);
    return TrimFront(text);
}

// Takes up to `most` hexadecimal digits off the front of `text`. No value when it begins with none.
std::optional<std::uint32_t> TakeHex(std::string_view& text, std::size_t most) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::uint32_t number = 0;
    std::size_t count = 0;
    for (; count < most && count < text.size(); ++count) {
        const std::size_t digit = digits.find(Capital(text[count]));
        if (digit == std::string_view::npos) {
            break;
        }
        number = number << 4U | static_cast<std::uint32_t>(digit);
    }
    text.remove_prefix(count);
    return count > 0 ? std::optional(number) : std::nullopt;
}

bool Take(std::string_view& text, std::string_view prefix) {
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
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
            if (i == line.size() || (line[i] != '\\' && line[i] != '"')) {
                throw LineError{"a backslash in a text is written twice, and before a quote once"};
            }
        }
        text += line[i];
    }
    throw LineError{"the closing quote is missing"};
}

void ExpectEnd(std::string_view rest) {
    rest = TrimFront(rest);
    if (!rest.empty() && rest.front() != ';') {
        throw LineError{"there is something behind the value"};
    }
}

class Parser {
public:
    explicit Parser(RegistryStore& store) : mStore(store) {}
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;
    ~Parser() { CloseKey(); }

    std::vector<RegistryTextError> Run(std::string_view text) {
        mText = text;
        ReadFirstLine();
        while (NextLine()) {
            ReadLine();
        }
        return std::move(mErrors);
    }

private:
    struct KeyName {
        std::uint32_t root = 0;
        std::string_view path;
    };

    // Without the first line the file may be anything, but a key or value in its place is still meant.
    void ReadFirstLine() {
        if (NextLine() && mLine == FirstLine) {
            return;
        }
        mNumber = 1;
        Report("the first line must be \"" + std::string(FirstLine) + "\"");
        if (mLine.starts_with('[') || mLine.starts_with('"') || mLine.starts_with('@')) {
            ReadLine();
        }
    }

    bool NextLine() {
        if (mPosition == mText.size()) {
            return false;
        }
        const std::size_t end = std::min(mText.find('\n', mPosition), mText.size());
        mLine = mText.substr(mPosition, end - mPosition);
        mLine.remove_suffix(mLine.ends_with('\r') ? 1 : 0);
        mLine = Trim(mLine);
        mPosition = std::min(end + 1, mText.size());
        ++mNumber;
        return true;
    }

    void ReadLine() {
        if (mLine.empty() || mLine.front() == ';') {
            return;
        }
        try {
            if (mLine.front() == '[') {
                ReadKeyLine();
            } else {
                CheckCharacters();
                ReadValueLine();
            }
        } catch (const LineError& error) {
            Report(error.text);
        }
    }

    void CheckCharacters() const {
        if (!IsUtf8(mLine) || mLine.find('\0') != std::string_view::npos) {
            throw LineError{"the line is not valid text"};
        }
    }

    // The values below a key that cannot be read must not end up in the key before it.
    void ReadKeyLine() {
        CloseKey();
        mSkipping = true;
        CheckCharacters();
        std::string_view name = mLine;
        name.remove_prefix(1);
        const bool deletes = Take(name, "-");
        const std::size_t end = name.rfind(']');
        if (end == std::string_view::npos) {
            throw LineError{"the closing bracket is missing"};
        }
        ExpectEnd(name.substr(end + 1));
        const KeyName key = ParseKey(name.substr(0, end));
        if (deletes) {
            mStore.DeleteKey(key.root, key.path);
        } else {
            Registry::Handle handle = 0;
            mStore.CreateKey(key.root, key.path, Registry::SetAccess, handle);
            mKey = handle;
        }
    }

    static KeyName ParseKey(std::string_view name) {
        const std::size_t backslash = std::min(name.find('\\'), name.size());
        const std::string_view rootName = name.substr(0, backslash);
        const auto* root = std::find_if(std::begin(RootNames), std::end(RootNames), [rootName](const RootName& entry) {
            return EqualsIgnoringCase(rootName, entry.name) || EqualsIgnoringCase(rootName, entry.shortName);
        });
        if (root == std::end(RootNames)) {
            throw LineError{"the key does not begin with a known root such as HKEY_LOCAL_MACHINE"};
        }
        return {root->number, name.substr(std::min(backslash + 1, name.size()))};
    }

    void ReadValueLine() {
        std::string_view rest = mLine;
        std::string name;
        if (rest.front() == '"') {
            name = TakeQuoted(rest);
        } else if (!Take(rest, "@")) {
            throw LineError{"the line is neither a key in brackets nor a value that begins with a quote"};
        }
        rest = TrimFront(rest);
        if (!Take(rest, "=")) {
            throw LineError{"there is no \"=\" behind the name"};
        }
        ReadValue(name, TrimFront(rest));
    }

    void ReadValue(const std::string& name, std::string_view value) {
        if (value.starts_with('"')) {
            std::string text = TakeQuoted(value);
            ExpectEnd(value);
            Store(name, Registry::StringType, text + '\0');
        } else if (Take(value, "dword:")) {
            const std::optional<std::uint32_t> number = TakeHex(value, 8);
            if (!number) {
                throw LineError{"there are no hexadecimal digits behind \"dword:\""};
            }
            ExpectEnd(value);
            Store(name, Registry::DwordType, DwordBytes(*number));
        } else if (Take(value, "hex")) {
            ReadHexValue(name, value);
        } else if (Take(value, "-")) {
            ExpectEnd(value);
            if (HasKey()) {
                mStore.DeleteValue(*mKey, name);
            }
        } else {
            throw LineError{"the value is neither a text in quotes nor begins with \"dword:\" or \"hex\""};
        }
    }

    static std::string DwordBytes(std::uint32_t number) {
        std::string bytes;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(number >> shift & 0xFFU);
        }
        return bytes;
    }

    void ReadHexValue(const std::string& name, std::string_view value) {
        const std::uint32_t type = TakeType(value);
        const std::string bytes = ReadBytes(value);
        if (type != Registry::StringType) {
            Store(name, type, bytes);
            return;
        }
        const std::string text = DecodeUtf16(bytes);
        if (!IsUtf8(text)) {
            throw LineError{"the bytes of the string are not UTF-16"};
        }
        Store(name, type, text);
    }

    std::uint32_t TakeType(std::string_view& value) {
        const bool given = Take(value, "(");
        const std::optional<std::uint32_t> type = given ? TakeHex(value, 8) : Registry::BinaryType;
        if (!type || (given && !Take(value, ")")) || !Take(value, ":")) {
            SkipContinuation();
            throw LineError{"the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N"};
        }
        return *type;
    }

    // The bytes in `list`, which stands at the end of the current line, and in the lines it goes on in.
    std::string ReadBytes(std::string_view list) {
        std::string bytes;
        while (true) {
            list = TrimFront(list);
            if (Take(list, "\\")) {
                ExpectEnd(list);
                if (!NextLine()) {
                    throw LineError{"the value goes on behind the end of the file"};
                }
                list = mLine;
                continue;
            }
            if (bytes.empty() && (list.empty() || list.front() == ';')) {
                return bytes;
            }
            const std::optional<std::uint32_t> byte = TakeHex(list, 2);
            if (!byte) {
                SkipContinuation();
                throw LineError{"a byte of the value is missing or is not hexadecimal"};
            }
            bytes += static_cast<char>(*byte);
            list = TrimFront(list);
            if (!Take(list, ",")) {
                return EndBytes(list, std::move(bytes));
            }
        }
    }

    std::string EndBytes(std::string_view rest, std::string bytes) {
        rest = TrimFront(rest);
        if (!rest.empty() && rest.front() != ';') {
            SkipContinuation();
            throw LineError{"there is no comma between two bytes"};
        }
        return bytes;
    }

    // Leaves out the lines in which a wrong value goes on, which would only be reported again.
    void SkipContinuation() {
        mErrorNumber = mNumber;
        while (mLine.ends_with('\\') && NextLine()) {
        }
    }

    // Whether values belong to a key; they do not below one that was reported or deleted.
    bool HasKey() const {
        if (!mKey && !mSkipping) {
            throw LineError{"the value stands before the first key"};
        }
        return mKey.has_value();
    }

    void Store(const std::string& name, std::uint32_t type, std::string_view bytes) {
        if (HasKey()) {
            mStore.SetValue(*mKey, name, type, bytes);
        }
    }

    void CloseKey() {
        if (mKey) {
            mStore.CloseKey(*mKey);
            mKey.reset();
        }
    }

    void Report(std::string text) {
        const std::size_t number = std::exchange(mErrorNumber, 0);
        mErrors.push_back({number > 0 ? number : mNumber, std::move(text)});
    }

    RegistryStore& mStore;
    std::string_view mText;
    std::size_t mPosition = 0;
    std::string_view mLine;
    std::size_t mNumber = 0;
    std::size_t mErrorNumber = 0; // the line to report in place of the current one, unless 0
    std::optional<Registry::Handle> mKey;
    bool mSkipping = false;
    std::vector<RegistryTextError> mErrors;
};

} // namespace

std::string ErrorText(const std::string& path, const RegistryTextError& error) {
    const std::string line = error.line > 0 ? ":" + std::to_string(error.line) : "";
    return path + line + ": " + error.text;
}

std::vector<RegistryTextError> ReadRegistryText(std::string_view bytes, RegistryStore& store) {
    if (bytes.starts_with(Utf16Bom)) {
        return Parser(store).Run(DecodeUtf16(bytes.substr(Utf16Bom.size())));
    }
    Take(bytes, Utf8Bom);
    return Parser(store).Run(bytes);
}

} // namespace tessaly
