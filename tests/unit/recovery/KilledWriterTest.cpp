// A program that does nothing but write copies is killed at any moment. What it left is the last copy that it told of,
// or the one that it was just writing.
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/SingleByteCodePage.h"
#include "recovery/RecoveryStore.h"

#include <csignal>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {
namespace {

class KilledWriterTest : public testing::Test {
protected:
    KilledWriterTest() { std::filesystem::remove_all(folder); }
    ~KilledWriterTest() override { std::filesystem::remove_all(folder); }

    RecoveryStore Store() {
        return RecoveryStore(SystemRecoveryHost(own, files, [this](const std::string& name) {
            return name == "XDG_STATE_HOME" || name == "TMPDIR" ? std::optional(folder.string()) : std::nullopt;
        }));
    }

    static std::string Text(long number) { return std::to_string(number) + std::string(20000, 'x'); }

    // Never returns. Tells by `written` which copies are whole.
    [[noreturn]] void WriteForEver(volatile long& written) {
        const VornSrcObj document(files, codePage);
        RecoveryStore store = Store();
        for (long number = 1;; ++number) {
            const std::string text = Text(number);
            if (store.Write({document, "references", text}, Flushing::Later)) {
                ::_exit(1);
            }
            written = number;
        }
    }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("tessaly-killed-" + std::to_string(getpid()));
    SystemFiles files;
    SystemPrivateFiles own;
    SingleByteCodePage codePage{Windows1252HighHalf()};
};

TEST_F(KilledWriterTest, LeavesItsLastCopyWhole) {
    void* const shared = ::mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    volatile long& written = *static_cast<volatile long*>(shared);
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        written = 0;
        const pid_t child = ::fork();
        if (child == 0) {
            WriteForEver(written);
        }
        while (written < 1) { // the copies begin to come
        }
        const timespec moment = {0, static_cast<long>(random() % 2'000'000)};
        ::nanosleep(&moment, nullptr);
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a copy could not be written";

        const VornSrcObj document(files, codePage);
        RecoveryStore store = Store();
        const std::optional<Copy> left = store.FindLeft(document);
        ASSERT_TRUE(left);
        VornSrcObj loaded(files, codePage);
        ASSERT_EQ(LoadCopy(files, *left, loaded), Status::Done);
        const std::string text(loaded.VarCode());
        const long last = written;
        ASSERT_TRUE(text == Text(last) || text == Text(last + 1)) << text.substr(0, 10) << " for " << last;
        store.Remove(*left);
        ASSERT_FALSE(store.FindLeft(document));
    }
    ::munmap(shared, sizeof(long));
}

} // namespace
} // namespace tessaly
