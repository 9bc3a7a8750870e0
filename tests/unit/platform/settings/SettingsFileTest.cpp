// Where the settings files are, which value counts, and what is reported of them.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/SequentialFiles.h"
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
    SystemFiles files;
    std::vector<std::string> problems;
    SettingsRegistry store(files, Variables(), [&](const std::string& problem) { problems.push_back(problem); });
    EXPECT_EQ(problems.size(), 1U);
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "1:73797374656d00");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "b"), "1:6f776e00");
}

TEST_F(SettingsFilesTest, ATildeForAllUsersIsEachUsersHomeWithTheFoldersInIt) {
    Write(Make("system"), "\"a\"=\"~/new/folder/a.c\"\n\"b\"=\"x~/\"\n");
    Write(Make("config"), "\"c\"=\"~/own\"\n");
    mVariables = {{"HOME", Path("home")}, {"XDG_CONFIG_HOME", Path("config")}, {"XDG_CONFIG_DIRS", Path("system")}};
    SystemFiles files;
    const SettingsRegistry store(files, Variables(), [](const std::string& problem) { ADD_FAILURE() << problem; });
    const auto text = [&store](std::string_view name) {
        return std::string(store.Find({Registry::LocalMachine, "K"}, name)->bytes.c_str());
    };
    EXPECT_EQ(text("a"), Path("home") + "/new/folder/a.c");
    EXPECT_EQ(text("b"), "x~/");
    EXPECT_EQ(text("c"), "~/own") << "as it always was in the user's own file";
    EXPECT_TRUE(std::filesystem::is_directory(mFolder / "home/new/folder"));
}

TEST(ProcessEnvironmentTest, AVariableHasAValueOrNone) {
    EXPECT_NE(ProcessEnvironment("PATH").value_or(""), "");
    EXPECT_EQ(ProcessEnvironment("NO_SUCH_VARIABLE_ANYWHERE"), std::nullopt);
}

// One file that $TESSALY_SETTINGS names.
class OneSettingsFileTest : public testing::Test {
protected:
    SettingsRegistry Read(SequentialFiles& files, const std::string& path) {
        const auto environment = [path](const std::string& name) {
            return name == "TESSALY_SETTINGS" ? std::optional(path) : std::nullopt;
        };
        return {files, environment, [this](const std::string& problem) { mProblems += problem + "\n"; }};
    }

    SystemFiles mFiles;
    memory::SequentialFiles mMemory;
    std::string mProblems;
};

TEST_F(OneSettingsFileTest, AllOfItIsReadButTheWrongLines) {
    mMemory.contents["s.reg"] = std::string(First) + "[HKLM\\K]\n\"a\"=\"x\"\nwrong\n";
    mMemory.readSize = 7;
    SettingsRegistry store = Read(mMemory, "s.reg");
    EXPECT_EQ(mProblems, "s.reg:4: the line is neither a key in brackets nor a value that begins with a quote\n");
    EXPECT_EQ(ValueIn(store, Registry::LocalMachine, "K", "a"), "1:7800");
    EXPECT_EQ(mMemory.OpenCount(), 0U);
}

TEST_F(OneSettingsFileTest, AMissingFileIsAnEmptyRegistry) {
    EXPECT_TRUE(Read(mFiles, "/no/such/settings.reg").keys.empty());
    EXPECT_EQ(mProblems, "");
}

TEST_F(OneSettingsFileTest, AFileThatCannotBeReadIsAnError) {
    Read(mFiles, "/etc");
    EXPECT_EQ(mProblems, "/etc: the settings file cannot be read: Is a directory\n");
}

TEST_F(OneSettingsFileTest, AFileThatFailsHalfwayLeavesNothingInTheStore) {
    mMemory.contents["s.reg"] = std::string(First) + "[HKLM\\K]\n";
    mMemory.readSize = 10;
    mMemory.FailAt(memory::SequentialFiles::Call::Read, 3);
    EXPECT_TRUE(Read(mMemory, "s.reg").keys.empty());
    EXPECT_NE(mProblems, "");
}

TEST_F(OneSettingsFileTest, AnEndlessFileIsAnError) {
    Read(mFiles, "/dev/zero");
    EXPECT_NE(mProblems, "");
}

} // namespace
} // namespace tessaly
