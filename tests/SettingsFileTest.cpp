#include "platform/posix/SettingsFile.h"

#include "platform/RegistryStore.h"
#include "platform/memory/MemoryFiles.h"
#include "platform/posix/PosixFiles.h"
#include "tests/RegistryValue.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <unistd.h>

namespace tessaly {
namespace {

constexpr std::string_view First = "Windows Registry Editor Version 5.00\n";

class FindSettingsFileTest : public testing::Test {
protected:
    FindSettingsFileTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("settings" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(mFolder);
    }
    ~FindSettingsFileTest() override { std::filesystem::remove_all(mFolder); }

    // Makes the settings file of a folder and returns its path.
    std::string Make(const std::string& folder) {
        std::filesystem::create_directories(mFolder / folder / "tessaly");
        const std::string path = Path(folder) + "/tessaly/settings.reg";
        std::ofstream file(path);
        return path;
    }

    std::string Path(const std::string& name) const { return (mFolder / name).string(); }

    std::optional<std::string> Find() const {
        return FindSettingsFile([this](const std::string& name) {
            const auto variable = mVariables.find(name);
            return variable != mVariables.end() ? std::optional(variable->second) : std::nullopt;
        });
    }

    std::filesystem::path mFolder;
    std::map<std::string, std::string> mVariables;
};

TEST_F(FindSettingsFileTest, TheVariableOfItsOwnWins) {
    Make("home/.config");
    mVariables = {{"TESSALY_SETTINGS", "no/such.reg"}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), "no/such.reg");
}

TEST_F(FindSettingsFileTest, AnEmptyVariableDoesNotCount) {
    const std::string file = Make("home/.config");
    mVariables = {{"TESSALY_SETTINGS", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), file);
}

TEST_F(FindSettingsFileTest, TheUsersFolderComesBeforeTheSystems) {
    const std::string file = Make("config");
    Make("home/.config");
    Make("system");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"HOME", Path("home")}, {"XDG_CONFIG_DIRS", Path("system")}};
    EXPECT_EQ(Find(), file);
}

TEST_F(FindSettingsFileTest, TheSystemsFoldersAreTriedInTheirOrder) {
    const std::string second = Make("second");
    Make("third");
    Make("home/.config");
    mVariables = {{"XDG_CONFIG_HOME", Path("empty")},
                  {"HOME", Path("home")},
                  {"XDG_CONFIG_DIRS", ":" + Path("first") + "::" + Path("second") + ":" + Path("third")}};
    EXPECT_EQ(Find(), second);
}

TEST_F(FindSettingsFileTest, RelativePathsArePassedOver) {
    const std::string home = Make("home/.config");
    const std::string relative = std::filesystem::relative(mFolder).string();
    ASSERT_TRUE(std::filesystem::exists(relative + "/home/.config/tessaly/settings.reg"));
    mVariables = {{"XDG_CONFIG_HOME", relative + "/other"}, {"HOME", Path("home")}};
    EXPECT_EQ(Find(), home) << "as if it were not set";
    mVariables = {{"HOME", relative + "/home"}, {"XDG_CONFIG_DIRS", relative + "/home/.config:" + Path("none")}};
    EXPECT_EQ(Find(), std::nullopt);
}

TEST_F(FindSettingsFileTest, AFolderOfThatNameIsNoFile) {
    std::filesystem::create_directories(mFolder / "config/tessaly/settings.reg");
    mVariables = {{"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("none")}};
    EXPECT_EQ(Find(), std::nullopt);
}

TEST_F(FindSettingsFileTest, WithoutAnyVariableOnlyTheSystemsDefaultIsLeft) {
    const std::string standard = "/etc/xdg/tessaly/settings.reg";
    EXPECT_EQ(Find(), std::filesystem::is_regular_file(standard) ? std::optional(standard) : std::nullopt);
}

TEST(ProcessEnvironmentTest, AVariableHasAValueOrNone) {
    EXPECT_NE(ProcessEnvironment("PATH").value_or(""), "");
    EXPECT_EQ(ProcessEnvironment("NO_SUCH_VARIABLE_ANYWHERE"), std::nullopt);
}

TEST(ReadSettingsFileTest, TheFileIsReadIntoTheStore) {
    MemoryFiles files;
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
    PosixFiles files;
    RegistryStore store;
    EXPECT_TRUE(ReadSettingsFile(files, "/no/such/settings.reg", store).empty());
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "no key");
}

TEST(ReadSettingsFileTest, AFileThatCannotBeReadIsAnError) {
    PosixFiles files;
    RegistryStore store;
    const std::vector<RegistryTextError> errors = ReadSettingsFile(files, "/etc", store);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(ErrorText("/etc", errors[0]), "/etc: the settings file cannot be read: Is a directory");
}

TEST(ReadSettingsFileTest, AFileThatFailsHalfwayLeavesNothingInTheStore) {
    MemoryFiles files;
    files.contents["s.reg"] = std::string(First) + "[HKLM\\K]\n";
    files.readSize = 10;
    files.FailAt(MemoryFiles::Call::Read, 3);
    RegistryStore store;
    EXPECT_EQ(ReadSettingsFile(files, "s.reg", store).size(), 1U);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "no key");
}

TEST(ReadSettingsFileTest, AnEndlessFileIsAnError) {
    PosixFiles files;
    RegistryStore store;
    EXPECT_EQ(ReadSettingsFile(files, "/dev/zero", store).size(), 1U);
}

} // namespace
} // namespace tessaly
