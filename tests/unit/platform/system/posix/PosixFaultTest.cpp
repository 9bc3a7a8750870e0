// Replacing a file, writing a setting or a copy of what is not saved, and starting a process call the system. Each of
// these calls fails in turn, once and for ever, that of a copy also twice. A file is then the old or the new one, and
// no failure is reported as a success.
#include "document/VornSrcObj.h"
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/AtomicFile.h"
#include "platform/system/PreviousInstance.h"
#include "platform/system/PrivateFiles.h"
#include "platform/system/SequentialFiles.h"
#include "platform/system/posix/Process.h"
#include "platform/text/SingleByteCodePage.h"
#include "recovery/RecoveryStore.h"
#include "tests/unit/platform/system/posix/FailingCalls.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class PosixFaultTest : public testing::Test {
protected:
    PosixFaultTest() : mFolder(fs::path(testing::TempDir()) / ("faults" + std::to_string(::getpid()))) {
        fs::remove_all(mFolder);
        fs::create_directories(mFolder);
    }
    ~PosixFaultTest() override { fs::remove_all(mFolder); }

    // Has each call of these names fail, as FailingCalls::forEver says, while `act` runs between `prepare` and `check`.
    static void ForEachFailure(const std::vector<const char*>& names, const std::function<void()>& prepare,
                               const std::function<void()>& act, const std::function<void()>& check,
                               const std::vector<int>& repetitions = {0, 1}) {
        for (const char* const name : names) {
            for (const int forEver : repetitions) {
                long reached = 1;
                for (long at = 1; at <= reached; ++at) {
                    prepare();
                    failingCalls = {name, at, forEver, 0};
                    act();
                    reached = failingCalls.count;
                    failingCalls = {};
                    SCOPED_TRACE(name + " number "s + std::to_string(at) +
                                 (forEver == 1   ? " and all later ones"
                                  : forEver == 2 ? " and the next one"
                                                 : ""));
                    check();
                }
            }
        }
    }

    static std::string Read(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static void Write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    // How many files are in a folder; of open ones in that of this process.
    static std::size_t Count(const fs::path& folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
    }
    static std::size_t OpenFiles() { return Count("/proc/self/fd"); }

    fs::path mFolder;
    SystemFiles mFiles;
};

TEST_F(PosixFaultTest, AFileThatIsReplacedIsTheOldOneOrTheNewOne) {
    const fs::path path = mFolder / "file";
    const std::string bytes(100000, 'n');
    std::error_code error;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "write", "short-write", "close", "fsync", "rename", "link", "chmod", "chown", "stat", "flock"},
        [&] {
            Write(path, "old");
            ::chmod(path.c_str(), 0640);
        },
        [&] {
            error = ReplaceWhole(path, Existing::Replace, [&](const std::string& newPath) {
                try {
                    const std::unique_ptr<OutputFile> file = mFiles.OpenForOutput(newPath);
                    file->Write(bytes);
                    file->Close();
                    return true;
                } catch (const std::system_error&) {
                    return false;
                }
            });
        },
        [&] {
            EXPECT_EQ(Read(path), !error ? bytes : "old");
            EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
            EXPECT_EQ(Count(mFolder), 1U);
            EXPECT_EQ(OpenFiles(), openFiles);
        });
}

TEST_F(PosixFaultTest, AFileThatMustNotBeReplacedIsNot) {
    const fs::path path = mFolder / "file";
    std::error_code error;
    ForEachFailure(
        {"open", "rename", "link", "stat"}, [&] { Write(path, "old"); },
        [&] { error = ReplaceWhole(path, Existing::Keep, [](const std::string&) { return true; }); },
        [&] {
            EXPECT_TRUE(error);
            EXPECT_EQ(Read(path), "old");
            EXPECT_EQ(Count(mFolder), 1U);
        });
}

TEST_F(PosixFaultTest, WhatIsReadIsTheWholeFileOrAnError) {
    const fs::path path = mFolder / "file";
    Write(path, std::string(100000, 'x'));
    std::optional<std::size_t> size;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "read", "close"}, [&] { size.reset(); },
        [&] {
            try {
                const std::unique_ptr<InputFile> file = mFiles.OpenForInput(path);
                char buffer[4096];
                std::size_t sum = 0;
                while (const std::size_t count = file->Read(buffer, sizeof buffer)) {
                    sum += count;
                }
                file->Close();
                size = sum;
            } catch (const std::system_error&) {
            }
        },
        [&] {
            EXPECT_EQ(size.value_or(100000), 100000U);
            EXPECT_EQ(OpenFiles(), openFiles);
        });
}

