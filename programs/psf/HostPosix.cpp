// Linux and its kin: plain bytes everywhere, a file for the registry.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/Interrupts.h"
#include "programs/psf/Host.h"

#include <csignal>

namespace tessaly::psf {

int RunWithArguments(int argc, char** argv, const std::function<int(const std::vector<std::string>&)>& run) {
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit for the size of files fails like any other
    std::signal(SIGCHLD, SIG_DFL); // a parent that ignored it would leave no compiler to wait for
    EndCleanlyWhenInterrupted();
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
