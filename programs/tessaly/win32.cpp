// The program on Windows. A second copy ends here without a word.
#include "app/Module1.h"
#include "platform/desktop/win32/Desktop.h"
#include "platform/system/PreviousInstance.h"
#include "platform/system/win32/Library.h"
#include "ui/VornMainFrm.h"

#include <exception>
#include <optional>
#include <windows.h>

namespace {

// Returns the exit code of the program.
int Run() {
    const tessaly::PreviousInstanceTest previous(tessaly::InstanceName(tessaly::ProcessEnvironment));
    tessaly::SystemFiles files;
    tessaly::SystemPrivateFiles ownFiles;
    std::optional<tessaly::win32::Desktop> desktop;
    std::optional<tessaly::VornMainFrm> window;
    tessaly::StartUp(previous.PreviousInstance(), [&] {
        using tessaly::ProcessEnvironment;
        const auto recovery = tessaly::SystemRecoveryHost(ownFiles, files, ProcessEnvironment);
        window.emplace(desktop.emplace(), recovery).Show();
    });
    return window ? desktop->Loop().Run() : 0;
}

} // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*commandLine*/, int /*show*/) {
    tessaly::win32::KeepToSystemLibraries();
    try {
        return Run();
    } catch (const std::exception& error) {
        MessageBoxA(nullptr, error.what(), "Tessaly", MB_ICONSTOP);
        return 1;
    }
}