TEST_F(PosixFaultTest, ASettingIsWrittenOrTheFileIsAsItWas) {
    const fs::path path = mFolder / "settings.reg";
    const std::string key = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\OstrelCompiler]\r\n";
    const std::string head = "Windows Registry Editor Version 5.00\r\n\r\n" + key + "\"FCompBat\"=\"kept\"\r\n";
    const std::string oldBytes = head + "\"Language\"=dword:00000000\r\n";
    const std::string newBytes = head + "\"Language\"=dword:00000001\r\n";
    const Environment environment = [&path](const std::string& name) {
        return name == "TESSALY_SETTINGS" ? std::optional(path.string()) : std::nullopt;
    };
    std::int32_t result = Registry::Success;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "read", "write", "short-write", "close", "fsync", "rename", "chmod", "chown", "stat", "mkdir"},
        [&] { Write(path, oldBytes); },
        [&] {
            SettingsRegistry registry(mFiles, environment);
            Registry::Handle handle = 0;
            registry.CreateKey(Registry::LocalMachine, "SOFTWARE\\Ostrel\\OstrelCompiler", Registry::NoAccess, handle);
            result = registry.SetValue(handle, "Language", Registry::DwordType, "\1\0\0\0"s);
        },
        [&] {
            EXPECT_EQ(Read(path), result == Registry::Success ? newBytes : oldBytes);
            EXPECT_EQ(Count(mFolder), 1U);
            EXPECT_EQ(OpenFiles(), openFiles);
        });
}

TEST_F(PosixFaultTest, ACopyOfWhatIsNotSavedIsTheOldOneOrTheNewOneAndItsFailureIsTold) {
    const SingleByteCodePage codePage(Windows1252HighHalf());
    const VornSrcObj document(mFiles, codePage);
    SystemPrivateFiles own;
    const auto environment = [this](const std::string& name) {
        return name == "XDG_STATE_HOME" ? std::optional(mFolder.string())
               : name == "TMPDIR"       ? std::optional((mFolder / "missing/temporary").string())
                                        : std::nullopt;
    };
    RecoveryStore store(SystemRecoveryHost(own, mFiles, environment));
    const WindowContent oldContent = {document, "references", "old"};
    const WindowContent newContent = {document, "references", "new"};
    const auto newestText = [&]() -> std::string {
        VornSrcObj loaded(mFiles, codePage);
        const std::vector<Copy> copies = store.Copies();
        return !copies.empty() && LoadCopy(mFiles, copies[0], loaded) == Status::Done ? std::string(loaded.VarCode())
                                                                                      : "none";
    };
    std::error_code error;
    for (int copy = 0; copy < 2; ++copy) {
        ASSERT_FALSE(store.Write(oldContent, Flushing::Later));
    }
    // Those of three copies stay open, in the second folder, too; two copies are there.
    const std::size_t openFiles = OpenFiles() + 8;
    for (const Flushing flushing : {Flushing::Now, Flushing::Later}) {
        ForEachFailure(
            {"open", "write", "short-write", "close", "fsync", "ftruncate", "rename", "chmod", "stat", "mkdir"},
            [&] { ASSERT_FALSE(store.Write(oldContent, Flushing::Later)); },
            [&] { error = store.Write(newContent, flushing); },
            [&] {
                const std::string newest = newestText(); // after an error the new one may be whole all the same
                EXPECT_TRUE(newest == "new" || (error && newest == "old")) << newest << ": " << error.message();
                EXPECT_LE(OpenFiles(), openFiles);
            },
            {0, 1, 2});
    }
    EXPECT_EQ(Count(mFolder / "tessaly/recovery"), 6U);
}

TEST_F(PosixFaultTest, AProcessEndsWithAllItsOutputOrItsFailureIsTold) {
    std::string output;
    std::optional<ProcessResult> result;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "read", "close", "pipe", "spawn", "poll", "waitpid", "ioctl"},
        [&] {
            output.clear();
            result.reset();
        },
        [&] {
            try {
                result = posix::RunProcess({"/bin/sh", "-c", "echo output; exit 3"},
                                           [&](std::string_view piece) { output += piece; });
            } catch (const std::system_error&) {
            }
        },
        [&] {
            if (result && result->Started()) {
                EXPECT_EQ(result->exitStatus, 3);
                EXPECT_EQ(output, "output\n");
            }
            EXPECT_EQ(OpenFiles(), openFiles);
            while (::waitpid(-1, nullptr, 0) > 0) { // one that could not be waited for
            }
        });
}

TEST_F(PosixFaultTest, ADetachedProcessThatDoesNotStartIsNeverTakenForAStartedOne) {
    const fs::path noProgram = mFolder / "program";
    Write(noProgram, "neither a program nor a script");
    ::chmod(noProgram.c_str(), 0755);
    bool thrown = false;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "read", "close", "pipe", "fork", "waitpid"}, [&] { thrown = false; },
        [&] {
            try {
                posix::StartDetached({noProgram}, mFolder / "output");
            } catch (const std::system_error&) {
                thrown = true;
            }
        },
        [&] {
            EXPECT_TRUE(thrown);
            EXPECT_EQ(OpenFiles(), openFiles);
            while (::waitpid(-1, nullptr, 0) > 0) {
            }
        });
}

TEST_F(PosixFaultTest, ALockThatCannotBeMadeIsNotTakenBySomebodyElse) {
    bool isTaken = false;
    const std::size_t openFiles = OpenFiles();
    ForEachFailure(
        {"open", "flock", "mkdir", "stat"}, [] {},
        [&] { isTaken = PreviousInstanceTest(mFolder / "new/lock").PreviousInstance(); },
        [&] {
            EXPECT_FALSE(isTaken);
            EXPECT_EQ(OpenFiles(), openFiles);
            fs::remove_all(mFolder / "new");
        });
}

} // namespace
} // namespace tessaly
