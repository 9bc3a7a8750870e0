// Writing a setting, with the bad manners that are kept on purpose.
#include "app/Settings.h"
#include "tests/desktop/Registry.h"
#include "tests/unit/platform/settings/RegistryValue.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace tessaly {
namespace {

using namespace std::string_literals;

using Call = memory::Registry::Call;

class WriteRegValueTest : public testing::Test {
protected:
    std::string Write(std::string_view typeName, std::string text) {
        mText = std::move(text);
        return WriteRegValue(mRegistry, Registry::LocalMachine, SettingsKey, typeName, "x", mText);
    }

    std::string Stored() { return ValueIn(mRegistry.store, Registry::LocalMachine, SettingsKey, "x"); }

    // The calls made, each by its first letter; N is CreateKey.
    std::string Calls() const {
        std::string letters;
        for (const memory::Registry::Record& record : mRegistry.calls) {
            letters += "OQCNS"[static_cast<std::size_t>(record.call)];
        }
        return letters;
    }

    memory::Registry mRegistry;
    std::string mText; // what was passed, as it came back
};

TEST_F(WriteRegValueTest, AStringIsStoredWithItsNul) {
    EXPECT_EQ(Write("String", "C:\\a.bat"), "0");
    EXPECT_EQ(Stored(), "1:433a5c612e62617400");
    EXPECT_EQ(Calls(), "NSC");
    EXPECT_EQ(mRegistry.OpenCount(), 0U);
}

TEST_F(WriteRegValueTest, TheNulIsAppendedToTheCallersText) {
    Write("String", "ab");
    EXPECT_EQ(mText, "ab\0"s);
    EXPECT_EQ(WriteRegValue(mRegistry, Registry::LocalMachine, SettingsKey, "String", "x", mText), "0");
    EXPECT_EQ(mText, "ab\0\0"s) << "written a second time";
    EXPECT_EQ(Stored(), "1:61620000");
}

TEST_F(WriteRegValueTest, AStringIsReadBackAsItWasWritten) {
    EXPECT_EQ(Write("String", "T\xC3\xBCr"), "0");
    EXPECT_EQ(ReadRegValue(mRegistry, Registry::LocalMachine, SettingsKey, "x"), "T\xC3\xBCr");
}

TEST_F(WriteRegValueTest, ANumberIsStoredInFourBytes) {
    struct Case {
        std::string text;
        std::string stored;
    };
    for (const Case& number :
         {Case{"1", "4:01000000"}, Case{"0", "4:00000000"}, Case{"255", "4:ff000000"}, Case{"305419896", "4:78563412"},
          Case{"-1", "4:ffffffff"}, Case{"2147483647", "4:ffffff7f"}, Case{"-2147483648", "4:00000080"}}) {
        EXPECT_EQ(Write("Number", number.text), "0") << number.text;
        EXPECT_EQ(Stored(), number.stored) << number.text;
        EXPECT_EQ(mText, number.text) << "only a string's text is changed";
    }
    EXPECT_EQ(mRegistry.OpenCount(), 0U);
}

TEST_F(WriteRegValueTest, ANumberIsReadLenientlyAndRounded) {
    struct Case {
        std::string text;
        std::string read;
    };
    for (const Case& number : {Case{"12abc", "12"}, Case{"2.5", "2"}, Case{"3.5", "4"}, Case{"abc", "0"},
                               Case{" ", "0"}, Case{"1 2", "12"}, Case{"&H10", "16"}}) {
        EXPECT_EQ(Write("Number", number.text), "0") << number.text;
        EXPECT_EQ(ReadRegValue(mRegistry, Registry::LocalMachine, SettingsKey, "x"), number.read) << number.text;
    }
}

TEST_F(WriteRegValueTest, ANumberOutside32BitsThrowsAndLeavesTheKeyOpen) {
    EXPECT_THROW(Write("Number", "2147483648"), std::range_error);
    EXPECT_EQ(Calls(), "N");
    EXPECT_EQ(mRegistry.OpenCount(), 1U);
    EXPECT_EQ(Stored(), "missing");
}

TEST_F(WriteRegValueTest, AnEmptyTextOpensNothing) {
    for (const char* typeName : {"String", "Number", "Text"}) {
        EXPECT_EQ(Write(typeName, ""), "-1") << typeName;
        EXPECT_EQ(mText, "") << typeName;
    }
    EXPECT_EQ(Calls(), "");
    EXPECT_EQ(Stored(), "no key");
}

TEST_F(WriteRegValueTest, AnUnknownTypeNameWritesNothingAndSucceeds) {
    for (const char* typeName : {"Text", "string", "NUMBER", "String ", ""}) {
        mRegistry.calls.clear();
        EXPECT_EQ(Write(typeName, "12"), "0") << typeName;
        EXPECT_EQ(Calls(), "NC") << typeName;
        EXPECT_EQ(mText, "12") << typeName;
    }
    EXPECT_EQ(Stored(), "missing") << "the key is made all the same";
    EXPECT_EQ(mRegistry.OpenCount(), 0U);
}

TEST_F(WriteRegValueTest, TheKeyIsMadeWithoutRights) {
    std::string text = "1";
    EXPECT_EQ(WriteRegValue(mRegistry, Registry::LocalMachine, SettingsKey, "Number", LanguageSetting, text), "0");
    ASSERT_EQ(Calls(), "NSC");
    EXPECT_EQ(mRegistry.calls[0].name, "SOFTWARE\\Ostrel\\OstrelCompiler");
    EXPECT_EQ(mRegistry.calls[0].number, 0x80000002U);
    EXPECT_EQ(mRegistry.calls[0].access, 0U);
    EXPECT_EQ(mRegistry.calls[1].name, "Language");
    EXPECT_EQ(mRegistry.calls[1].number, 4U);
    EXPECT_EQ(mRegistry.calls[1].bytes, "\1\0\0\0"s);
}

TEST_F(WriteRegValueTest, AKeyThatCannotBeMadeIsAFailureWithNothingToClose) {
    mRegistry.FailAt(Call::CreateKey, 1, Registry::AccessDenied);
    EXPECT_EQ(Write("String", "ab"), "-1");
    EXPECT_EQ(Calls(), "N");
    EXPECT_EQ(mText, "ab") << "the NUL comes after the key";

    mRegistry.FailAt(Call::CreateKey, 1, Registry::AccessDenied);
    EXPECT_EQ(Write("Text", "ab"), "-1") << "an unknown type succeeds only with a key";
}

TEST_F(WriteRegValueTest, AWriteThatFailsLeavesTheKeyOpen) {
    for (const char* typeName : {"String", "Number"}) {
        mRegistry.calls.clear();
        const std::size_t open = mRegistry.OpenCount();
        mRegistry.FailAt(Call::SetValue, 1, 1450);
        EXPECT_EQ(Write(typeName, "12"), "-1") << typeName;
        EXPECT_EQ(Calls(), "NS") << typeName;
        EXPECT_EQ(mRegistry.OpenCount(), open + 1) << typeName;
    }
    EXPECT_EQ(Stored(), "missing");
}

TEST_F(WriteRegValueTest, AKeyThatCannotBeClosedDoesNoHarm) {
    mRegistry.FailAt(Call::CloseKey, 1, Registry::BadHandle);
    EXPECT_EQ(Write("Number", "12"), "0");
    EXPECT_EQ(Stored(), "4:0c000000");
}

TEST_F(WriteRegValueTest, AnExceptionOfTheRegistryReachesTheCaller) {
    mRegistry.ThrowAt(Call::CreateKey, 1);
    EXPECT_THROW(Write("Number", "12"), std::bad_alloc);
    mRegistry.ThrowAt(Call::SetValue, 1);
    EXPECT_THROW(Write("Number", "12"), std::bad_alloc);
}

TEST(WriteRegValueOnTodaysWindowsTest, EveryWriteIsRefused) {
    memory::Registry registry(memory::Registry::AccessRights::Enforced);
    std::string number = "1";
    std::string text = "ab";
    EXPECT_EQ(WriteRegValue(registry, Registry::LocalMachine, SettingsKey, "Number", "n", number), "-1");
    EXPECT_EQ(WriteRegValue(registry, Registry::LocalMachine, SettingsKey, "String", "s", text), "-1");
    EXPECT_EQ(text, "ab\0"s);
    EXPECT_EQ(ValueIn(registry.store, Registry::LocalMachine, SettingsKey, "n"), "missing");
    EXPECT_EQ(ValueIn(registry.store, Registry::LocalMachine, SettingsKey, "s"), "missing");
    EXPECT_EQ(registry.OpenCount(), 2U);
}

TEST(WriteRegValueOnTodaysWindowsTest, AKeyLetsThroughWhatItsRightsName) {
    struct Case {
        std::uint32_t access;
        std::int32_t set;
        std::int32_t query;
    };
    for (const Case& rights : {Case{Registry::NoAccess, 5, 5}, Case{Registry::QueryAccess, 5, 0},
                               Case{Registry::SetAccess, 0, 5}, Case{0xF003F, 0, 0}}) {
        memory::Registry registry(memory::Registry::AccessRights::Enforced);
        registry.store.keys[{Registry::LocalMachine, "A"}]["a"] = {Registry::StringType, "old"};
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        Registry::Handle key = 0;
        ASSERT_EQ(registry.OpenKey(Registry::LocalMachine, "A", rights.access, key), Registry::Success);
        EXPECT_EQ(registry.QueryValue(key, "a", type, nullptr, size), rights.query) << rights.access;
        EXPECT_EQ(registry.SetValue(key, "a", Registry::StringType, "new"), rights.set) << rights.access;
        EXPECT_EQ(registry.store.Find({Registry::LocalMachine, "A"}, "a")->bytes, rights.set == 0 ? "new" : "old");
    }
}

TEST(WriteRegValueOnTodaysWindowsTest, AValueCanStillBeRead) {
    memory::Registry registry(memory::Registry::AccessRights::Enforced);
    Registry::Handle key = 0;
    ASSERT_EQ(registry.store.CreateKey(Registry::LocalMachine, SettingsKey, Registry::SetAccess, key), 0);
    ASSERT_EQ(registry.store.SetValue(key, LanguageSetting, Registry::DwordType, "\1\0\0\0"s), 0);
    EXPECT_EQ(ReadRegValue(registry, Registry::LocalMachine, SettingsKey, LanguageSetting), "1");
}

} // namespace
} // namespace tessaly
