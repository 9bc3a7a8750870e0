// Reading a setting: it never fails, and every key is closed again.
#include "app/Settings.h"
#include "tests/desktop/Registry.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

using Call = memory::Registry::Call;

class ReadRegValueTest : public testing::Test {
protected:
    Registry::Handle MakeKey() {
        Registry::Handle key = 0;
        mRegistry.store.CreateKey(Registry::LocalMachine, SettingsKey, Registry::SetAccess, key);
        return key;
    }

    void Store(std::string_view name, std::uint32_t type, std::string_view bytes) {
        const Registry::Handle key = MakeKey();
        mRegistry.store.SetValue(key, name, type, bytes);
        mRegistry.store.CloseKey(key);
    }

    std::string Read(std::string_view name) {
        const std::string value = ReadRegValue(mRegistry, Registry::LocalMachine, SettingsKey, name);
        EXPECT_EQ(mRegistry.OpenCount(), 0U) << "a key was left open";
        return value;
    }

    // "" or the names of the calls made, each by its first letter.
    std::string Calls() const {
        std::string letters;
        for (const memory::Registry::Record& record : mRegistry.calls) {
            letters += "OQC"[static_cast<std::size_t>(record.call)];
        }
        return letters;
    }

    memory::Registry mRegistry;
};

TEST_F(ReadRegValueTest, AStringStoredWithItsNulIsReadWhole) {
    Store(CompBatSetting, Registry::StringType, "/opt/compile.sh\0"s);
    EXPECT_EQ(Read(CompBatSetting), "/opt/compile.sh");
}

TEST_F(ReadRegValueTest, AStringStoredWithoutItsNulLosesItsLastCharacter) {
    Store(CompBatSetting, Registry::StringType, "/opt/compile.sh");
    EXPECT_EQ(Read(CompBatSetting), "/opt/compile.s");
}

TEST_F(ReadRegValueTest, TheLastCharacterMayHaveSeveralBytes) {
    Store("umlaut", Registry::StringType, "T\xC3\xBC");
    Store("euro", Registry::StringType, "\xE2\x82\xAC");
    Store("face", Registry::StringType, "ab\xF0\x9F\x98\x80");
    EXPECT_EQ(Read("umlaut"), "T");
    EXPECT_EQ(Read("euro"), "");
    EXPECT_EQ(Read("face"), "ab");
}

TEST_F(ReadRegValueTest, ACharacterInFrontOfTheNulStaysWhole) {
    Store("umlaut", Registry::StringType, "T\xC3\xBC\0"s);
    EXPECT_EQ(Read("umlaut"), "T\xC3\xBC");
}

TEST_F(ReadRegValueTest, BytesThatAreNoCharacterAreCutOneByOne) {
    Store("broken", Registry::StringType, "\xBC\xBC\xBC\xBC\xBC\xBC");
    EXPECT_EQ(Read("broken"), "\xBC\xBC\xBC\xBC\xBC");
}

TEST_F(ReadRegValueTest, ANulInsideAStringStays) {
    Store("list", Registry::StringType, "a\0b\0"s);
    EXPECT_EQ(Read("list"), "a\0b"s);
}

TEST_F(ReadRegValueTest, AStringOfNoBytesIsEmpty) {
    Store("none", Registry::StringType, "");
    Store("one", Registry::StringType, "\0"s);
    EXPECT_EQ(Read("none"), "");
    EXPECT_EQ(Read("one"), "");
}

TEST_F(ReadRegValueTest, ANumberIsReadAsItsDecimalText) {
    Store(LanguageSetting, Registry::DwordType, "\x2A\0\0\0"s);
    EXPECT_EQ(Read(LanguageSetting), "42");
}

TEST_F(ReadRegValueTest, ANumberIsSigned) {
    Store("all", Registry::DwordType, "\xFF\xFF\xFF\xFF");
    Store("least", Registry::DwordType, "\0\0\0\x80"s);
    Store("most", Registry::DwordType, "\xFF\xFF\xFF\x7F");
    EXPECT_EQ(Read("all"), "-1");
    EXPECT_EQ(Read("least"), "-2147483648");
    EXPECT_EQ(Read("most"), "2147483647");
}

TEST_F(ReadRegValueTest, ANumberOfTooManyBytesIsEmpty) {
    Store("long", Registry::DwordType, "\1\0\0\0\0\0\0\0"s);
    EXPECT_EQ(Read("long"), "");
}

TEST_F(ReadRegValueTest, ANumberThatCannotBeReadIsEmpty) {
    Store(LanguageSetting, Registry::DwordType, "\x2A\0\0\0"s);
    mRegistry.FailAt(Call::QueryValue, 2, 5);
    EXPECT_EQ(Read(LanguageSetting), "");
}

