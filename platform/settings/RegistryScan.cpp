// The grammar stands in RegistryText.h. A value that is wrong is still found, so that it can be changed in its place.
#include "platform/settings/RegistryScan.h"

#include "platform/system/Registry.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>

namespace tessaly {

const std::array<RegistryRoot, 5> RegistryRoots = {{
    {Registry::LocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},
    {Registry::CurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {Registry::ClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},
    {Registry::Users, "HKEY_USERS", "HKU"},
    {Registry::CurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"},
}};

namespace {

struct LineError {
    std::string_view text;
    bool isInList = false; // the lines in which the list goes on would only be wrong again
};

// Takes up to `most` hexadecimal digits off the front of `text`. No value when it begins with none.
std::optional<std::uint32_t> TakeHex(std::string_view& text, std::size_t most) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::uint32_t number = 0;
    std::size_t count = 0;
    for (; count < most && count < text.size(); ++count) {
        const std::size_t digit = digits.find(SmallLetter(text[count]));
        if (digit == std::string_view::npos) {
            break;
        }
        number = number << 4U | static_cast<std::uint32_t>(digit);
    }
    text.remove_prefix(count);
    return count > 0 ? std::optional(number) : std::nullopt;
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
            if (i == line.size() || (line[i] != '\\' && line[i] != '"')) {
                throw LineError{"a backslash in a text is written twice, and before a quote once"};
            }
        }
        text += line[i];
    }
    throw LineError{"the closing quote is missing"};
}

bool IsEnd(std::string_view rest) {
    rest = TrimFront(rest);
    return rest.empty() || rest.front() == ';';
}

void ExpectEnd(std::string_view rest) {
    if (!IsEnd(rest)) {
        throw LineError{"there is something behind the value"};
    }
}

} // namespace

bool RegistryScanner::Next() {
    mEntry = {};
    if (mNumber == 0 && !ReadFirstLine()) {
        return true;
    }
    while (mIsLinePending || NextLine()) {
        mIsLinePending = false;
        if (!IsEnd(mLine)) {
            ReadEntry();
            return true;
        }
    }
    return false;
}

// Without the first line the file may be anything, but a key or value in its place is still meant.
bool RegistryScanner::ReadFirstLine() {
    const bool isRight = NextLine() && mLine == RegistryFirstLine;
    mNumber = 1;
    if (!isRight) {
        mEntry.error = "the first line must be \"" + std::string(RegistryFirstLine) + "\"";
        mEntry.number = 1;
        mIsLinePending = mLine.starts_with('[') || mLine.starts_with('"') || mLine.starts_with('@');
    }
    return isRight;
}

