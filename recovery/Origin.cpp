// Values are any bytes: control characters and "%" are written as %XX, so a line stays one.
#include "recovery/Origin.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <system_error>

namespace tessaly {

namespace {

constexpr std::array<std::string_view, 10> Names = {
    "not saved",         "answered no",   "cancelled", "save failed",   "new file",
    "other file opened", "text replaced", "deleted",   "not recovered", "older copy"};

constexpr std::string_view Title = "TessalyRecovery=1\n";
constexpr std::string_view ChecksumKey = "checksum=";

std::string Hex(std::uint64_t number) {
    std::array<char, 16> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    return {digits.data(), end};
}

bool IsPlain(char character) {
    return static_cast<unsigned char>(character) >= ' ' && character != '\x7f' && character != '%';
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        if (IsPlain(character)) {
            escaped += character;
        } else {
            const std::string digits = Hex(static_cast<unsigned char>(character));
            escaped += digits.size() < 2 ? "%0" + digits : "%" + digits;
        }
    }
    return escaped;
}

std::string Written(const FileMark& mark) {
    return std::to_string(mark.size) + " " + Hex(mark.hash);
}

// Takes lines off the front of a text; what is not there is remembered.
class LineTaker {
public:
    explicit LineTaker(std::string_view bytes) : mRest(bytes) {}

    bool IsOdd() const { return mIsOdd; }
    std::string_view Rest() const { return mRest; }

    std::string_view Take(std::string_view key) {
        const std::size_t end = mRest.find('\n');
        if (end == std::string_view::npos || !mRest.starts_with(key) || mRest.substr(key.size(), 1) != "=") {
            mIsOdd = true;
            return {};
        }
        const std::string_view value = mRest.substr(key.size() + 1, end - key.size() - 1);
        mRest.remove_prefix(end + 1);
        return value;
    }

    std::string TakeText(std::string_view key) {
        const std::string_view escaped = Take(key);
        std::string text;
        for (std::size_t i = 0; i < escaped.size(); ++i) {
            if (escaped[i] == '%') {
                text += static_cast<char>(ToNumber<unsigned char>(escaped.substr(i + 1, 2), 16));
                i += 2;
            } else {
                text += escaped[i];
            }
        }
        return text;
    }

    template <class Number>
    Number TakeNumber(std::string_view key) {
        return ToNumber<Number>(Take(key), 10);
    }

    FileMark ToMark(std::string_view text) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        const std::string_view hash = text.substr(std::min(blank + 1, text.size()));
        return {ToNumber<std::uint64_t>(text.substr(0, blank), 10), ToNumber<std::uint64_t>(hash, 16)};
    }

private:
    template <class Number>
    Number ToNumber(std::string_view text, int base) {
        Number number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
        mIsOdd = mIsOdd || error != std::errc() || end != text.data() + text.size();
        return number;
    }

    std::string_view mRest;
    bool mIsOdd = false;
};

} // namespace

std::string_view ReasonName(Reason reason) {
    return Names.at(static_cast<std::size_t>(reason));
}

std::string TimeText(std::int64_t milliseconds, const char* format, Zone zone) {
    constexpr std::int64_t millisecondsInSecond = 1000;
    const auto seconds = static_cast<std::time_t>(milliseconds / millisecondsInSecond);
    const std::tm* const time = zone == Zone::Utc ? std::gmtime(&seconds) : std::localtime(&seconds);
    std::array<char, 64> text = {};
    return {text.data(), time != nullptr ? std::strftime(text.data(), text.size(), format, time) : 0};
}

std::string WriteOrigin(const Origin& origin) {
    std::string text(Title);
    const auto add = [&text](std::string_view key, const std::string& value) {
        text.append(key).append("=").append(value).append("\n");
    };
    add("reason", std::to_string(static_cast<int>(origin.reason)));
    add("path", Escaped(origin.path));
    add("file", origin.file ? Written(*origin.file) : "");
    add("time", std::to_string(origin.time));
    add("number", std::to_string(origin.number));
    add("codepage", Escaped(origin.codePage));
    add("language", std::to_string(origin.language));
    add("item", Escaped(origin.item));
    add("caret", std::to_string(origin.caret));
    add("process", std::to_string(origin.process.id));
    add("start", Escaped(origin.process.start));
    add("copy", Written(origin.copy));
    const std::string checksum = Hex(MarkOf(text).hash);
    return text.append(ChecksumKey).append(checksum).append("\n");
}

std::optional<Origin> ReadOrigin(std::string_view bytes) {
    if (!bytes.starts_with(Title)) {
        return std::nullopt;
    }
    LineTaker lines(bytes.substr(Title.size()));
    Origin origin;
    const auto reason = lines.TakeNumber<std::size_t>("reason");
    origin.path = lines.TakeText("path");
    if (const std::string_view mark = lines.Take("file"); !mark.empty()) {
        origin.file = lines.ToMark(mark);
    }
    origin.time = lines.TakeNumber<std::int64_t>("time");
    origin.number = lines.TakeNumber<std::uint64_t>("number");
    origin.codePage = lines.TakeText("codepage");
    origin.language = lines.TakeNumber<std::int32_t>("language");
    origin.item = lines.TakeText("item");
    origin.caret = lines.TakeNumber<std::uint64_t>("caret");
    origin.process.id = lines.TakeNumber<std::uint64_t>("process");
    origin.process.start = lines.TakeText("start");
    origin.copy = lines.ToMark(lines.Take("copy"));
    if (lines.IsOdd() || reason >= Names.size()) {
        return std::nullopt;
    }
    origin.reason = static_cast<Reason>(reason);
    // The checksum, and whatever was written in another way than it is here.
    return WriteOrigin(origin) == bytes ? std::optional(origin) : std::nullopt;
}

} // namespace tessaly
