// UTF-8 and UTF-16: whole characters come back, broken ones become U+FFFD.
#include "platform/system/win32/Text.h"

#include "platform/text/Utf8.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

TEST(TextTest, TextComesBackAsItWas) {
    for (const std::string& text : {""s, "a"s, "Größe 1.PSF"s, "日本語"s, "a😀b"s, "nul\0nul"s,
                                    "a long line of ASCII, ä, and another long line of ASCII behind it 😀"s}) {
        EXPECT_EQ(win32::ToUtf8(win32::ToWide(text)), text);
    }
}

TEST(TextTest, EveryCharacterHasItsUnits) {
    EXPECT_EQ(win32::ToWide("aä€😀\0z"s), L"a\u00E4\u20AC\xD83D\xDE00\0z"s);
    EXPECT_EQ(win32::ToUtf8(L"a\u00E4\u20AC\xD83D\xDE00\0z"s), "aä€😀\0z"s);
    for (char32_t character = 1; character <= 0x10FFFF; ++character) {
        if (character < 0xD800 || character >= 0xE000) {
            std::string text;
            AppendUtf8(character, text);
            const std::wstring wide = win32::ToWide(text);
            ASSERT_EQ(wide.size(), character < 0x10000 ? 1U : 2U) << static_cast<std::uint32_t>(character);
            ASSERT_EQ(win32::ToUtf8(wide), text) << static_cast<std::uint32_t>(character);
        }
    }
}

TEST(TextTest, EachByteThatIsNoUtf8BecomesAReplacementCharacter) {
    EXPECT_EQ(win32::ToWide("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(win32::ToWide("a\xC3"), L"a\uFFFD");
    EXPECT_EQ(win32::ToWide("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
}

TEST(TextTest, EachLoneSurrogateBecomesAReplacementCharacter) {
    EXPECT_EQ(win32::ToUtf8(L"a\xD83D"s), "a\uFFFD");
    EXPECT_EQ(win32::ToUtf8(L"\xDE00z"s), "\uFFFDz");
    EXPECT_EQ(win32::ToUtf8(L"\xDE00\xD83D"s), "\uFFFD\uFFFD");
    EXPECT_EQ(win32::ToUtf8(L"\xD83D\xD83D\xDE00"s), "\uFFFD😀");
}

} // namespace
} // namespace tessaly
