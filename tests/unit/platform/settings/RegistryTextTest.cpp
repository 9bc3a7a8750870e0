// Registry files as they are read: right lines, wrong lines, and any bytes at all.
#include "platform/settings/RegistryText.h"

#include "platform/settings/RegistryStore.h"
#include "tests/unit/platform/settings/RegistryValue.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <random>
#include <utility>

namespace tessaly {
namespace {

using namespace std::string_literals;

class RegistryTextTest : public testing::Test {
protected:
    // The errors, one "line: text" in each line.
    std::string ReadBytes(std::string_view bytes) {
        std::string errors;
        for (const RegistryTextError& error : ReadRegistryText(bytes, mStore)) {
            errors += std::to_string(error.line) + ": " + error.text + "\n";
        }
        return errors;
    }

    // The lines of a key, which begin in line 3.
    std::string ReadLines(const std::string& lines) { return ReadBytes(std::string(First) + "[HKLM\\K]\n" + lines); }

    std::string Value(std::string_view name) { return ValueIn(mStore, Registry::LocalMachine, "K", name); }

    // Of that key, with "|" between.
    std::string Values(std::initializer_list<std::string_view> names) {
        std::string values;
        for (const std::string_view name : names) {
            values += (values.empty() ? "" : "|") + Value(name);
        }
        return values;
    }

