#include "platform/settings/SettingsFile.h"

#include "platform/settings/RegistryStore.h"
#include "platform/system/posix/SequentialFiles.h"
#include "tests/desktop/SequentialFiles.h"
#include "tests/unit/platform/settings/RegistryValue.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <unistd.h>

namespace tessaly {
namespace {

constexpr std::string_view First = "Windows Registry Editor Version 5.00\n";

class SettingsFilesTest : public testing::Test {
protected:
    SettingsFilesTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("settings" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(mFolder);
    }
    ~SettingsFilesTest() override { std::filesystem::remove_all(mFolder); }

    // Makes the settings file of a folder and returns its path.
    std::string Make(const std::string& folder) {
        std::filesystem::create_directories(mFolder / folder / "tessaly");
        const std::string path = Path(folder) + "/tessaly/settings.reg";
        std::ofstream file(path);
        return path;
    }

    std::string Path(const std::string& name) const { return (mFolder / name).string(); }

    Environment Variables() const {
        return [this](const std::string& name) {
            const auto variable = mVariables.find(name);
            return variable != mVariables.end() ? std::optional(variable->second) : std::nullopt;
        };
    }

    // The file that counts most.
    std::optional<std::string> Find() const {
        const std::vector<std::string> files = SettingsFiles(Variables());
        return files.empty() ? std::nullopt : std::optional(files.back());
    }

    void Write(const std::string& path, const std::string& values) const {
        std::ofstream(path) << First << "[HKLM\\K]\n" << values;
    }

    std::filesystem::path mFolder;
    std::map<std::string, std::string> mVariables;
};

TEST_F(SettingsFilesTest, TheVariableOfItsOwnWins) {
    Make("home/.config");
    mVariables = {{"TESSALY_SETTINGS", "no/such.reg"}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), "no/such.reg");
}

TEST_F(SettingsFilesTest, AnEmptyVariableDoesNotCount) {
    const std::string file = Make("home/.config");
    mVariables = {{"TESSALY_SETTINGS", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), file);
}

TEST_F(SettingsFilesTest, TheUsersFolderComesBeforeTheSystems) {
    const std::string file = Make("config");
    Make("home/.config");
    Make("system");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"HOME", Path("home")}, {"XDG_CONFIG_DIRS", Path("system")}};
    EXPECT_EQ(Find(), file);
}

TEST_F(SettingsFilesTest, TheSystemsFoldersAreTriedInTheirOrder) {
    const std::string second = Make("second");
    Make("third");
    Make("home/.config");
    mVariables = {{"XDG_CONFIG_HOME", Path("empty")},
                  {"HOME", Path("home")},
                  {"XDG_CONFIG_DIRS", ":" + Path("first") + "::" + Path("second") + ":" + Path("third")}};
    EXPECT_EQ(Find(), second);
}

TEST_F(SettingsFilesTest, RelativePathsArePassedOver) {
    const std::string home = Make("home/.config");
    const std::string relative = std::filesystem::relative(mFolder).string();
    ASSERT_TRUE(std::filesystem::exists(relative + "/home/.config/tessaly/settings.reg"));
    mVariables = {{"XDG_CONFIG_HOME", relative + "/other"}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), home) << "as if it were not set";
    mVariables = {{"HOME", relative + "/home"}, {"XDG_CONFIG_DIRS", relative + "/home/.config:" + Path("none")}};
    EXPECT_EQ(Find(), std::nullopt);
}

TEST_F(SettingsFilesTest, AFolderOfThatNameIsNoFile) {
    std::filesystem::create_directories(mFolder / "config/tessaly/settings.reg");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("none")}};
    EXPECT_EQ(Find(), std::nullopt);
}

TEST_F(SettingsFilesTest, WithoutAnyVariableOnlyTheSystemsDefaultIsLeft) {
    const std::string standard = "/etc/xdg/tessaly/settings.reg";
    EXPECT_EQ(Find(), std::filesystem::is_regular_file(standard) ? std::optional(standard) : std::nullopt);
}

TEST_F(SettingsFilesTest, TheOneThatCountsMostIsTheLastOfAll) {
    const std::string first = Make("first");
    const std::string second = Make("second");
    const std::string own = Make("config");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("first") + ":" + Path("second")}};
    EXPECT_EQ(SettingsFiles(Variables()), (std::vector<std::string>{second, first, own}));
    mVariables["TESSALY_SETTINGS"] = "only.reg";
    EXPECT_EQ(SettingsFiles(Variables()), std::vector<std::string>{"only.reg"});
}

