// The registry of this machine, in a key of the test's own below the current user's. The system's code page must be
// Windows-1252.
#include "app/Settings.h"
#include "platform/system/win32/Registry.h"
#include "platform/system/win32/Text.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t ReadAndWrite = Registry::QueryAccess | Registry::SetAccess;

class Win32RegistryTest : public testing::Test {
protected:
    Win32RegistryTest() { RegDeleteTreeW(HKEY_CURRENT_USER, win32::ToWide(path).c_str()); }
    ~Win32RegistryTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, win32::ToWide(path).c_str()); }

    void SetUp() override { ASSERT_EQ(GetACP(), 1252U); }

    Registry::Handle MakeKey(std::uint32_t access) {
        Registry::Handle key = 0;
        EXPECT_EQ(registry.CreateKey(Registry::CurrentUser, path, access, key), Registry::Success);
        return key;
    }

    // "type:bytes", or "error" and its number.
    std::string Get(Registry::Handle key, std::string_view name) {
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        std::int32_t error = registry.QueryValue(key, name, type, nullptr, size);
        std::string bytes(size, '?');
        if (error == Registry::Success) {
            error = registry.QueryValue(key, name, type, bytes.data(), size);
        }
        return error == Registry::Success ? std::to_string(type) + ":" + bytes : "error " + std::to_string(error);
    }

    // What Windows itself holds in a string value.
    std::wstring Stored(const std::wstring& name) const {
        wchar_t text[100] = {};
        DWORD size = sizeof text;
        EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, win32::ToWide(path).c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                               text, &size),
                  ERROR_SUCCESS);
        return text;
    }

    void Store(const std::wstring& name, DWORD type, const std::wstring& text) const {
        const std::wstring guarded = text + L'.'; // or else Windows would count a NUL behind it, too
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, win32::ToWide(path).c_str(), name.c_str(), type, guarded.data(),
                                  static_cast<DWORD>(text.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }

    const std::string path = "Software\\Tessaly Prüfung " + std::to_string(GetCurrentProcessId());
    win32::Registry registry;
};

TEST_F(Win32RegistryTest, TextIsUtf8HereAndUtf16InTheRegistry) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    EXPECT_EQ(registry.SetValue(key, "Größe", Registry::StringType, "C:\\Gerät €\0"s), Registry::Success);
    EXPECT_EQ(Stored(L"Größe"), L"C:\\Gerät €");
    EXPECT_EQ(Get(key, "Größe"), "1:C:\\Gerät €\0"s);
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, TextThatOthersStoredIsReadWithItsNulOrWithout) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    Store(L"with", REG_SZ, L"ä\0"s);
    Store(L"without", REG_SZ, L"ä"s);
    Store(L"expand", REG_EXPAND_SZ, L"%x%ä\0"s);
    Store(L"several", REG_MULTI_SZ, L"ä\0ö\0\0"s);
    Store(L"empty", REG_SZ, L"");
    Store(L"elsewhere", REG_SZ, L"aΩz\0"s);
    EXPECT_EQ(Get(key, "with"), "1:ä\0"s);
    EXPECT_EQ(Get(key, "without"), "1:ä");
    EXPECT_EQ(Get(key, "expand"), "2:%x%ä\0"s);
    EXPECT_EQ(Get(key, "several"), "7:ä\0ö\0\0"s);
    EXPECT_EQ(Get(key, "empty"), "1:");
    EXPECT_TRUE(Get(key, "elsewhere").starts_with("1:a")) << "what has no place in the code page is lost, no more";
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, NobodyAddsATerminatingNul) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    EXPECT_EQ(registry.SetValue(key, "name", Registry::StringType, "ab"), Registry::Success);
    EXPECT_EQ(Get(key, "name"), "1:ab");
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, WhatHasNoPlaceInTheCodePageIsStoredAsAQuestionMark) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    EXPECT_EQ(registry.SetValue(key, "name", Registry::StringType, "aΩ\0"s), Registry::Success);
    EXPECT_EQ(Stored(L"name"), L"a?");
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, SizesAreThoseOfTheUtf8) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    registry.SetValue(key, "name", Registry::StringType, "ää\0"s);
    std::string buffer(5, '?');
    std::uint32_t type = 0;
    std::uint32_t size = 4; // enough for the bytes in the code page
    EXPECT_EQ(registry.QueryValue(key, "name", type, buffer.data(), size), Registry::MoreData);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(type, Registry::StringType);
    EXPECT_EQ(registry.QueryValue(key, "name", type, buffer.data(), size), Registry::Success);
    EXPECT_EQ(buffer, "ää\0"s);
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, BytesThatAreNoTextAreNotConverted) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    EXPECT_EQ(registry.SetValue(key, "bytes", Registry::BinaryType, "\xE4\0\xFF"s), Registry::Success);
    EXPECT_EQ(registry.SetValue(key, "number", Registry::DwordType, "\1\xE4\0\0"s), Registry::Success);
    EXPECT_EQ(Get(key, "bytes"), "3:\xE4\0\xFF"s);
    EXPECT_EQ(Get(key, "number"), "4:\1\xE4\0\0"s);
    EXPECT_EQ(Get(key, "missing"), "error 2");
    registry.CloseKey(key);
}