    RegistryStore mStore;
};

TEST_F(RegistryTextTest, AStringIsStoredWithItsNul) {
    EXPECT_EQ(ReadLines("\"a\"=\"xy\"\n\"empty\"=\"\"\n"), "");
    EXPECT_EQ(Values({"a", "empty"}), "1:787900|1:00");
}

TEST_F(RegistryTextTest, QuotesAndBackslashesAreEscaped) {
    EXPECT_EQ(ReadLines("\"a\\\"b\\\\\"=\"\\\\\\\"\"\n"), "");
    EXPECT_EQ(Value("a\"b\\"), "1:5c2200");
}

TEST_F(RegistryTextTest, ANumberHasOneToEightDigits) {
    EXPECT_EQ(ReadLines("\"a\"=dword:0000000a\n\"b\"=dword:F\n\"c\"=dword:89abcdeF"), "");
    EXPECT_EQ(Values({"a", "b", "c"}), "4:0a000000|4:0f000000|4:efcdab89");
}

TEST_F(RegistryTextTest, BytesMayGoOnInTheNextLines) {
    EXPECT_EQ(ReadLines("\"a\"=hex:01,\\\r\n  02,ff,\\\r\n  3\r\n\"b\"=hex(7):61,00\n\"c\"=hex:\n\"d\"=hex:\\\n  0A"),
              "");
    EXPECT_EQ(Values({"a", "b", "c", "d"}), "3:0102ff03|7:6100|3:|3:0a");
}

TEST_F(RegistryTextTest, TheTypeOfBytesIsHexadecimal) {
    EXPECT_EQ(ReadLines("\"a\"=hex(b):01\n\"b\"=hex(4):2a,00,00,00\n\"c\"=hex(FFFFFFFF):01\n"), "");
    EXPECT_EQ(Values({"a", "b", "c"}), "11:01|4:2a000000|4294967295:01");
}

TEST_F(RegistryTextTest, AStringInBytesIsStoredAsUtf8) {
    EXPECT_EQ(ReadLines("\"with\"=hex(1):fc,00,00,00\n\"without\"=hex(1):3d,d8,00,de\n"), "");
    EXPECT_EQ(Values({"with", "without"}), "1:c3bc00|1:f09f9880");
}

TEST_F(RegistryTextTest, AStringInBytesMustBeUtf16) {
    EXPECT_EQ(ReadLines("\"odd\"=hex(1):61\n\"half\"=hex(1):3d,d8\n"),
              "3: the bytes of the string are not UTF-16\n4: the bytes of the string are not UTF-16\n");
    EXPECT_EQ(Value("odd"), "missing");
}

TEST_F(RegistryTextTest, AMinusDeletesAValue) {
    EXPECT_EQ(ReadLines("\"a\"=\"x\"\n\"A\"=-\n\"never\"=-\n"), "");
    EXPECT_EQ(Value("a"), "missing");
}

TEST_F(RegistryTextTest, TheDefaultValueIsTheOneWithoutAName) {
    EXPECT_EQ(ReadLines("@=\"x\"\n"), "");
    EXPECT_EQ(Value(""), "1:7800");
    EXPECT_EQ(ReadLines("@=-\n"), "");
    EXPECT_EQ(Value(""), "missing");
}

TEST_F(RegistryTextTest, TheLastValueCounts) {
    EXPECT_EQ(ReadLines("\"Name\"=\"x\"\n\"nAME\"=dword:1\n[HKLM\\k]\n\"name\"=\"z\"\n"), "");
    EXPECT_EQ(Value("NAME"), "1:7a00");
}

TEST_F(RegistryTextTest, CaseCountsInLettersOutsideAscii) {
    EXPECT_EQ(ReadLines("\"\xC3\x84\"=\"x\"\n"), "");
    EXPECT_EQ(Values({"\xC3\x84", "\xC3\xA4"}), "1:7800|missing");
}

TEST_F(RegistryTextTest, BlanksCommentsAndBlankLinesDoNotCount) {
    EXPECT_EQ(ReadBytes("Windows Registry Editor Version 5.00 \r\n\r\n; a comment\r\n  [HKLM\\K]\t\r\n\r\n"
                        "\t\"a\" = \"x\"  ; a note\r\n ;\"a\"=\"y\"\r\n\"b\"=dword:1;\r\n\"c\"=hex: 01 , 02 ; end\r\n"
                        "\"d\"=hex:01,\\ ; more\r\n02\r\n\"a;b\"=\"c;d\"\r\n"),
              "");
    EXPECT_EQ(Values({"a", "b", "c", "d", "a;b"}), "1:7800|4:01000000|3:0102|3:0102|1:633b6400");
}

TEST_F(RegistryTextTest, EveryRootHasItsOwnKeys) {
    EXPECT_EQ(ReadBytes(std::string(First) + "[HKEY_LOCAL_MACHINE\\K]\n@=dword:1\n[HKEY_CURRENT_USER\\K]\n@=dword:2\n"
                                             "[HKEY_CLASSES_ROOT\\K]\n@=dword:3\n[HKEY_USERS\\K]\n@=dword:4\n"
                                             "[HKEY_CURRENT_CONFIG\\K]\n@=dword:5\n"),
              "");
    EXPECT_EQ(ValueIn(mStore, 0x80000002, "K", ""), "4:01000000");
    EXPECT_EQ(ValueIn(mStore, 0x80000001, "K", ""), "4:02000000");
    EXPECT_EQ(ValueIn(mStore, 0x80000000, "K", ""), "4:03000000");
    EXPECT_EQ(ValueIn(mStore, 0x80000003, "K", ""), "4:04000000");
    EXPECT_EQ(ValueIn(mStore, 0x80000005, "K", ""), "4:05000000");
}

TEST_F(RegistryTextTest, RootsHaveShortNamesInAnyCase) {
    EXPECT_EQ(ReadBytes(std::string(First) + "[hklm\\K]\n@=dword:1\n[Hkcu\\K]\n@=dword:2\n[HKCR\\K]\n@=dword:3\n"
                                             "[HKU\\K]\n@=dword:4\n[hkcc\\K]\n@=dword:5\n[hkey_Users\\L]\n@=dword:6\n"),
              "");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "K", ""), "4:01000000");
    EXPECT_EQ(ValueIn(mStore, Registry::CurrentUser, "K", ""), "4:02000000");
    EXPECT_EQ(ValueIn(mStore, Registry::ClassesRoot, "K", ""), "4:03000000");
    EXPECT_EQ(ValueIn(mStore, Registry::Users, "K", ""), "4:04000000");
    EXPECT_EQ(ValueIn(mStore, Registry::CurrentConfig, "K", ""), "4:05000000");
    EXPECT_EQ(ValueIn(mStore, Registry::Users, "L", ""), "4:06000000");
}

TEST_F(RegistryTextTest, AKeyIsDeletedWithThoseBelowIt) {
    EXPECT_EQ(ReadBytes(std::string(First) + "[HKLM\\A]\n@=\"\"\n[HKLM\\A\\B\\C]\n@=\"\"\n[HKLM\\A!]\n@=\"\"\n"
                                             "[HKLM\\Ab]\n@=\"\"\n[HKCU\\A]\n@=\"\"\n[-HKLM\\a]\n\"lost\"=\"\"\n"),
              "");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A", ""), "no key");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A\\B", ""), "no key");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A\\B\\C", ""), "no key");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A!", ""), "1:00");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "Ab", ""), "1:00");
    EXPECT_EQ(ValueIn(mStore, Registry::CurrentUser, "A", ""), "1:00");
}

