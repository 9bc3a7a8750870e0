// A value is changed in a registry file, and every other byte stays.
#include "platform/settings/RegistryText.h"
#include "platform/system/Registry.h"
#include "tests/unit/platform/settings/RegistryValue.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

// The file with the number 7 as the value "n" of HKLM\K.
std::string WithSeven(std::string_view file) {
    return SetInRegistryText(file, {Registry::LocalMachine, "K"}, "n", {Registry::DwordType, "\7\0\0\0"s})
        .value_or("none");
}

TEST(RegistryEditTest, AValueIsChangedInItsPlaceAndEverythingElseStays) {
    EXPECT_EQ(WithSeven("odd first line\r\n; comment\r\n\r\n [hklm\\k] ; key\r\n\"a\"=\"\xFF\"\r\n  \"N\" = "
                        "dword:1 ; why\r\n\"z\"=-\r\n[HKLM\\L]\r\n\"n\"=dword:2"),
              "odd first line\r\n; comment\r\n\r\n [hklm\\k] ; key\r\n\"a\"=\"\xFF\"\r\n  \"N\" = "
              "dword:00000007 ; why\r\n\"z\"=-\r\n[HKLM\\L]\r\n\"n\"=dword:2");
}

TEST(RegistryEditTest, OfSeveralValuesWithOneNameTheLastIsChanged) {
    const std::string first(First);
    EXPECT_EQ(WithSeven(first + "[HKLM\\K]\n\"n\"=dword:1\n\"n\"=\"x\\\"y\"\n[HKEY_LOCAL_MACHINE\\K\\]\n\"n\"=-\n"),
              first + "[HKLM\\K]\n\"n\"=dword:1\n\"n\"=\"x\\\"y\"\n[HKEY_LOCAL_MACHINE\\K\\]\n\"n\"=dword:00000007\n");
}

TEST(RegistryEditTest, AValueOverSeveralLinesIsReplacedWhole) {
    const std::string first(First);
    EXPECT_EQ(WithSeven(first + "[HKLM\\K]\n\"n\"=hex:01,\\\n  02,\\ ; more\n  03 ; end\n\"b\"=hex:\n"),
              first + "[HKLM\\K]\n\"n\"=dword:00000007 ; end\n\"b\"=hex:\n");
}

TEST(RegistryEditTest, ANewValueStandsBehindTheOthersOfItsKey) {
    const std::string first(First);
    EXPECT_EQ(WithSeven(first + "[HKLM\\K]\n\"a\"=hex:01,\\\n  02\n\n; about L\n[HKLM\\L]\n"),
              first + "[HKLM\\K]\n\"a\"=hex:01,\\\n  02\n\"n\"=dword:00000007\n\n; about L\n[HKLM\\L]\n");
    EXPECT_EQ(WithSeven(first + "[HKLM\\K]"), first + "[HKLM\\K]\n\"n\"=dword:00000007");
    EXPECT_EQ(WithSeven("x\r\n[HKLM\\K]\r\n[HKLM\\L]\r\n"), "x\r\n[HKLM\\K]\r\n\"n\"=dword:00000007\r\n[HKLM\\L]\r\n");
}

TEST(RegistryEditTest, ANewKeyStandsAtTheEnd) {
    const std::string first(First);
    const std::string added = "\n[HKEY_LOCAL_MACHINE\\K]\n\"n\"=dword:00000007\n";
    EXPECT_EQ(WithSeven(""), first + added);
    EXPECT_EQ(WithSeven(first + "[HKLM\\K2]\n"), first + "[HKLM\\K2]\n" + added);
    EXPECT_EQ(WithSeven(first + "[HKCU\\K]"), first + "[HKCU\\K]\n" + added);
    EXPECT_EQ(WithSeven(first + "[HKCU\\K]\n\r"), first + "[HKCU\\K]\n\r\n" + added); // the half of a line's end
}

TEST(RegistryEditTest, AKeyThatIsDeletedFurtherDownIsAddedAnew) {
    const std::string file = std::string(First) + "[HKLM\\K]\n\"n\"=dword:1\n[-HKLM\\K]\n";
    EXPECT_EQ(WithSeven(file), file + "\n[HKEY_LOCAL_MACHINE\\K]\n\"n\"=dword:00000007\n");
}

TEST(RegistryEditTest, Utf16StaysUtf16EvenWhereItIsNoText) {
    const std::string before = "\xFF\xFE" + Wide("Windows Registry Editor Version 5.00\r\n[HKLM\\K]\r\n\"a\"=\"") +
                               "\x01\xD8"s + Wide("\"\r\n");
    const std::string odd = Wide("\"n\"=dword:1\r\n") + "?";
    EXPECT_EQ(WithSeven(before + odd), before + Wide("\"n\"=dword:00000007\r\n") + "?");
}

TEST(RegistryEditTest, EveryTypeIsReadBackAsItWasSet) {
    const std::pair<std::uint32_t, std::string> values[] = {
        {Registry::StringType, "C:\\a \"b\" \xC3\xA4\xF0\x9F\x98\x80;x\0"s},
        {Registry::StringType, "no end"},
        {Registry::StringType, "two\r\nlines\0and more\0"s},
        {Registry::StringType, ""},
        {Registry::DwordType, "\4\3\2\1"s},
        {Registry::BinaryType, "\0\xFF\0"s},
        {Registry::BinaryType, ""},
        {0x12345, "\1\2"s},
    };
    for (const std::string& file :
         {""s, "\xFF\xFE" + Wide("Windows Registry Editor Version 5.00\r\n"), "\xEF\xBB\xBF"s + First.data()}) {
        for (const auto& [type, bytes] : values) {
            for (const std::string name : {"", "name", "a \"quoted\\\" n\xC3\xA4me"}) {
                const auto changed = SetInRegistryText(file, {Registry::CurrentUser, "K\\L\\"}, name, {type, bytes});
                ASSERT_TRUE(changed.has_value());
                RegistryStore read;
                RegistryStore expected;
                EXPECT_TRUE(ReadRegistryText(*changed, read).empty());
                Registry::Handle key = 0;
                expected.CreateKey(Registry::CurrentUser, "K\\L", Registry::SetAccess, key);
                expected.SetValue(key, name, type, bytes);
                EXPECT_EQ(ValueIn(read, Registry::CurrentUser, "K\\L", name),
                          ValueIn(expected, Registry::CurrentUser, "K\\L", name));
            }
        }
    }
}

TEST(RegistryEditTest, WhatAFileCannotCarryIsRefused) {
    EXPECT_FALSE(SetInRegistryText("", {Registry::LocalMachine, "K"}, "a\nb", {Registry::DwordType, "\1\0\0\0"s}));
    EXPECT_FALSE(SetInRegistryText("", {Registry::LocalMachine, "K"}, "n", {Registry::StringType, "\xFF\0"s}));
    EXPECT_FALSE(SetInRegistryText("", {5, "K"}, "n", {Registry::DwordType, "\1\0\0\0"s}));
}

} // namespace
} // namespace tessaly
