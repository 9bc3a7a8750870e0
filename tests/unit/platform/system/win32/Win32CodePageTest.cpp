// Code pages by Windows: nothing is lost that has a byte, and what has none becomes "?", never a look-alike.
#include "platform/system/CodePages.h"
#include "platform/text/SingleByteCodePage.h"
#include "platform/text/Utf8.h"
#include "tests/unit/platform/text/CodePageText.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace tessaly {
namespace {

TEST(Win32CodePageTest, TheSystemsCodePageIsTheOneThatWindowsNames) {
    const auto named = MakeCodePage(std::to_string(GetACP()));
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(Decode(*MakeSystemCodePage(), AllBytes()), Decode(*named, AllBytes()));
}

TEST(Win32CodePageTest, Windows1252KeepsTheFiveUnassignedBytes) {
    const auto codePage = MakeCodePage("1252");
    EXPECT_EQ(Decode(*codePage, "a\x80\xE4\x81\x8D\x8F\x90\x9D"), "a€ä\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(Decode(*codePage, AllBytes()), Decode(SingleByteCodePage(Windows1252HighHalf()), AllBytes()));
    EXPECT_EQ(codePage->FindLost("\xE4\x81"), std::string::npos);
}

TEST(Win32CodePageTest, EveryByteOfASingleByteCodePageSurvives) {
    for (const char* name : {"1250", "CP1251", "windows-1253", "1254", "1255", "1256", "1257", "1258", "874", "437",
                             "850", "ISO-8859-1", "ISO-8859-15", "KOI8-R"}) {
        const auto codePage = MakeCodePage(name);
        ASSERT_NE(codePage, nullptr) << name;
        const std::string text = Decode(*codePage, AllBytes());
        EXPECT_TRUE(IsUtf8(text)) << name;
        EXPECT_EQ(Encode(*codePage, text), AllBytes()) << name;
    }
}

TEST(Win32CodePageTest, BytesThatACodePageLeavesOpenAreNotLost) {
    EXPECT_EQ(MakeCodePage("1253")->FindLost("a\xD9\xAA"), std::string::npos);
    EXPECT_EQ(MakeCodePage("874")->FindLost("\xA1\xFF"), std::string::npos);
    EXPECT_EQ(MakeCodePage("ISO-8859-1")->FindLost(AllBytes()), std::string::npos);
}

TEST(Win32CodePageTest, DoubleByteCodePagesDecodeAndEncode) {
    struct Case {
        const char* name;
        const char* text;
        const char* bytes;
    };
    for (const Case& each :
         {Case{"932", "aあゼ\\ｱ", "a\x82\xA0\x83\x5B\x5C\xB1"}, Case{"936", "a中文", "a\xD6\xD0\xCE\xC4"},
          Case{"949", "a한글", "a\xC7\xD1\xB1\xDB"}, Case{"950", "a中文", "a\xA4\xA4\xA4\xE5"}}) {
        const auto codePage = MakeCodePage(each.name);
        ASSERT_NE(codePage, nullptr) << each.name;
        EXPECT_EQ(Decode(*codePage, each.bytes), each.text) << each.name;
        EXPECT_EQ(Encode(*codePage, each.text), each.bytes) << each.name;
        EXPECT_EQ(codePage->FindLost(each.bytes), std::string::npos) << each.name;
    }
}

TEST(Win32CodePageTest, AByteOutOfPlaceInADoubleByteCodePageIsOneReplacementCharacter) {
    const auto codePage = MakeCodePage("932");
    EXPECT_EQ(Decode(*codePage, "a\x82"), "a\uFFFD");
    EXPECT_EQ(codePage->FindLost("\x82\xA0\x82"), 2U);
    const std::string text = Decode(*codePage, "\x82\xA0\x81\x20\x82\xA0");
    EXPECT_TRUE(text.starts_with("あ\uFFFD")) << text;
    EXPECT_TRUE(text.ends_with("あ")) << text;
    EXPECT_EQ(codePage->FindLost("\x82\xA0\x81\x20"), 2U);
}

TEST(Win32CodePageTest, EveryDoubleByteCharacterSurvivesOrIsARepetitionOfOneThatDoes) {
    for (const char* name : {"932", "936", "949", "950"}) {
        const auto codePage = MakeCodePage(name);
        for (int lead = 0x80; lead < 0x100; ++lead) {
            for (int trail = 0x40; trail < 0x100; ++trail) {
                const std::string bytes = {static_cast<char>(lead), static_cast<char>(trail)};
                const std::string text = Decode(*codePage, bytes);
                ASSERT_TRUE(IsUtf8(text));
                if (codePage->FindLost(bytes) == std::string::npos) {
                    // Some characters stand in a code page twice; Windows writes one of the two.
                    ASSERT_EQ(Decode(*codePage, Encode(*codePage, text)), text) << name << " " << lead << " " << trail;
                }
            }
        }
    }
}

TEST(Win32CodePageTest, CharactersWithoutAPlaceBecomeOneQuestionMarkEach) {
    EXPECT_EQ(Encode(*MakeCodePage("1252"), "aΩ😀\u0100b"), "a???b");
    EXPECT_EQ(Encode(*MakeCodePage("1253"), "Ωäx"), "\xD9?x");
    EXPECT_EQ(Encode(*MakeCodePage("932"), "あä😀x"), "\x82\xA0??x");
    EXPECT_EQ(Encode(*MakeCodePage("utf-8"), "あ😀"), "あ😀");
}

TEST(Win32CodePageTest, NoCharacterBecomesOneThatOnlyLooksLikeIt) {
    EXPECT_EQ(Encode(*MakeCodePage("1252"), "\u2212\u0391\uFF21\u221E"), "????"); // minus, Alpha, wide A, infinity
    EXPECT_EQ(Encode(*MakeCodePage("1251"), "é"), "?");
    EXPECT_EQ(Encode(*MakeCodePage("932"), "éñ"), "??");
}

TEST(Win32CodePageTest, BytesThatAreNotUtf8BecomeQuestionMarks) {
    for (const char* name : {"1252", "1253", "932", "utf-8"}) {
        EXPECT_EQ(Encode(*MakeCodePage(name), "a\xFF\xC3"), "a??") << name;
    }
}

TEST(Win32CodePageTest, BrokenUtf8InAFileBecomesReplacementCharacters) {
    const auto codePage = MakeCodePage("65001");
    ASSERT_NE(codePage, nullptr);
    EXPECT_EQ(Decode(*codePage, "ä\xFFz\xC3"), "ä\uFFFDz\uFFFD");
    EXPECT_EQ(codePage->FindLost("ä\xFF"), 2U);
}

TEST(Win32CodePageTest, LongTextsCrossEveryInnerBuffer) {
    for (const char* name : {"1252", "932", "utf-8"}) {
        const auto codePage = MakeCodePage(name);
        for (const int density : {1, 7}) {
            std::string text;
            for (int i = 0; i < 100000; ++i) {
                text += i % density == 0 ? "\u00B6" : "x"; // has a place in all of them
            }
            EXPECT_EQ(Decode(*codePage, Encode(*codePage, text)), text) << name;
        }
    }
}

TEST(Win32CodePageTest, NamesAreTakenInEveryUsualForm) {
    for (const char* name : {"1252", "cp1252", "CP1252", "windows-1252", "Windows-1252", "1250", "utf-8", "UTF8",
                             "65001", "shift_jis", "iso-8859-1", "big5"}) {
        EXPECT_NE(MakeCodePage(name), nullptr) << name;
    }
}

TEST(Win32CodePageTest, UnknownNamesAndPagesThatAreNotAsciiAreRefused) {
    for (const char* name : {"", "0", "1", "nonsense", "99999", "999999999999", "UTF-16", "1200", "1201", "65000",
                             "037", "IBM037", "500", "50220", "1252//TRANSLIT", "//"}) {
        EXPECT_EQ(MakeCodePage(name), nullptr) << name;
    }
}

} // namespace
} // namespace tessaly
