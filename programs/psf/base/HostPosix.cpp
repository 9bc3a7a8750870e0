// Linux and its kin: plain bytes everywhere, a file for the registry.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/posix/Interrupts.h"
#include "programs/psf/base/Host.h"

#include <csignal>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace tessaly::psf {

namespace {

// What one file of many gives back would go to the system, and come back page by page for the next one. Whole files do
// go there: the room of one that is outgrown would else stay between the others.
void KeepMemoryForTheNextFile() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 128 << 10);
    mallopt(M_TRIM_THRESHOLD, 4 << 20);
#endif
}

} // namespace

int RunWithArguments(int argc, char** argv, const std::function<int(const std::vector<std::string>&)>& run) {
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit for the size of files fails like any other
    std::signal(SIGCHLD, SIG_DFL); // a parent that ignored it would leave no compiler to wait for
    posix::EndCleanlyWhenInterrupted();
    KeepMemoryForTheNextFile();
    return run({argv, argv + argc});
}

std::string_view HostCodePageName() {
    return "1252";
}

std::unique_ptr<Registry> OpenSettings(SequentialFiles& files,
                                       const std::function<void(const std::string&)>& onProblem) {
    return std::make_unique<SettingsRegistry>(files, ProcessEnvironment, onProblem);
}

std::string CompilerText(const std::string& bytes) {
    return bytes;
}

} // namespace tessaly::psf