TEST_F(RegistryTextTest, ARootCanBeEmptied) {
    EXPECT_EQ(ReadBytes(std::string(First) + "[HKLM\\A]\n[HKLM]\n@=\"\"\n[HKCU\\A]\n@=\"\"\n[-HKLM]\n"), "");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A", ""), "no key");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "", ""), "missing");
    EXPECT_EQ(ValueIn(mStore, Registry::CurrentUser, "A", ""), "1:00");
}

TEST_F(RegistryTextTest, ABackslashBehindAKeyDoesNotCount) {
    EXPECT_EQ(ReadBytes(std::string(First) + "[HKLM\\A\\]\n@=\"\"\n"), "");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A", ""), "1:00");
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, "A\\", ""), "1:00");
}

TEST_F(RegistryTextTest, ABomMayStandInFront) {
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF" + std::string(First) + "[HKLM\\K]\n@=\"\xC3\xBC\"\n"), "");
    EXPECT_EQ(Value(""), "1:c3bc00");
}

TEST_F(RegistryTextTest, Utf16IsReadWithABom) {
    EXPECT_EQ(ReadBytes("\xFF\xFE" + Wide(std::string(First) + "[HKLM\\K]\r\n\"") + "\xFC\0"s + Wide("\"=\"") +
                        "\x3D\xD8\x00\xDE"s + Wide("\"\r\n")),
              "");
    EXPECT_EQ(Value("\xC3\xBC"), "1:f09f988000");
}

TEST_F(RegistryTextTest, HalfACharacterInUtf16IsReported) {
    EXPECT_EQ(ReadBytes("\xFF\xFE" + Wide(std::string(First) + "[HKLM\\K]\n\"a\"=\"") + "\x3D\xD8"s +
                        Wide("\"\n\"b\"=\"") + "\x00\xDE"s + Wide("\"\n\"c\"=\"x\"\n;") + "x"),
              "3: the line is not valid text\n4: the line is not valid text\n");
    EXPECT_EQ(Value("c"), "1:7800");
}

TEST_F(RegistryTextTest, WithoutItsFirstLineAFileIsReported) {
    const std::string error = "1: the first line must be \"Windows Registry Editor Version 5.00\"\n";
    EXPECT_EQ(ReadBytes(""), error);
    EXPECT_EQ(ReadBytes("\n" + std::string(First) + "[HKLM\\K]\n"),
              error + "2: the line is neither a key in brackets nor a "
                      "value that begins with a quote\n");
    EXPECT_EQ(ReadBytes("REGEDIT4\n[HKLM\\K]\n@=dword:1\n"), error);
    EXPECT_EQ(Value(""), "4:01000000");
    EXPECT_EQ(ReadBytes("[HKLM\\K]\n@=dword:2\n"), error);
    EXPECT_EQ(Value(""), "4:02000000");
}

TEST_F(RegistryTextTest, AWrongLineCostsOnlyItself) {
    const std::array<std::pair<std::string, std::string>, 19> cases = {{
        {"name=\"x\"", "the line is neither a key in brackets nor a value that begins with a quote"},
        {"\"a", "the closing quote is missing"},
        {"\"a\"", "there is no \"=\" behind the name"},
        {"\"a\"x=\"y\"", "there is no \"=\" behind the name"},
        {"\"a\"=", "the value is neither a text in quotes nor begins with \"dword:\" or \"hex\""},
        {"\"a\"=5", "the value is neither a text in quotes nor begins with \"dword:\" or \"hex\""},
        {"\"a\"=\"x", "the closing quote is missing"},
        {"\"a\"=\"C:\\temp\"", "a backslash in a text is written twice, and before a quote once"},
        {"\"a\"=\"x\\", "a backslash in a text is written twice, and before a quote once"},
        {"\"a\"=\"x\" y", "there is something behind the value"},
        {"\"a\"=- y", "there is something behind the value"},
        {"\"a\"=dword:", "there are no hexadecimal digits behind \"dword:\""},
        {"\"a\"=dword:123456789", "there is something behind the value"},
        {"\"a\"=hex", "the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N"},
        {"\"a\"=hex(x):00", "the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N"},
        {"\"a\"=hex:00,", "a byte of the value is missing or is not hexadecimal"},
        {"\"a\"=hex:00 00", "there is no comma between two bytes"},
        {"\"a\"=\"\xFC\"", "the line is not valid text"},
        {"\"a\"=\"\0\""s, "the line is not valid text"},
    }};
    for (const auto& [line, error] : cases) {
        EXPECT_EQ(ReadLines("\"before\"=\"1\"\n" + line + "\n\"behind\"=\"2\"\n"), "4: " + error + "\n") << line;
        EXPECT_EQ(Value("a"), "missing") << line;
        EXPECT_EQ(Value("before"), "1:3100") << line;
        EXPECT_EQ(Value("behind"), "1:3200") << line;
        mStore.DeleteKey({Registry::LocalMachine, "K"});
    }
}

