// The registry in memory, by the calls of Registry.
#include "platform/settings/RegistryStore.h"

#include "tests/unit/platform/settings/RegistryValue.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

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

TEST(RegistryStoreTest, ADeletedKeyTakesThoseBelowItAlong) {
    RegistryStore store;
    for (const char* path : {"A", "A\\B\\C", "a\\d", "A B", "AB", "A]"}) {
        store.CloseKey(Made(store, path));
    }
    store.DeleteKey({Registry::LocalMachine, "a\\"});
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A", "x"), "no key");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B", "x"), "no key");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "A\\B\\C", "x"), "no key");
    EXPECT_EQ(store.keys.size(), 3U);
    store.DeleteKey({Registry::CurrentUser, ""});
    EXPECT_EQ(store.keys.size(), 3U);
    store.DeleteKey({Registry::LocalMachine, ""});
    EXPECT_TRUE(store.keys.empty());
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

TEST(RegistryStoreTest, RightsDoNotCount) {
    RegistryStore store;
    const Registry::Handle key = Made(store, "A", Registry::NoAccess);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(store.SetValue(key, "a", Registry::StringType, "x"), Registry::Success);
    EXPECT_EQ(store.QueryValue(key, "a", type, nullptr, size), Registry::Success);
}

} // namespace
} // namespace tessaly
