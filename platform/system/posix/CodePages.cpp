// Code pages from iconv. A single-byte one is read out once into a table; only multi-byte ones convert by iconv.
#include "platform/system/CodePages.h"

#include "platform/text/Ascii.h"
#include "platform/text/SingleByteCodePage.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <iconv.h>
#include <optional>
#include <stdexcept>

namespace tessaly {

namespace {

class Converter {
public:
    Converter(const std::string& to, const std::string& from) : mHandle(iconv_open(to.c_str(), from.c_str())) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) {
            iconv_close(mHandle);
        }
    }

    bool IsOpen() const {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): POSIX gives an invalid descriptor as this cast
        return mHandle != reinterpret_cast<iconv_t>(-1);
    }

    // Converts as much of `input` as it can and appends the result; takes from `input` what it converted.
    // What is left begins with something that cannot be converted.
    void Convert(std::string_view& input, std::string& output) const {
        iconv(mHandle, nullptr, nullptr, nullptr, nullptr);
        char* from = const_cast<char*>(input.data()); // iconv's type; it does not write there
        std::size_t left = input.size();
        bool full = true;
        while (full) {
            char piece[4096];
            char* to = piece;
            std::size_t room = sizeof piece;
            full = iconv(mHandle, &from, &left, &to, &room) == static_cast<std::size_t>(-1) && errno == E2BIG;
            output.append(piece, static_cast<std::size_t>(to - piece));
        }
        input.remove_prefix(input.size() - left);
    }

private:
    iconv_t mHandle;
};

class MultiByteCodePage final : public CodePage {
public:
    explicit MultiByteCodePage(const std::string& name) : mToUtf8("UTF-8", name), mFromUtf8(name, "UTF-8") {
        if (!mToUtf8.IsOpen() || !mFromUtf8.IsOpen()) {
            throw std::invalid_argument("unknown code page");
        }
    }

    void AppendDecoded(std::string_view bytes, std::string& text) const override {
        while (!bytes.empty()) {
            const std::size_t ascii = AsciiPrefix(bytes);
            text.append(bytes.substr(0, ascii));
            bytes.remove_prefix(ascii);
            AppendConverted(bytes, text);
            if (!bytes.empty()) {
                AppendUtf8(ReplacementCharacter, text);
                bytes.remove_prefix(1);
            }
        }
    }

    char* Encode(std::string_view text, char* to) const override {
        std::string bytes;
        while (!text.empty()) {
            const std::size_t ascii = AsciiPrefix(text);
            bytes.append(text.substr(0, ascii));
            text.remove_prefix(ascii);
            const std::string_view all = text;
            std::string encoded;
            mFromUtf8.Convert(text, encoded);
            AppendSame(all.substr(0, all.size() - text.size()), encoded, bytes);
            if (!text.empty()) {
                bytes += '?';
                std::size_t character = 0;
                ReadUtf8(text, character);
                text.remove_prefix(character);
            }
        }
        return std::copy(bytes.begin(), bytes.end(), to);
    }

    std::size_t FindLost(std::string_view bytes) const override {
        std::string_view rest = bytes;
        std::string ignored;
        mToUtf8.Convert(rest, ignored);
        return rest.empty() ? std::string_view::npos : bytes.size() - rest.size();
    }

private:
    // To iconv some bytes are characters beyond the last one, and it hands them on.
    void AppendConverted(std::string_view& bytes, std::string& text) const {
        std::string converted;
        mToUtf8.Convert(bytes, converted);
        for (std::size_t position = 0; position < converted.size();) {
            AppendUtf8(ReadUtf8OrReplacement(converted, position), text);
        }
    }

    // Appends `encoded`, which iconv made of `run`. It writes some characters as one that only looks like them, the yen
    // sign as a backslash: what does not come back becomes a question mark.
    void AppendSame(std::string_view run, const std::string& encoded, std::string& bytes) const {
        if (Decoded(encoded) == run) {
            bytes += encoded;
            return;
        }
        for (std::size_t position = 0; position < run.size();) {
            const std::size_t start = position;
            ReadUtf8(run, position);
            const std::string_view character = run.substr(start, position - start);
            std::string_view input = character;
            std::string alone;
            mFromUtf8.Convert(input, alone);
            bytes += Decoded(alone) == character ? alone : "?";
        }
    }

    std::string Decoded(const std::string& encoded) const {
        std::string text;
        AppendDecoded(encoded, text);
        return text;
    }

    Converter mToUtf8;
    Converter mFromUtf8;
};

// The one character that `byte` alone stands for in the converter's code page.
std::optional<char32_t> DecodeByte(const Converter& toUtf8, unsigned byte) {
    const char raw = static_cast<char>(byte);
    std::string_view input(&raw, 1);
    std::string text;
    toUtf8.Convert(input, text);
    std::size_t position = 0;
    const char32_t character = text.empty() ? NotACharacter : ReadUtf8(text, position);
    if (!input.empty() || character == NotACharacter || position != text.size()) {
        return std::nullopt;
    }
    return character;
}

bool HasAsciiHalf(const Converter& toUtf8) {
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        if (DecodeByte(toUtf8, byte) != static_cast<char32_t>(byte)) {
            return false;
        }
    }
    return true;
}

// True when some byte is the beginning of a longer character: iconv then asks for more input.
bool IsMultiByte(const std::string& name) {
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
        iconv_t handle = iconv_open("UTF-8", name.c_str());
        char raw = static_cast<char>(byte);
        char* from = &raw;
        std::size_t left = 1;
        char text[16];
        char* to = text;
        std::size_t room = sizeof text;
        const bool wantsMore =
            iconv(handle, &from, &left, &to, &room) == static_cast<std::size_t>(-1) && errno == EINVAL;
        iconv_close(handle);
        if (wantsMore) {
            return true;
        }
    }
    return false;
}

// "1252", "cp1252" and "Windows-1252" all become "CP1252"; other names stay as they are, in capitals.
std::string CanonicalName(std::string_view given) {
    std::string name = CapitalLetters(given);
    if (name.starts_with("WINDOWS-")) {
        name.erase(0, 8);
    }
    const bool number = !name.empty() && std::all_of(name.begin(), name.end(), IsDigit);
    return number ? "CP" + name : name;
}

} // namespace

std::unique_ptr<CodePage> MakeCodePage(const std::string& name) {
    const std::string canonical = CanonicalName(name);
    if (canonical == "CP1252") {
        return MakeSystemCodePage();
    }
    // A suffix such as //TRANSLIT would change what has no place, and an empty name means the locale's charset.
    if (canonical.empty() || canonical.find('/') != std::string::npos) {
        return nullptr;
    }
    const Converter toUtf8("UTF-8", canonical);
    if (!toUtf8.IsOpen() || !HasAsciiHalf(toUtf8)) {
        return nullptr;
    }
    if (IsMultiByte(canonical)) {
        return std::make_unique<MultiByteCodePage>(canonical);
    }
    SingleByteCodePage::HighHalf highHalf;
    for (unsigned i = 0; i < highHalf.size(); ++i) {
        highHalf[i] = DecodeByte(toUtf8, 0x80 + i).value_or(0);
    }
    return std::make_unique<SingleByteCodePage>(highHalf);
}

std::unique_ptr<CodePage> MakeSystemCodePage() {
    return std::make_unique<SingleByteCodePage>(Windows1252HighHalf());
}

std::string SystemCodePageName() {
    return "windows-1252";
}

} // namespace tessaly
