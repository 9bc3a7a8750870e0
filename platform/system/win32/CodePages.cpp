// A single-byte code page is read out once into a table; only double-byte ones go on asking Windows.
#include "platform/system/CodePages.h"

#include "platform/system/win32/Text.h"
#include "platform/text/Ascii.h"
#include "platform/text/SingleByteCodePage.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>
#include <windows.h>

namespace tessaly {

namespace {

struct NamedCodePage {
    std::string_view name;
    UINT number;
};

// Beside those with a number in their name.
constexpr NamedCodePage NamedCodePages[] = {
    {"ANSI", CP_ACP},       {"BIG5", 950},         {"EUC-KR", 949},       {"GB2312", 936},       {"GBK", 936},
    {"ISO-8859-1", 28591},  {"ISO-8859-2", 28592}, {"ISO-8859-3", 28593}, {"ISO-8859-4", 28594}, {"ISO-8859-5", 28595},
    {"ISO-8859-6", 28596},  {"ISO-8859-7", 28597}, {"ISO-8859-8", 28598}, {"ISO-8859-9", 28599}, {"ISO-8859-13", 28603},
    {"ISO-8859-15", 28605}, {"KOI8-R", 20866},     {"KOI8-U", 21866},     {"LATIN1", 28591},     {"SHIFT_JIS", 932},
    {"SHIFT-JIS", 932},     {"SJIS", 932},         {"TIS-620", 874},      {"UHC", 949},          {"UTF-8", CP_UTF8},
    {"UTF8", CP_UTF8},
};

constexpr std::string_view QuestionMark = "?";

// Longer texts are converted in pieces: Windows counts in int.
constexpr std::size_t LongestRun = 65536;

// The text that `bytes` stand for, all of them; no value when some stand for nothing.
std::optional<std::wstring> Decode(UINT codePage, std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0'); // no byte of these code pages becomes more than one unit
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
    if (length <= 0) {
        return std::nullopt;
    }
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

// Windows makes a C1 control or a private-use character of a byte that the code page leaves open.
bool IsStandIn(wchar_t character) {
    return (character >= 0x80 && character < 0xA0) || (character >= 0xE000 && character < 0xF900);
}

// The ISO code pages really have the C1 controls.
bool HasControls(UINT codePage) {
    return codePage >= 28591 && codePage <= 28606;
}

class DoubleByteCodePage final : public CodePage {
public:
    explicit DoubleByteCodePage(UINT number) : mNumber(number) {
        for (unsigned byte = 0x80; byte < 0x100; ++byte) {
            const char raw = static_cast<char>(byte);
            mIsLead[byte - 0x80] = IsDBCSLeadByteEx(number, static_cast<BYTE>(byte)) != 0;
            mIsCharacter[byte - 0x80] = !mIsLead[byte - 0x80] && Decode(number, {&raw, 1});
        }
    }

    void AppendDecoded(std::string_view bytes, std::string& text) const override {
        while (!bytes.empty()) {
            const std::size_t ascii = AsciiPrefix(bytes);
            text.append(bytes.substr(0, ascii));
            bytes.remove_prefix(ascii);
            const std::string_view run = bytes.substr(0, RunLength(bytes));
            if (const std::optional<std::wstring> wide = Decode(mNumber, run); wide || run.empty()) {
                text += wide ? win32::ToUtf8(*wide) : "";
            } else {
                AppendOneByOne(run, text);
            }
            bytes.remove_prefix(run.size());
        }
    }

    char* Encode(std::string_view text, char* to) const override {
        std::string run; // of characters that may have a place
        for (std::size_t position = 0; position < text.size();) {
            const std::size_t start = position;
            const char32_t character = ReadUtf8(text, position);
            const bool mayHavePlace = character >= 0x80 && character < 0x10000;
            if (!mayHavePlace || run.size() >= LongestRun) {
                to = EncodeRun(run, to);
                run.clear();
            }
            if (mayHavePlace) {
                run.append(text.substr(start, position - start));
            } else {
                *to++ = character < 0x80 ? static_cast<char>(character) : QuestionMark.front();
            }
        }
        return EncodeRun(run, to);
    }

    std::size_t FindLost(std::string_view bytes) const override {
        for (std::size_t position = AsciiPrefix(bytes); position < bytes.size();) {
            const std::size_t length = CharacterLength(bytes.substr(position));
            if (length == 0) {
                return position;
            }
            position += length;
            position += AsciiPrefix(bytes.substr(position));
        }
        return std::string_view::npos;
    }

private:
    // The number of bytes at the front of `bytes` that are no ASCII, the second bytes of characters included. At most
    // as many as are converted at once.
    std::size_t RunLength(std::string_view bytes) const {
        std::size_t length = 0;
        while (length < std::min(bytes.size(), LongestRun) && static_cast<unsigned char>(bytes[length]) >= 0x80) {
            length += IsLead(bytes[length]) && length + 1 < bytes.size() ? 2 : 1;
        }
        return length;
    }

    // The bytes of the character at the front of `bytes`, 0 when there is none.
    std::size_t CharacterLength(std::string_view bytes) const {
        const auto byte = static_cast<unsigned char>(bytes.front());
        if (byte < 0x80) {
            return 1;
        }
        if (!IsLead(bytes.front())) {
            return mIsCharacter[byte - 0x80U] ? 1 : 0;
        }
        return bytes.size() > 1 && Decode(mNumber, bytes.substr(0, 2)) ? 2 : 0;
    }

    bool IsLead(char byte) const { return mIsLead[static_cast<unsigned char>(byte) - 0x80U]; }

    void AppendOneByOne(std::string_view bytes, std::string& text) const {
        while (!bytes.empty()) {
            const std::size_t length = CharacterLength(bytes);
            if (length == 0) {
                AppendUtf8(ReplacementCharacter, text);
            } else {
                text += win32::ToUtf8(Decode(mNumber, bytes.substr(0, length)).value());
            }
            bytes.remove_prefix(std::max<std::size_t>(length, 1));
        }
    }

    // For characters of one UTF-16 unit each.
    char* EncodeRun(const std::string& run, char* to) const {
        if (run.empty()) {
            return to;
        }
        const std::wstring wide = win32::ToWide(run);
        const int room = static_cast<int>(MostEncoded(run.size()));
        return to + WideCharToMultiByte(mNumber, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()), to,
                                        room, QuestionMark.data(), nullptr);
    }

    UINT mNumber;
    std::array<bool, 128> mIsLead = {};
    std::array<bool, 128> mIsCharacter = {}; // a single byte that is one
};

// Windows set to UTF-8 for everything.
class Utf8CodePage final : public CodePage {
public:
    void AppendDecoded(std::string_view bytes, std::string& text) const override {
        for (std::size_t position = 0; position < bytes.size();) {
            AppendUtf8(ReadUtf8OrReplacement(bytes, position), text);
        }
    }

