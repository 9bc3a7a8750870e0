// Folders of the user's own on the real file system, and what tells one process from another.
#include "platform/system/PrivateFiles.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class PrivateFilesTest : public testing::Test {
protected:
    PrivateFilesTest() {
        fs::remove_all(top);
        fs::create_directories(top);
    }
    ~PrivateFilesTest() override { fs::remove_all(top); }

    static unsigned ModeOf(const fs::path& path) {
        struct stat found = {};
        EXPECT_EQ(::stat(path.c_str(), &found), 0) << path;
        return found.st_mode & 0777U;
    }

    std::vector<std::string> Names() {
        std::vector<FolderEntry> entries;
        EXPECT_FALSE(own.List(folder, entries));
        std::vector<std::string> names;
        for (const FolderEntry& entry : entries) {
            names.push_back(entry.name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path top = fs::temp_directory_path() / ("tessaly-private-" + std::to_string(getpid()));
    std::string folder = top / "above/own";
    SystemPrivateFiles own;
};

TEST_F(PrivateFilesTest, AFolderIsMadeForTheUserAloneWithThoseAbove) {
    ASSERT_FALSE(own.MakeFolder(folder));
    EXPECT_EQ(ModeOf(folder), 0700U);
    EXPECT_FALSE(own.MakeFolder(folder));
}

TEST_F(PrivateFilesTest, AFolderThatIsOpenToOthersIsClosedAndNotReadBefore) {
    fs::create_directories(folder);
    ::chmod(folder.c_str(), 0777);
    std::vector<FolderEntry> entries;
    EXPECT_EQ(own.List(folder, entries), std::errc::operation_not_permitted);
    ASSERT_FALSE(own.MakeFolder(folder));
    EXPECT_EQ(ModeOf(folder), 0700U);
    EXPECT_FALSE(own.List(folder, entries));
}

TEST_F(PrivateFilesTest, ALinkIsRefusedWhereverItLeads) {
    fs::create_directories(top / "other");
    fs::create_directories(top / "above");
    fs::create_symlink(top / "other", folder);
    std::vector<FolderEntry> entries;
    EXPECT_EQ(own.MakeFolder(folder), std::errc::operation_not_permitted);
    EXPECT_EQ(own.List(folder, entries), std::errc::operation_not_permitted);
    EXPECT_NE(ModeOf(top / "other"), 0700U);
}

TEST_F(PrivateFilesTest, AFileInItsPlaceIsRefused) {
    fs::create_directories(top / "above");
    std::ofstream(folder) << "x";
    EXPECT_EQ(own.MakeFolder(folder), std::errc::operation_not_permitted);
}

TEST_F(PrivateFilesTest, AnotherUsersFolderIsRefused) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    fs::create_directories(folder);
    ASSERT_EQ(::chown(folder.c_str(), 12345, 12345), 0);
    std::vector<FolderEntry> entries;
    EXPECT_EQ(own.MakeFolder(folder), std::errc::operation_not_permitted);
    EXPECT_EQ(own.List(folder, entries), std::errc::operation_not_permitted);
}

TEST_F(PrivateFilesTest, FilesAreTheUsersAloneAlsoInPlaceOfOthers) {
    own.MakeFolder(folder);
    std::ofstream(folder + "/a") << "old";
    for (const Flushing flushing : {Flushing::Now, Flushing::Later}) {
        ASSERT_FALSE(own.Write(folder + "/a", "new", flushing));
        EXPECT_EQ(ModeOf(folder + "/a"), 0600U);
        EXPECT_EQ(fs::file_size(folder + "/a"), 3U);
    }
    EXPECT_FALSE(own.Flush(folder + "/a"));
    EXPECT_TRUE(own.Flush(folder + "/b"));
}

TEST_F(PrivateFilesTest, AFileIsWrittenOverWholeWhetherItGrowsOrShrinks) {
    own.MakeFolder(folder);
    SystemFiles files;
    for (const std::string bytes : {"first", "the second", "3", ""}) {
        for (const Flushing flushing : {Flushing::Now, Flushing::Later}) {
            ASSERT_FALSE(own.Rewrite(folder + "/a", bytes, flushing));
            EXPECT_EQ(ReadWhole(files, folder + "/a"), bytes);
            EXPECT_EQ(ModeOf(folder + "/a"), 0600U);
            EXPECT_EQ(Names(), std::vector<std::string>{"a"});
        }
    }
}

TEST_F(PrivateFilesTest, WhatAnEndInTheMiddleLeftIsWrittenOver) {
    own.MakeFolder(folder);
    std::ofstream(folder + "/a") << "a longer text, half of it new";
    ASSERT_FALSE(own.Rewrite(folder + "/a", "new", Flushing::Later));
    SystemFiles files;
    EXPECT_EQ(ReadWhole(files, folder + "/a"), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(PrivateFilesTest, AFileThatOthersTookAwayIsMadeAnew) {
    own.MakeFolder(folder);
    ASSERT_FALSE(own.Rewrite(folder + "/a", "first", Flushing::Later));
    SystemFiles files;
    const std::vector<std::function<void()>> ways = {
        [&] { fs::remove(folder + "/a"); }, [&] { fs::rename(folder + "/a", folder + "/b"); },
        [&] { std::ofstream(folder + "/b") << "other", fs::rename(folder + "/b", folder + "/a"); },
        [&] { own.Remove(folder + "/a"); }};
    for (const std::function<void()>& takeAway : ways) {
        takeAway();
        ASSERT_FALSE(own.Rewrite(folder + "/a", "again", Flushing::Later));
        EXPECT_EQ(ReadWhole(files, folder + "/a"), "again");
    }
}

TEST_F(PrivateFilesTest, AFileIsNotWrittenThroughALink) {
    own.MakeFolder(folder);
    std::ofstream(top / "other") << "somebody's";
    fs::create_symlink(top / "other", folder + "/a");
    EXPECT_TRUE(own.Rewrite(folder + "/a", "new", Flushing::Later));
    EXPECT_EQ(fs::file_size(top / "other"), 10U);
    EXPECT_FALSE(own.Rewrite(folder + "/a", "new", Flushing::Later)) << "the link is gone";
}

TEST_F(PrivateFilesTest, AFolderIsListedWithoutFoldersAndLinks) {
    EXPECT_TRUE(Names().empty()) << "nor is one that is not there a failure";
    own.MakeFolder(folder);
    own.Write(folder + "/a", "1", Flushing::Later);
    own.Write(folder + "/b", "22", Flushing::Later);
    fs::create_symlink(folder + "/a", folder + "/link");
    fs::create_directory(folder + "/kept");
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    std::vector<FolderEntry> entries;
    own.List(folder, entries);
    std::sort(entries.begin(), entries.end(), [](const auto& x, const auto& y) { return x.name < y.name; });
    EXPECT_EQ(entries[1].size, 2U);
    EXPECT_LE(entries[0].time, entries[1].time);
}

TEST_F(PrivateFilesTest, RemovingWhatIsNotThereIsNoFailure) {
    own.MakeFolder(folder);
    own.Write(folder + "/a", "1", Flushing::Later);
    EXPECT_FALSE(own.Remove(folder + "/a"));
    EXPECT_FALSE(own.Remove(folder + "/a"));
    EXPECT_TRUE(Names().empty());
    EXPECT_TRUE(own.Remove(folder)) << "it is a folder";
}

TEST_F(PrivateFilesTest, AProcessHasAStartUntilItEnds) {
    const std::optional<std::string> mine = own.ProcessStart(OwnProcess());
    ASSERT_TRUE(mine);
    EXPECT_NE(*mine, "");
    EXPECT_EQ(own.ProcessStart(OwnProcess()), mine);

    const pid_t child = ::fork();
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    const auto id = static_cast<std::uint64_t>(child);
    EXPECT_TRUE(own.ProcessStart(id));
    ::kill(child, SIGKILL);
    siginfo_t ended = {};
    ::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT);
    EXPECT_FALSE(own.ProcessStart(id)) << "nobody has asked how it ended";
    ::waitpid(child, nullptr, 0);
    EXPECT_FALSE(own.ProcessStart(id));
}

TEST_F(PrivateFilesTest, TheFoldersForCopiesFollowTheEnvironment) {
    std::map<std::string, std::string> variables = {{"HOME", "/h"}};
    const auto environment = [&](const std::string& name) {
        const auto found = variables.find(name);
        return found != variables.end() ? std::optional(found->second) : std::nullopt;
    };
    const std::string number = std::to_string(::geteuid());
    using Folders = std::vector<std::string>;
    EXPECT_EQ(RecoveryFolders(environment), (Folders{"/h/.local/state/tessaly/recovery", "/tmp/tessaly-" + number}));
    variables["XDG_STATE_HOME"] = "relative";
    variables["TMPDIR"] = "relative";
    EXPECT_EQ(RecoveryFolders(environment), (Folders{"/h/.local/state/tessaly/recovery", "/tmp/tessaly-" + number}));
    variables["XDG_STATE_HOME"] = "/s";
    variables["TMPDIR"] = "/t";
    EXPECT_EQ(RecoveryFolders(environment), (Folders{"/s/tessaly/recovery", "/t/tessaly-" + number}));
}

} // namespace
} // namespace tessaly
