// Windows: arguments in UTF-16, the real registry, text of compilers in the system's code page. Nothing is to be done
// for an interruption: jobs end what is waited for, and the next ReplaceWhole removes the file that was being written.
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/CodePages.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Registry.h"
#include "platform/system/win32/Streams.h"
#include "platform/text/Utf8.h"
#include "programs/psf/base/Host.h"

#include <cstdlib>

namespace tessaly::psf {

int RunWithArguments(int /*argc*/, char** /*argv*/, const std::function<int(const std::vector<std::string>&)>& run) {
    win32::KeepToSystemLibraries();
    _putenv_s("TESSALY_NO_PAUSE", "1"); // nobody would see the kit's batch file ask for a key
    const win32::Streams streams;
    return run(win32::Arguments());
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

std::string CompilerText(const std::string& bytes) {
    if (IsUtf8(bytes)) { // some compilers write that
        return bytes;
    }
    std::string text;
    MakeSystemCodePage()->AppendDecoded(bytes, text);
    return text;
}

} // namespace tessaly::psf
