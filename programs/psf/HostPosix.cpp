// Linux and its kin: plain bytes everywhere, a file for the registry, no shell between psf and the compiler.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/posix/Process.h"
#include "platform/system/posix/SequentialFiles.h"
#include "programs/psf/Host.h"

#include <csignal>

namespace tessaly::psf {

int RunWithArguments(int argc, char** argv, const std::function<int(const std::vector<std::string>&)>& run) {
    posix::ReportFileSizeLimit();
    return run({argv, argv + argc});
}

std::unique_ptr<SequentialFiles> MakeFiles() {
    return std::make_unique<posix::SequentialFiles>();
}

std::string_view HostCodePageName() {
    return "1252";
}

std::unique_ptr<Registry> OpenSettings(SequentialFiles& files,
                                       const std::function<void(const std::string&)>& onProblem) {
    return std::make_unique<SettingsRegistry>(files, ProcessEnvironment, onProblem);
}

bool CarriesArgument(const std::string& commandLine, const std::string& argument) {
    const auto arguments = posix::SplitCommandLine(commandLine, posix::IsRegularFile);
    return arguments.size() > 1 && arguments.back() == argument;
}

std::string_view UncarriedCharacters() {
    return "a double quote";
}

CompilerResult RunCompiler(const std::string& commandLine, std::string& output) {
    std::signal(SIGCHLD, SIG_DFL); // a parent that ignored it would leave us nothing to wait for
    const posix::ProcessResult result = posix::RunProcess(posix::SplitCommandLine(commandLine, posix::IsRegularFile),
                                                          [&output](std::string_view piece) { output += piece; });
    return {{result.startError, std::generic_category()}, result.exitStatus};
}

} // namespace tessaly::psf