    char* Encode(std::string_view text, char* to) const override {
        for (std::size_t position = 0; position < text.size();) {
            const std::size_t start = position;
            const bool valid = ReadUtf8(text, position) != NotACharacter;
            const std::string_view bytes = valid ? text.substr(start, position - start) : QuestionMark;
            to = std::copy(bytes.begin(), bytes.end(), to);
        }
        return to;
    }

    std::size_t FindLost(std::string_view bytes) const override {
        for (std::size_t position = 0; position < bytes.size();) {
            const std::size_t start = position;
            if (ReadUtf8(bytes, position) == NotACharacter) {
                return start;
            }
        }
        return std::string_view::npos;
    }
};

bool HasAsciiHalf(UINT codePage) {
    std::string ascii;
    std::wstring wide;
    for (int byte = 0; byte < 0x80; ++byte) {
        ascii += static_cast<char>(byte);
        wide += static_cast<wchar_t>(byte);
    }
    return Decode(codePage, ascii) == wide;
}

std::unique_ptr<CodePage> MakeSingleByteCodePage(UINT number) {
    SingleByteCodePage::HighHalf highHalf;
    for (unsigned i = 0; i < highHalf.size(); ++i) {
        const char raw = static_cast<char>(0x80 + i);
        const std::wstring wide = Decode(number, {&raw, 1}).value_or(L"");
        const bool assigned = wide.size() == 1 && wide[0] >= 0x80 && (HasControls(number) || !IsStandIn(wide[0]));
        highHalf[i] = assigned ? wide[0] : U'\0';
    }
    return std::make_unique<SingleByteCodePage>(highHalf);
}

// Null when it cannot be used for files.
std::unique_ptr<CodePage> MakeNumberedCodePage(UINT number) {
    constexpr UINT windows1252 = 1252;
    if (number == windows1252) {
        return std::make_unique<SingleByteCodePage>(Windows1252HighHalf());
    }
    if (number == CP_UTF8) {
        return std::make_unique<Utf8CodePage>();
    }
    CPINFO info = {};
    if (GetCPInfo(number, &info) == 0 || info.MaxCharSize > 2 || !HasAsciiHalf(number)) {
        return nullptr;
    }
    if (info.MaxCharSize == 1) {
        return MakeSingleByteCodePage(number);
    }
    if (info.LeadByte[0] == 0) {
        return nullptr;
    }
    return std::make_unique<DoubleByteCodePage>(number);
}

// The number that `name` stands for, 0 for none.
UINT CodePageNumber(std::string_view given) {
    std::string name = CapitalLetters(given);
    for (const NamedCodePage& named : NamedCodePages) {
        if (named.name == name) {
            return named.number == CP_ACP ? GetACP() : named.number;
        }
    }
    for (const std::string_view prefix : {"WINDOWS-", "CP"}) {
        if (name.starts_with(prefix)) {
            name.erase(0, prefix.size());
            break;
        }
    }
    constexpr std::size_t mostDigits = 5;
    const bool number = !name.empty() && name.size() <= mostDigits && std::all_of(name.begin(), name.end(), IsDigit);
    return number ? static_cast<UINT>(std::stoul(name)) : 0;
}

} // namespace

std::unique_ptr<CodePage> MakeSystemCodePage() {
    std::unique_ptr<CodePage> codePage = MakeNumberedCodePage(GetACP());
    return codePage ? std::move(codePage) : std::make_unique<SingleByteCodePage>(Windows1252HighHalf());
}

std::string SystemCodePageName() {
    return "windows-" + std::to_string(MakeNumberedCodePage(GetACP()) ? GetACP() : 1252);
}

std::unique_ptr<CodePage> MakeCodePage(const std::string& name) {
    constexpr UINT firstReal = 37; // smaller numbers stand for whatever the system has set
    const UINT number = CodePageNumber(name);
    if (number < firstReal) {
        return nullptr;
    }
    return MakeNumberedCodePage(number);
}

} // namespace tessaly