TEST_F(RegistryTextTest, AWrongKeyTakesItsValuesWithIt) {
    for (const std::string& line : std::vector<std::string>{"[HKEY_NOBODY\\X]", "[\\X]", "[HKLM\\X", "[HKLM\\X] x",
                                                            "[]", "[-]", "[HKLM\\\xFF]"}) {
        EXPECT_EQ(ReadLines(line + "\n\"lost\"=\"\"\n[HKLM\\K]\n\"kept\"=\"\"\n").substr(0, 3), "3: ") << line;
        EXPECT_EQ(Value("lost"), "missing") << line;
        EXPECT_EQ(Value("kept"), "1:00") << line;
    }
    EXPECT_EQ(ReadLines("[HKEY_NOBODY\\X]\n\"lost\"=\"\"\n"),
              "3: the key does not begin with a known root such as HKEY_LOCAL_MACHINE\n");
}

TEST_F(RegistryTextTest, AValueBeforeTheFirstKeyIsReported) {
    EXPECT_EQ(ReadBytes(std::string(First) + "\"a\"=\"x\"\n\"a\"=-\n"),
              "2: the value stands before the first key\n3: the value stands before the first key\n");
}

TEST_F(RegistryTextTest, AWrongValueIsReportedOnceHoweverManyLinesItHas) {
    EXPECT_EQ(ReadLines("\"a\"=hex:01,\\\n  xx,\\\n  02,\\\n  03\n\"b\"=hexx:01,\\\n  02\n\"c\"=\"\"\n"),
              "4: a byte of the value is missing or is not hexadecimal\n"
              "7: the value is neither \"hex:\" nor \"hex(N):\" with a hexadecimal N\n");
    EXPECT_EQ(Values({"a", "c"}), "missing|1:00");
}

TEST_F(RegistryTextTest, AValueCutOffByTheEndOfTheFileIsReported) {
    EXPECT_EQ(ReadLines("\"a\"=hex:01,\\\n"), "3: the value goes on behind the end of the file\n");
    EXPECT_EQ(Value("a"), "missing");
}

TEST_F(RegistryTextTest, NoBytesDoHarm) {
    constexpr std::string_view pieces[] = {"[HKLM\\K]",
                                           "\"a\"=",
                                           "hex:",
                                           "hex(1):",
                                           "dword:",
                                           "\\",
                                           "\n",
                                           "\r\n",
                                           ",",
                                           "01",
                                           "\"",
                                           "-",
                                           "[",
                                           "]",
                                           ";",
                                           "@=",
                                           " ",
                                           "\xFF",
                                           std::string_view("\0", 1)};
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes(round % 3 == 0 ? "\xFF\xFE" : round % 3 == 1 ? "" : First);
        for (int i = 0; i < 40; ++i) {
            bytes += pieces[random() % std::size(pieces)];
        }
        std::size_t last = 0;
        for (const RegistryTextError& error : ReadRegistryText(bytes, mStore)) {
            EXPECT_GE(error.line, std::max<std::size_t>(last, 1));
            last = error.line;
        }
    }
}

TEST_F(RegistryTextTest, ALargeFileTakesNoLongerThanItMust) {
    const std::string path(1000000, 'k');
    std::string lines = "[HKLM\\" + path + "]\n";
    for (int i = 0; i < 200000; ++i) {
        lines += "@=-\n\"\"=\"\"\n\"a\"=hex:00,\\\n  x\n";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ReadRegistryText(std::string(First) + lines, mStore).size(), 200000U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(ValueIn(mStore, Registry::LocalMachine, path, ""), "1:00");
}

} // namespace
} // namespace tessaly
