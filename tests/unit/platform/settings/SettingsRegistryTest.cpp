// A setting that the program writes ends up in the user's own file.
#include "platform/settings/SettingsRegistry.h"

#include "platform/system/SequentialFiles.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly {
namespace {

using namespace std::string_literals;

constexpr std::string_view Key = "SOFTWARE\\Ostrel\\OstrelCompiler";

class SettingsRegistryTest : public testing::Test {
protected:
    SettingsRegistryTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("write" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(mFolder / "system/tessaly");
    }
    ~SettingsRegistryTest() override { std::filesystem::remove_all(mFolder); }

    Environment Variables() const {
        return [this](const std::string& name) -> std::optional<std::string> {
            return name == "HOME"              ? std::optional((mFolder / "home").string())
                   : name == "XDG_CONFIG_DIRS" ? std::optional((mFolder / "system").string())
                                               : std::nullopt;
        };
    }

    std::filesystem::path OwnFile() const { return mFolder / "home/.config/tessaly/settings.reg"; }

    void WriteOwn(const std::string& bytes) const {
        std::filesystem::create_directories(OwnFile().parent_path());
        std::ofstream(OwnFile(), std::ios::binary) << bytes;
    }

    std::string ReadOwn() const {
        std::ifstream file(OwnFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // As the program does it when it ends.
    std::int32_t SetLanguage(char language) {
        SettingsRegistry registry(mFiles, Variables());
        Registry::Handle key = 0;
        registry.CreateKey(Registry::LocalMachine, Key, Registry::NoAccess, key);
        const std::int32_t error = registry.SetValue(key, "Language", Registry::DwordType, language + "\0\0\0"s);
        registry.CloseKey(key);
        return error;
    }

    // The bytes of a value, or "none".
    std::string Get(const std::string& name) {
        SettingsRegistry registry(mFiles, Variables());
        Registry::Handle key = 0;
        if (registry.OpenKey(Registry::LocalMachine, Key, Registry::QueryAccess, key) != Registry::Success) {
            return "none";
        }
        std::uint32_t type = 0;
        std::string bytes(1000, '\0');
        std::uint32_t size = 1000;
        const std::int32_t error = registry.QueryValue(key, name, type, bytes.data(), size);
        registry.CloseKey(key);
        return error == Registry::Success ? bytes.substr(0, size) : "none";
    }

    SystemFiles mFiles;
    std::filesystem::path mFolder;
};

TEST_F(SettingsRegistryTest, AWrittenValueStandsInTheUsersFileAndNothingElseChanges) {
    const std::string front = "Windows Registry Editor Version 5.00\r\n\r\n; mine\r\n[HKLM\\" + std::string(Key) +
                              "]\r\n\"FCompBat\"=\"/a b.sh\" ; the kit\r\n\"Language\"=";
    WriteOwn(front + "dword:0\r\n[HKLM\\Other]\r\n");
    EXPECT_EQ(SetLanguage(1), Registry::Success);
    EXPECT_EQ(ReadOwn(), front + "dword:00000001\r\n[HKLM\\Other]\r\n");
    EXPECT_EQ(Get("Language"), "\1\0\0\0"s);
    EXPECT_EQ(Get("FCompBat"), "/a b.sh\0"s);
}

TEST_F(SettingsRegistryTest, WithoutAFileThereIsOneOnlyOnceAValueIsWritten) {
    EXPECT_EQ(Get("Language"), "none");
    EXPECT_FALSE(std::filesystem::exists(OwnFile()));
    EXPECT_EQ(SetLanguage(1), Registry::Success);
    EXPECT_EQ(Get("Language"), "\1\0\0\0"s);
}

TEST_F(SettingsRegistryTest, AValueThatIsAsItWasWritesNoFile) {
    std::ofstream(mFolder / "system/tessaly/settings.reg")
        << "Windows Registry Editor Version 5.00\n[HKLM\\" << Key << "]\n\"Language\"=dword:1\n";
    EXPECT_EQ(SetLanguage(1), Registry::Success);
    EXPECT_FALSE(std::filesystem::exists(OwnFile()));
}

TEST_F(SettingsRegistryTest, WhatTheUserChangesStandsInHisOwnFileAndTheSystemsStays) {
    const std::filesystem::path system = mFolder / "system/tessaly/settings.reg";
    std::ofstream(system) << "Windows Registry Editor Version 5.00\n[HKLM\\" << Key
                          << "]\n\"FCompBat\"=\"/kit\"\n\"Language\"=dword:0\n";
    const auto size = std::filesystem::file_size(system);
    EXPECT_EQ(SetLanguage(1), Registry::Success);
    EXPECT_EQ(std::filesystem::file_size(system), size);
    EXPECT_EQ(Get("Language"), "\1\0\0\0"s);
    EXPECT_EQ(Get("FCompBat"), "/kit\0"s);
    EXPECT_EQ(ReadOwn().find("/kit"), std::string::npos);
}

TEST_F(SettingsRegistryTest, AFileThatCannotBeWrittenIsToldAndTheValueStays) {
    std::filesystem::create_directories(OwnFile()); // a folder in its place
    EXPECT_EQ(SetLanguage(1), Registry::AccessDenied);
    EXPECT_EQ(Get("Language"), "none");
}

TEST_F(SettingsRegistryTest, TheFileKeepsItsModeAndALinkStaysALink) {
    WriteOwn("");
    std::filesystem::rename(OwnFile(), mFolder / "real.reg");
    ASSERT_EQ(::chmod((mFolder / "real.reg").c_str(), 0640), 0);
    std::filesystem::create_symlink(mFolder / "real.reg", OwnFile());
    EXPECT_EQ(SetLanguage(1), Registry::Success);
    EXPECT_TRUE(std::filesystem::is_symlink(OwnFile()));
    struct stat status = {};
    ASSERT_EQ(::stat(OwnFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

} // namespace
} // namespace tessaly