TEST_F(Win32RegistryTest, AKeyThatWasMadeWithoutRightsGivesAndTakesNothing) {
    const Registry::Handle key = MakeKey(Registry::NoAccess);
    EXPECT_EQ(registry.SetValue(key, "Language", Registry::DwordType, "\1\0\0\0"s), Registry::AccessDenied);
    EXPECT_EQ(Get(key, "Language"), "error 5");
    EXPECT_EQ(registry.CloseKey(key), Registry::Success);
}

TEST_F(Win32RegistryTest, TheProgramsOwnWriteIsRefusedBecauseItAsksForNoRights) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    registry.SetValue(key, "Language", Registry::DwordType, "\1\0\0\0"s);
    registry.CloseKey(key);
    std::string language = "0";
    EXPECT_EQ(WriteRegValue(registry, Registry::CurrentUser, path, "Number", "Language", language), "-1");
    EXPECT_EQ(ReadRegValue(registry, Registry::CurrentUser, path, "Language"), "1");
}

TEST_F(Win32RegistryTest, TheProgramReadsItsSettings) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    registry.CloseKey(key);
    Store(L"FCompBat", REG_SZ, L"C:\\Gerät\\übersetze.bat\0"s);
    EXPECT_EQ(ReadRegValue(registry, Registry::CurrentUser, path, "FCompBat"), "C:\\Gerät\\übersetze.bat");
    EXPECT_EQ(ReadRegValue(registry, Registry::CurrentUser, path, "FHelp"), "");
    EXPECT_EQ(ReadRegValue(registry, Registry::CurrentUser, path + "\\No", "FCompBat"), "");
}

TEST_F(Win32RegistryTest, AKeyThatIsNotThereCannotBeOpened) {
    Registry::Handle key = 0;
    EXPECT_EQ(registry.OpenKey(Registry::CurrentUser, path, Registry::QueryAccess, key), Registry::NotFound);
    registry.CloseKey(MakeKey(ReadAndWrite));
    EXPECT_EQ(registry.OpenKey(Registry::CurrentUser, path, Registry::QueryAccess, key), Registry::Success);
    EXPECT_EQ(registry.CloseKey(key), Registry::Success);
    EXPECT_EQ(registry.OpenKey(Registry::LocalMachine, "SOFTWARE", Registry::QueryAccess, key), Registry::Success);
    EXPECT_EQ(registry.CloseKey(key), Registry::Success);
}

TEST_F(Win32RegistryTest, AClosedKeyIsABadHandle) {
    const Registry::Handle key = MakeKey(ReadAndWrite);
    EXPECT_EQ(registry.CloseKey(key), Registry::Success);
    EXPECT_EQ(registry.CloseKey(key), Registry::BadHandle);
    EXPECT_EQ(registry.SetValue(key, "x", Registry::BinaryType, "x"), Registry::BadHandle);
    EXPECT_EQ(Get(key, "x"), "error 6");
}

} // namespace
} // namespace tessaly
