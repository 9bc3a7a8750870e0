// An xdg-mime of the test's own is the first in the PATH.
#include "platform/system/posix/Browser.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <unistd.h>

namespace tessaly {
namespace {

class BrowserTest : public testing::Test {
protected:
    BrowserTest() {
        std::filesystem::create_directories(mFolder);
        std::ofstream(mFolder / "xdg-mime") << "#!/bin/sh\necho tessaly-test.desktop\n";
        std::filesystem::permissions(mFolder / "xdg-mime", std::filesystem::perms::owner_all);
        ::setenv("PATH", (mFolder.string() + ":" + mPath).c_str(), 1);
        mVariables = {{"HOME", Path("home")}};
    }
    ~BrowserTest() override {
        ::setenv("PATH", mPath.c_str(), 1);
        std::filesystem::remove_all(mFolder);
    }

    std::string Path(const std::string& name) const { return (mFolder / name).string(); }

    // What xdg-mime names is a browser, and it is described below this folder.
    void Install(const std::string& folder) const {
        std::filesystem::create_directories(mFolder / folder / "applications");
        std::ofstream(mFolder / folder / "applications/tessaly-test.desktop")
            << "[Desktop Entry]\nCategories=Network;WebBrowser;\n";
    }

    bool IsFound() const {
        return posix::HtmlOpensInBrowser([this](const std::string& name) {
            const auto variable = mVariables.find(name);
            return variable != mVariables.end() ? std::optional(variable->second) : std::nullopt;
        });
    }

    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("browser" + std::to_string(::getpid()));
    std::string mPath = std::getenv("PATH");
    std::map<std::string, std::string> mVariables;
};

TEST_F(BrowserTest, TheUsersFolderIsWhereItsVariableSaysOrAtHome) {
    Install("data");
    EXPECT_FALSE(IsFound());
    mVariables["XDG_DATA_HOME"] = Path("data");
    EXPECT_TRUE(IsFound());
    Install("home/.local/share");
    mVariables.erase("XDG_DATA_HOME");
    EXPECT_TRUE(IsFound());
}

TEST_F(BrowserTest, AnEmptyOrRelativeVariableCountsAsNone) {
    Install("home/.local/share");
    for (const char* const value : {"", "no/path", "."}) {
        mVariables["XDG_DATA_HOME"] = value;
        EXPECT_TRUE(IsFound()) << value;
    }
}

TEST_F(BrowserTest, OnlyAbsolutePathsAmongTheSystemsFoldersCount) {
    Install("second");
    mVariables["XDG_DATA_DIRS"] = ":" + Path("first") + "::" + Path("second");
    EXPECT_TRUE(IsFound());
    const std::string relative = std::filesystem::relative(mFolder / "second").string();
    ASSERT_TRUE(std::filesystem::exists(relative + "/applications/tessaly-test.desktop"));
    mVariables["XDG_DATA_DIRS"] = relative;
    EXPECT_FALSE(IsFound());
}

} // namespace
} // namespace tessaly
