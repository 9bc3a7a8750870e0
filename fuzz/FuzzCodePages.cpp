// Any bytes go through every kind of code page, and through UTF-16. The result is text, it goes back to the same bytes
// where each byte is a character, and nothing leaks. The first byte picks the code page.
#include "fuzz/Check.h"
#include "platform/system/CodePages.h"
#include "platform/text/CodePage.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace {

using namespace tessaly;

struct Page {
    const char* name;
    bool oneByte; // a character is one byte, so every byte survives
};

constexpr Page Pages[] = {{"1252", true}, {"1250", true},   {"1251", true},        {"1253", true},
                          {"1254", true}, {"1257", true},   {"437", true},         {"850", true},
                          {"866", true},  {"KOI8-R", true}, {"ISO-8859-15", true}, {"932", false},
                          {"936", false}, {"949", false},   {"950", false},        {"UTF-8", false}};

const CodePage& CodePageOf(std::size_t index) {
    static std::array<std::unique_ptr<CodePage>, std::size(Pages)> pages;
    if (!pages[index]) {
        pages[index] = MakeCodePage(Pages[index].name);
        CHECK(pages[index] != nullptr);
    }
    return *pages[index];
}

std::string Encoded(const CodePage& page, std::string_view text) {
    const auto room = std::make_unique<char[]>(CodePage::MostEncoded(text.size()));
    const char* const end = page.Encode(text, room.get());
    return std::string(room.get(), static_cast<std::size_t>(end - room.get()));
}

std::u32string Characters(std::string_view text) {
    std::u32string characters;
    for (std::size_t at = 0; at < text.size();) {
        characters += ReadUtf8(text, at);
    }
    return characters;
}

// Each character comes back as itself or as a question mark.
void CheckRoundTrip(const CodePage& page, std::string_view text) {
    std::string back;
    page.AppendDecoded(Encoded(page, text), back);
    CHECK(IsUtf8(back));
    const std::u32string before = Characters(text);
    const std::u32string after = Characters(back);
    CHECK(before.size() == after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        CHECK(before[i] == after[i] || after[i] == U'?');
        CHECK(before[i] >= 0x80 || before[i] == after[i]);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t index = data[0] % std::size(Pages);
    const CodePage& page = CodePageOf(index);
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    std::string text = "x";
    page.AppendDecoded(bytes, text);
    CHECK(text.front() == 'x' && IsUtf8(text));
    if (Pages[index].oneByte) {
        CHECK(Encoded(page, text) == "x" + bytes);
        CHECK(Characters(text).size() == bytes.size() + 1);
    }
    const std::size_t lost = page.FindLost(bytes);
    CHECK(lost == std::string::npos || (lost < bytes.size() && !Pages[index].oneByte));

    if (IsUtf8(bytes)) {
        CheckRoundTrip(page, bytes);
        CHECK(Utf8Position(bytes, Characters(bytes).size()) == bytes.size());
    } else {
        Encoded(page, bytes); // must fit into its room
    }
    std::string rebuilt;
    for (const char32_t character : Characters(bytes)) {
        if (character != NotACharacter) {
            AppendUtf8(character, rebuilt);
        }
    }
    CHECK(IsUtf8(rebuilt) && (rebuilt == bytes) == IsUtf8(bytes));

    const std::string wide = DecodeUtf16(bytes);
    CHECK(IsUtf8(wide) == (wide.find(BrokenCharacter) == std::string::npos));
    return 0;
}