bool RegistryScanner::NextLine() {
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

void RegistryScanner::ReadEntry() {
    const bool isText = IsUtf8(mLine) && mLine.find('\0') == std::string_view::npos;
    bool goesOn = false;
    try {
        mEntry.isKey = mLine.front() == '[';
        if (!mEntry.isKey) {
            ReadValueLine(isText);
        } else if (isText) {
            ReadKey();
        }
    } catch (const LineError& error) {
        mEntry.error = error.text;
        goesOn = error.isInList;
    }
    if (!isText) {
        mEntry.error = "the line is not valid text";
    } else if (mEntry.error.empty() && !mEntry.isKey && !mIsBelowKey) {
        mEntry.error = "the value stands before the first key";
    }
    mIsBelowKey = mIsBelowKey || mEntry.isKey;
    mEntry.number = mNumber;
    while (goesOn && mLine.ends_with('\\') && NextLine()) {
    }
    mEntry.end = mLineEnd;
    mEntry.valueEnd = ValueEnd();
}

void RegistryScanner::ReadKey() {
    std::string_view name = mLine.substr(1);
    mEntry.deletes = Take(name, "-");
    const std::size_t end = name.rfind(']');
    if (end == std::string_view::npos) {
        throw LineError{"the closing bracket is missing"};
    }
    ExpectEnd(name.substr(end + 1));
    name = name.substr(0, end);
    const std::size_t backslash = std::min(name.find('\\'), name.size());
    const std::string_view rootName = name.substr(0, backslash);
    const auto* const root =
        std::find_if(RegistryRoots.begin(), RegistryRoots.end(), [rootName](const RegistryRoot& each) {
            return EqualsIgnoringCase(rootName, each.name) || EqualsIgnoringCase(rootName, each.shortName);
        });
    if (root == RegistryRoots.end()) {
        throw LineError{"the key does not begin with a known root such as HKEY_LOCAL_MACHINE"};
    }
    mEntry.root = root->number;
    mEntry.path = name.substr(std::min(backslash + 1, name.size()));
}

void RegistryScanner::ReadValueLine(bool isText) {
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
    mEntry.name = std::move(name);
    mEntry.valueStart = PositionOf(TrimFront(rest, " \t\r"));
    if (isText) {
        ReadValue(TrimFront(rest));
    }
}

void RegistryScanner::ReadValue(std::string_view value) {
    if (value.starts_with('"')) {
        mEntry.type = Registry::StringType;
        mEntry.bytes = TakeQuoted(value) + '\0';
        ExpectEnd(value);
    } else if (Take(value, "dword:")) {
        const std::optional<std::uint32_t> number = TakeHex(value, 8);
        if (!number) {
            throw LineError{"there are no hexadecimal digits behind \"dword:\""};
        }
        mEntry.type = Registry::DwordType;
        mEntry.bytes = Registry::DwordBytes(*number);
        ExpectEnd(value);
    } else if (Take(value, "hex")) {
        mEntry.type = TakeType(value);
        ReadBytes(value);
    } else if (Take(value, "-")) {
        mEntry.deletes = true;
        ExpectEnd(value);
    } else {
        throw LineError{"the value is neither a text in quotes nor begins with \"dword:\" or \"hex\""};
    }
}

std::uint32_t RegistryScanner::TakeType(std::string_view& value) const {
    const bool isGiven = Take(value, "(");
    const std::optional<std::uint32_t> type = isGiven ? TakeHex(value, 8) : Registry::BinaryType;
    if (!type || (isGiven && !Take(value, ")")) || !Take(value, ":")) {
        throw LineError{"the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N", true};
    }
    return *type;
}

// The bytes in `list`, which stands at the end of the current line, and in the lines it goes on in.
void RegistryScanner::ReadBytes(std::string_view list) {
    std::string bytes;
    for (bool isDone = false; !isDone;) {
        list = TrimFront(list);
        if (Take(list, "\\")) {
            ExpectEnd(list);
            if (!NextLine()) {
                throw LineError{"the value goes on behind the end of the file"};
            }
            list = mLine;
            continue;
        }
        if (bytes.empty() && IsEnd(list)) {
            break;
        }
        const std::optional<std::uint32_t> byte = TakeHex(list, 2);
        if (!byte) {
            throw LineError{"a byte of the value is missing or is not hexadecimal", true};
        }
        bytes += static_cast<char>(*byte);
        list = TrimFront(list);
        isDone = !Take(list, ",");
    }
    if (!IsEnd(list)) {
        throw LineError{"there is no comma between two bytes", true};
    }
    const bool isString = mEntry.type == Registry::StringType;
    mEntry.bytes = isString ? DecodeUtf16(bytes) : std::move(bytes);
    if (isString && !IsUtf8(mEntry.bytes)) {
        throw LineError{"the bytes of the string are not UTF-16"};
    }
}

std::size_t RegistryScanner::PositionOf(std::string_view part) const {
    return static_cast<std::size_t>(part.data() - mText.data());
}

// Of a right value and of a wrong one. Its last line is the current one.
std::size_t RegistryScanner::ValueEnd() const {
    const std::size_t start = std::max(mEntry.valueStart, PositionOf(mLine));
    std::string_view rest = mText.substr(start, mLineEnd - start);
    rest = rest.starts_with('"') ? rest.substr(0, QuotedSize(rest)) : rest.substr(0, rest.find(';'));
    return start + (rest.starts_with('"') ? rest : TrimBack(rest, " \t\r")).size();
}

} // namespace tessaly
