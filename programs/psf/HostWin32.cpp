// Windows: arguments in UTF-16, the real registry, text of compilers in the system's code page.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/CodePages.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Process.h"
#include "platform/system/win32/Registry.h"
#include "platform/system/win32/SequentialFiles.h"
#include "platform/system/win32/Streams.h"
#include "platform/text/Utf8.h"
#include "programs/psf/Host.h"

#include <cstdlib>

namespace tessaly::psf {

int RunWithArguments(int /*argc*/, char** /*argv*/, const std::function<int(const std::vector<std::string>&)>& run) {
    win32::KeepToSystemLibraries();
    const win32::Streams streams;
    return run(win32::Arguments());
}

std::unique_ptr<SequentialFiles> MakeFiles() {
    return std::make_unique<win32::SequentialFiles>();
}

std::string_view HostCodePageName() {
    return "the system's";
}

std::unique_ptr<Registry> OpenSettings(SequentialFiles& files,
                                       const std::function<void(const std::string&)>& onProblem) {
    if (ProcessEnvironment("TESSALY_SETTINGS").value_or("").empty()) {
        return std::make_unique<win32::Registry>();
    }
    return std::make_unique<SettingsRegistry>(files, ProcessEnvironment, onProblem);
}

// The shell of a batch file puts the value of a variable in place of its name between two percent signs.
bool CarriesArgument(const std::string& /*commandLine*/, const std::string& argument) {
    return argument.find_first_of("\"%") == std::string::npos;
}

std::string_view UncarriedCharacters() {
    return "a double quote or a percent sign";
}

CompilerResult RunCompiler(const std::string& commandLine, std::string& output) {
    _putenv_s("TESSALY_NO_PAUSE", "1"); // nobody would see the kit's batch file ask for a key
    std::string bytes;
    const win32::ProcessResult result =
        win32::RunProcess(commandLine, [&bytes](std::string_view piece) { bytes += piece; });
    if (IsUtf8(bytes)) { // some compilers write that
        output += bytes;
    } else {
        MakeSystemCodePage()->AppendDecoded(bytes, output);
    }
    return {result.startError, result.exitStatus};
}

} // namespace tessaly::psf
