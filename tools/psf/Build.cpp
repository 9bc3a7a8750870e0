// The steps of the window's Build command, in its order.
#include "tools/psf/Build.h"

#include "app/CompilerCommand.h"
#include "app/ReadRegValue.h"
#include "app/Settings.h"
#include "platform/RegistryStore.h"
#include "platform/posix/Process.h"
#include "platform/posix/SettingsFile.h"
#include "tools/psf/DiagnosticMap.h"

#include <csignal>
#include <cstring>

namespace tessaly::psf {

namespace {

struct CompilerSettings {
    std::string batchFile; // FCompBat
    std::string cFile;     // FCompFileName
};

CompilerSettings ReadCompilerSettings(SequentialFiles& files) {
    RegistryStore registry;
    if (const auto path = FindSettingsFile(ProcessEnvironment)) {
        for (const RegistryTextError& error : ReadSettingsFile(files, *path, registry)) {
            PrintError(ErrorText(*path, error));
        }
    }
    return {ReadRegValue(registry, Registry::LocalMachine, SettingsKey, CompBatSetting),
            ReadRegValue(registry, Registry::LocalMachine, SettingsKey, CompFileNameSetting)};
}

// Runs the compiler and prints what it wrote, mapped.
int Compile(const std::vector<std::string>& arguments, const DiagnosticMap& map) {
    std::signal(SIGCHLD, SIG_DFL); // a parent that ignored it would leave us nothing to wait for
    std::string output;
    const ProcessResult result = RunProcess(arguments, [&output](std::string_view piece) { output += piece; });
    Print(map.Rewrite(output));
    if (!result.Started()) {
        PrintError(arguments.front() + ": the compiler cannot be started: " + std::strerror(result.startError));
        return CompilerMissing;
    }
    return result.exitStatus;
}

} // namespace

int Build(Session& session, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    if (const Status status = Load(document, file); status != Status::Done) {
        return ExitStatus(status);
    }
    const CompilerSettings settings = ReadCompilerSettings(session.files);
    if (settings.batchFile.empty() || settings.cFile.empty()) {
        PrintError("The compiler could not be found!  Please reinstall the software! (the settings FCompBat and "
                   "FCompFileName must both be set)");
        return CompilerMissing;
    }
    const auto arguments = SplitCommandLine(CompilerCommandLine(settings.batchFile, file), IsRegularFile);
    if (arguments.size() < 2 || arguments.back() != OutputName(file)) {
        PrintError(file + ": the command line of the compiler cannot carry a path with a double quote");
        return WrongUsage;
    }
    if (const Status status = document.BuildCCodeFile(settings.cFile); status != Status::Done) {
        PrintError(settings.cFile + ": the C file cannot be generated");
        return ExitStatus(status);
    }
    return Compile(arguments, DiagnosticMap(document, file, settings.cFile));
}

} // namespace tessaly::psf
