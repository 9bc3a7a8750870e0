// Code pages: nothing is lost that has a byte, and what has none becomes "?".
#include "platform/system/CodePages.h"
#include "platform/text/SingleByteCodePage.h"
#include "platform/text/Utf8.h"
#include "tests/unit/platform/text/CodePageText.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(CodePageTest, Windows1252HasItsCharactersAndKeepsTheFiveUnassignedBytes) {
    const SingleByteCodePage codePage(Windows1252HighHalf());
    EXPECT_EQ(Decode(codePage, "a\x80\x85\x99\xA0\xC4\xDF\xE4\xFF"), "a€…™\u00A0Äßäÿ");
    EXPECT_EQ(Decode(codePage, "\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(Encode(codePage, "\u0081\u008D\u008F\u0090\u009D"), "\x81\x8D\x8F\x90\x9D");
}

TEST(CodePageTest, Windows1252IsWhatIconvSaysWhereIconvHasAnOpinion) {
    const SingleByteCodePage own(Windows1252HighHalf());
    const auto other = MakeCodePage("MS-ANSI"); // an alias that does not go to the built-in table
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(Decode(own, AllBytes()), Decode(*other, AllBytes()));
}

TEST(CodePageTest, EveryByteOfASingleByteCodePageSurvives) {
    for (const char* name : {"1252", "1250", "CP1251", "windows-1253", "1255", "1257", "874", "ISO-8859-15", "437"}) {
        const auto codePage = MakeCodePage(name);
        ASSERT_NE(codePage, nullptr) << name;
        const std::string text = Decode(*codePage, AllBytes());
        EXPECT_TRUE(IsUtf8(text)) << name;
        EXPECT_EQ(Encode(*codePage, text), AllBytes()) << name;
    }
}

TEST(CodePageTest, CharactersWithoutAPlaceBecomeOneQuestionMarkEach) {
    EXPECT_EQ(Encode(*MakeSystemCodePage(), "aΩ😀\u0100b"), "a???b");
    EXPECT_EQ(Encode(*MakeCodePage("1253"), "Ωäx"), "\xD9?x");
    EXPECT_EQ(Encode(*MakeCodePage("932"), "あä😀x"), "\x82\xA0??x");
}

TEST(CodePageTest, NoCharacterBecomesOneThatOnlyLooksLikeIt) {
    EXPECT_EQ(Encode(*MakeCodePage("932"), "あ¥あ¢x—〜"), "\x82\xA0?\x82\xA0?x??");
    for (const char* name : {"932", "936", "949", "950", "EUC-JP", "GB18030"}) {
        const auto codePage = MakeCodePage(name);
        ASSERT_NE(codePage, nullptr) << name;
        for (char32_t character = 0x80; character < 0x10000; ++character) {
            std::string text;
            if (character < 0xD800 || character > 0xDFFF) {
                AppendUtf8(character, text);
            }
            const std::string back = Decode(*codePage, Encode(*codePage, text));
            ASSERT_TRUE(back == text || back == "?") << name << " " << static_cast<unsigned>(character);
        }
    }
}

TEST(CodePageTest, BytesThatAreNotUtf8BecomeQuestionMarks) {
    EXPECT_EQ(Encode(*MakeSystemCodePage(), "a\xFF\xC3"), "a??");
    EXPECT_EQ(Encode(*MakeCodePage("932"), "a\xFF\xC3"), "a??");
}

TEST(CodePageTest, WhatIsDecodedIsTextEvenWhereIconvGoesBeyondTheLastCharacter) {
    const auto codePage = MakeCodePage("UTF-8");
    EXPECT_EQ(Decode(*codePage, "a\xC3\xA4z"), "aäz");
    for (const char* bytes : {"\xF9\x81\x89\x89\x89", "\xF7\xBF\xBF\xBF", "\xFD\xBF\xBF\xBF\xBF\xBF", "\xED\xA0\x80"}) {
        EXPECT_TRUE(IsUtf8(Decode(*codePage, bytes))) << bytes;
    }
}

TEST(CodePageTest, MultiByteCodePagesDecodeAndEncode) {
    const auto codePage = MakeCodePage("932");
    ASSERT_NE(codePage, nullptr);
    EXPECT_EQ(Decode(*codePage, "a\x82\xA0\x83\x5B"), "aあゼ");
    EXPECT_EQ(Encode(*codePage, "aあゼ"), "a\x82\xA0\x83\x5B");
    EXPECT_EQ(Decode(*codePage, "a\x82"), "a\uFFFD");
    EXPECT_EQ(Decode(*codePage, "\xFF"
                                "b"),
              "\uFFFD"
              "b");
}

TEST(CodePageTest, LongTextsCrossEveryInnerBuffer) {
    for (const char* name : {"1252", "932"}) {
        const auto codePage = MakeCodePage(name);
        std::string text;
        for (int i = 0; i < 20000; ++i) {
            text += i % 7 == 0 ? "\u00B6" : "x"; // has a place in both
        }
        EXPECT_EQ(Decode(*codePage, Encode(*codePage, text)), text) << name;
    }
}

TEST(CodePageTest, BytesThatASaveWouldChangeAreFound) {
    const SingleByteCodePage codePage(Windows1252HighHalf());
    EXPECT_EQ(codePage.FindLost("a\xE4 b\x81"), std::string_view::npos);
    EXPECT_EQ(MakeCodePage("932")->FindLost("\x82\xA0\x82"), 2U);
    EXPECT_EQ(MakeCodePage("932")->FindLost("\x82\xA0"), std::string_view::npos);
}

TEST(CodePageTest, NamesAreTakenInEveryUsualForm) {
    for (const char* name : {"1252", "cp1252", "CP1252", "windows-1252", "Windows-1252", "1250", "utf-8", "gb18030"}) {
        EXPECT_NE(MakeCodePage(name), nullptr) << name;
    }
}

TEST(CodePageTest, UnknownNamesAndPagesThatAreNotAsciiAreRefused) {
    for (const char* name : {"", "nonsense", "99999", "UTF-16", "UTF-16LE", "UTF-7", "UCS-4", "IBM037", "ISO-2022-JP",
                             "HZ", "1252//TRANSLIT", "//"}) {
        EXPECT_EQ(MakeCodePage(name), nullptr) << name;
    }
}

} // namespace
} // namespace tessaly