TEST_F(ReadRegValueTest, OtherTypesAreEmptyAndNotFetched) {
    for (const std::uint32_t type : {0U, 2U, 3U, 5U, 7U, 11U, 0xFFFFFFFFU}) {
        mRegistry.calls.clear();
        Store("other", type, "abcd\0"s);
        EXPECT_EQ(Read("other"), "") << type;
        EXPECT_EQ(Calls(), "OQC") << type;
    }
}

TEST_F(ReadRegValueTest, AMissingKeyIsEmptyAndNothingIsClosed) {
    EXPECT_EQ(Read(CompBatSetting), "");
    EXPECT_EQ(Calls(), "O");
}

TEST_F(ReadRegValueTest, AMissingValueIsEmptyAndTheKeyIsClosed) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    EXPECT_EQ(Read(CompBatSetting), "");
    EXPECT_EQ(Calls(), "OQC");
}

TEST_F(ReadRegValueTest, TheKeyIsOpenedForQueriesOnly) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    EXPECT_EQ(Read(LanguageSetting), "de");
    ASSERT_EQ(Calls(), "OQQC");
    EXPECT_EQ(mRegistry.calls[0].name, "SOFTWARE\\Ostrel\\OstrelCompiler");
    EXPECT_EQ(mRegistry.calls[0].number, 0x80000002U);
    EXPECT_EQ(mRegistry.calls[0].access, 1U);
}

TEST_F(ReadRegValueTest, TheSizeIsAskedForBeforeTheValueIsFetched) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    EXPECT_EQ(Read(LanguageSetting), "de");
    ASSERT_EQ(Calls(), "OQQC");
    EXPECT_EQ(mRegistry.calls[1].name, "Language");
    EXPECT_FALSE(mRegistry.calls[1].hasBuffer);
    EXPECT_TRUE(mRegistry.calls[2].hasBuffer);
    EXPECT_EQ(mRegistry.calls[2].number, 3U);
}

TEST_F(ReadRegValueTest, TheResultOfTheFirstQueryIsNotChecked) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.AnswerAt(1, Registry::MoreData, {Registry::StringType, 3});
    EXPECT_EQ(Read(LanguageSetting), "de");
}

TEST_F(ReadRegValueTest, AStringThatCannotBeFetchedIsNuls) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.FailAt(Call::QueryValue, 2, 5);
    EXPECT_EQ(Read(LanguageSetting), "\0\0"s);
}

TEST_F(ReadRegValueTest, TheSizeOfTheFirstQueryCounts) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.AnswerAt(1, Registry::Success, {Registry::StringType, 6});
    EXPECT_EQ(Read(LanguageSetting), "de\0\0\0"s);

    Store(LanguageSetting, Registry::StringType, "english\0"s);
    mRegistry.AnswerAt(1, Registry::Success, {Registry::StringType, 3});
    EXPECT_EQ(Read(LanguageSetting), "\0\0"s) << "the value no longer fits";

    mRegistry.AnswerAt(2, Registry::Success, {Registry::StringType, 0xFFFFFFFF});
    EXPECT_EQ(Read(LanguageSetting).size(), 7U);
}

TEST_F(ReadRegValueTest, AnAbsurdSizeIsEmpty) {
    mRegistry.store.CloseKey(MakeKey());
    mRegistry.AnswerAt(1, Registry::NotFound, {Registry::StringType, 0xFFFFFFFF});
    EXPECT_EQ(Read(LanguageSetting), "");
}

TEST_F(ReadRegValueTest, AKeyThatCannotBeOpenedIsEmpty) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.FailAt(Call::OpenKey, 1, 5);
    EXPECT_EQ(Read(LanguageSetting), "");
    EXPECT_EQ(Calls(), "O");
}

TEST_F(ReadRegValueTest, NoExceptionOfTheRegistryReachesTheCaller) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.ThrowAt(Call::OpenKey, 1);
    EXPECT_EQ(Read(LanguageSetting), "");
    for (const std::size_t query : {1U, 2U}) {
        mRegistry.calls.clear();
        mRegistry.ThrowAt(Call::QueryValue, query);
        EXPECT_EQ(Read(LanguageSetting), "");
        EXPECT_EQ(Calls().back(), 'C');
    }
}

TEST_F(ReadRegValueTest, AKeyThatCannotBeClosedDoesNoHarm) {
    Store(LanguageSetting, Registry::StringType, "de\0"s);
    mRegistry.FailAt(Call::CloseKey, 1, Registry::BadHandle);
    EXPECT_EQ(ReadRegValue(mRegistry, Registry::LocalMachine, SettingsKey, LanguageSetting), "de");
}

TEST_F(ReadRegValueTest, CaseDoesNotCount) {
    Store("FCompBat", Registry::StringType, "x\0"s);
    EXPECT_EQ(ReadRegValue(mRegistry, Registry::LocalMachine, "software\\OSTREL\\ostrelcompiler", "fcompbat"), "x");
}

} // namespace
} // namespace tessaly