TEST_F(SettingsFilesTest, TheUsersOwnFileHasAPlaceBeforeItIsThere) {
    mVariables = {{"HOME", "/h"}};
    EXPECT_EQ(UserSettingsFile(Variables()), "/h/.config/tessaly/settings.reg");
    mVariables = {{"HOME", "/h"}, {"XDG_CONFIG_HOME", "/c"}};
    EXPECT_EQ(UserSettingsFile(Variables()), "/c/tessaly/settings.reg");
    mVariables["TESSALY_SETTINGS"] = "own.reg";
    EXPECT_EQ(UserSettingsFile(Variables()), "own.reg");
}

TEST_F(SettingsFilesTest, TheUsersValuesStandOverThoseForAllUsers) {
    Write(Make("system"), "\"a\"=\"system\"\n\"b\"=\"system\"\nwrong\n");
    Write(Make("config"), "\"b\"=\"own\"\n");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("system")}};
    posix::SequentialFiles files;
    RegistryStore store;
    EXPECT_EQ(ReadSettings(files, Variables(), store).size(), 1U);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "1:73797374656d00");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "b"), "1:6f776e00");
}

TEST_F(SettingsFilesTest, ATildeForAllUsersIsEachUsersHomeWithTheFoldersInIt) {
    Write(Make("system"), "\"a\"=\"~/new/folder/a.c\"\n\"b\"=\"x~/\"\n");
    Write(Make("config"), "\"c\"=\"~/own\"\n");
    mVariables = {{"HOME", Path("home")}, {"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("system")}};
    posix::SequentialFiles files;
    RegistryStore store;
    EXPECT_TRUE(ReadSettings(files, Variables(), store).empty());
    std::map<std::string, std::string> texts;
    store.ChangeStrings([&texts](std::string& bytes) { texts[bytes] = bytes; });
    EXPECT_TRUE(texts.contains(Path("home") + "/new/folder/a.c" + std::string(1, '\0')));
    EXPECT_TRUE(texts.contains(std::string("x~/") + '\0'));
    EXPECT_TRUE(texts.contains(std::string("~/own") + '\0')) << "as it always was in the user's own file";
    EXPECT_TRUE(std::filesystem::is_directory(mFolder / "home/new/folder"));
}

TEST(ProcessEnvironmentTest, AVariableHasAValueOrNone) {
    EXPECT_NE(ProcessEnvironment("PATH").value_or(""), "");
    EXPECT_EQ(ProcessEnvironment("NO_SUCH_VARIABLE_ANYWHERE"), std::nullopt);
}

TEST(ReadSettingsFileTest, TheFileIsReadIntoTheStore) {
    memory::SequentialFiles files;
    files.contents["s.reg"] = std::string(First) + "[HKLM\\K]\n\"a\"=\"x\"\nwrong\n";
    files.readSize = 7;
    RegistryStore store;
    const std::vector<RegistryTextError> errors = ReadSettingsFile(files, "s.reg", store);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].line, 4U);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "1:7800");
    EXPECT_EQ(files.OpenCount(), 0U);
}

TEST(ReadSettingsFileTest, AMissingFileIsAnEmptyRegistry) {
    posix::SequentialFiles files;
    RegistryStore store;
    EXPECT_TRUE(ReadSettingsFile(files, "/no/such/settings.reg", store).empty());
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "no key");
}

TEST(ReadSettingsFileTest, AFileThatCannotBeReadIsAnError) {
    posix::SequentialFiles files;
    RegistryStore store;
    const std::vector<RegistryTextError> errors = ReadSettingsFile(files, "/etc", store);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(ErrorText("/etc", errors[0]), "/etc: the settings file cannot be read: Is a directory");
}

TEST(ReadSettingsFileTest, AFileThatFailsHalfwayLeavesNothingInTheStore) {
    memory::SequentialFiles files;
    files.contents["s.reg"] = std::string(First) + "[HKLM\\K]\n";
    files.readSize = 10;
    files.FailAt(memory::SequentialFiles::Call::Read, 3);
    RegistryStore store;
    EXPECT_EQ(ReadSettingsFile(files, "s.reg", store).size(), 1U);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "no key");
}

TEST(ReadSettingsFileTest, AnEndlessFileIsAnError) {
    posix::SequentialFiles files;
    RegistryStore store;
    EXPECT_EQ(ReadSettingsFile(files, "/dev/zero", store).size(), 1U);
}

} // namespace
} // namespace tessaly
