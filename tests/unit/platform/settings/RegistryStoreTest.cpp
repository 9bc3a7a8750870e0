#include "platform/settings/RegistryStore.h"

#include "tests/unit/platform/settings/RegistryValue.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

using AccessRights = RegistryStore::AccessRights;

// The key `path` below HKEY_LOCAL_MACHINE, made and opened.
Registry::Handle Made(RegistryStore& store, std::string_view path, std::uint32_t access = Registry::NoAccess) {
    Registry::Handle key = 0;
    EXPECT_EQ(store.CreateKey(Registry::LocalMachine, path, access, key), Registry::Success);
    return key;
}

TEST(RegistryStoreTest, AHandleThatIsNotOpenIsBad) {
    RegistryStore store;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(store.QueryValue(1, "a", type, nullptr, size), Registry::BadHandle);
    EXPECT_EQ(store.CloseKey(1), Registry::BadHandle);
    EXPECT_EQ(store.SetValue(1, "a", 1, ""), Registry::BadHandle);
    EXPECT_EQ(store.DeleteValue(1, "a"), Registry::BadHandle);
    const Registry::Handle key = Made(store, "A");
    EXPECT_EQ(store.CloseKey(key), Registry::Success);
    EXPECT_EQ(store.QueryValue(key, "a", type, nullptr, size), Registry::BadHandle);
}

TEST(RegistryStoreTest, ABufferThatIsTooSmallIsNotWrittenTo) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A");
    store.SetValue(key, "a", Registry::StringType, "abc");
    std::string buffer = "xx";
    std::uint32_t type = 0;
    std::uint32_t size = 2;
    EXPECT_EQ(store.QueryValue(key, "a", type, buffer.data(), size), Registry::MoreData);
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(type, Registry::StringType);
    EXPECT_EQ(buffer, "xx");
    store.CloseKey(key);
}

TEST(RegistryStoreTest, AKeyAboveAnotherCanBeOpened) {
    RegistryStore store;
    store.CloseKey(Made(store, "A\\B\\C"));
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "x"), "missing");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "a\\b", "x"), "missing");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B\\C", "x"), "missing");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B\\C\\D", "x"), "no key");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\BB", "x"), "no key");
    EXPECT_EQ(ValueIn(store, Registry::CurrentUser, "A", "x"), "no key");
    EXPECT_EQ(ValueIn(store, Registry::CurrentUser, "", "x"), "missing");
}

TEST(RegistryStoreTest, ADeletedKeyCanStillBeReadWhereItIsOpen) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A");
    store.SetValue(key, "a", Registry::StringType, "abc");
    store.DeleteKey(Registry::LocalMachine, "A");
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(store.QueryValue(key, "a", type, nullptr, size), Registry::Success);
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(store.CloseKey(key), Registry::Success);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "a"), "no key");
}

TEST(RegistryStoreTest, AKeyThatIsThereIsOpenedAndKeepsItsValues) {
    RegistryStore store;
    const Registry::Handle first = Made(store, "A\\B");
    EXPECT_EQ(store.SetValue(first, "a", Registry::StringType, "x\0"s), Registry::Success);
    const Registry::Handle second = Made(store, "a\\b\\");
    EXPECT_NE(first, second);
    EXPECT_EQ(store.SetValue(second, "b", Registry::StringType, "y\0"s), Registry::Success);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B", "a"), "1:7800");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B", "b"), "1:7900");
    EXPECT_EQ(store.OpenCount(), 2U);
}

TEST(RegistryStoreTest, AValueReplacesOneOfTheSameName) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A");
    EXPECT_EQ(store.SetValue(key, "Name", Registry::StringType, "long\0"s), Registry::Success);
    EXPECT_EQ(store.SetValue(key, "NAME", Registry::DwordType, "\1\0\0\0"s), Registry::Success);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "name"), "4:01000000");
}

TEST(RegistryStoreTest, AKeyAboveAnotherCanBeWritten) {
    RegistryStore store;
    store.CloseKey(Made(store, "A\\B"));
    Registry::Handle key = 0;
    ASSERT_EQ(store.OpenKey(Registry::LocalMachine, "A", Registry::SetAccess, key), Registry::Success);
    EXPECT_EQ(store.SetValue(key, "a", Registry::StringType, "x"), Registry::Success);
    EXPECT_EQ(store.CloseKey(key), Registry::Success);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "a"), "1:78");
}

TEST(RegistryStoreTest, WhatIsWrittenToADeletedKeyIsLost) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A");
    store.DeleteKey(Registry::LocalMachine, "A");
    EXPECT_EQ(store.SetValue(key, "a", Registry::StringType, "x"), Registry::Success);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "a"), "no key");
}

TEST(RegistryStoreTest, RightsDoNotCountUnlessTheyAreEnforced) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A", Registry::NoAccess);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(store.SetValue(key, "a", Registry::StringType, "x"), Registry::Success);
    EXPECT_EQ(store.QueryValue(key, "a", type, nullptr, size), Registry::Success);
    EXPECT_EQ(store.DeleteValue(key, "a"), Registry::Success);
}

TEST(RegistryStoreTest, EnforcedRightsLetThroughWhatTheyName) {
    RegistryStore store(AccessRights::Enforced);
    struct Case {
        std::uint32_t access;
        std::int32_t set;
        std::int32_t query;
    };
    const Registry::Handle maker = Made(store, "A", Registry::SetAccess);
    for (const Case& rights : {Case{Registry::NoAccess, 5, 5}, Case{Registry::QueryAccess, 5, 0},
                               Case{Registry::SetAccess, 0, 5}, Case{0xF003F, 0, 0}}) {
        ASSERT_EQ(store.SetValue(maker, "a", Registry::StringType, "old"), Registry::Success);
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        const Registry::Handle made = Made(store, "A", rights.access);
        EXPECT_EQ(store.QueryValue(made, "a", type, nullptr, size), rights.query) << rights.access;
        EXPECT_EQ(store.SetValue(made, "a", Registry::StringType, "new"), rights.set) << rights.access;
        EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "a"), rights.set == 0 ? "1:6e6577" : "1:6f6c64");
        EXPECT_EQ(store.DeleteValue(made, "a"), rights.set) << rights.access;
        EXPECT_EQ(store.CloseKey(made), Registry::Success) << rights.access;

        Registry::Handle opened = 0;
        ASSERT_EQ(store.OpenKey(Registry::LocalMachine, "A", rights.access, opened), Registry::Success);
        EXPECT_EQ(store.SetValue(opened, "a", Registry::StringType, "new"), rights.set) << rights.access;
        EXPECT_EQ(store.CloseKey(opened), Registry::Success) << rights.access;
    }
}

} // namespace
} // namespace tessaly
