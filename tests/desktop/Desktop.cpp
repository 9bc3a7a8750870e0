// A whole desktop in memory.
#include "tests/desktop/Desktop.h"

namespace tessaly {

std::unique_ptr<NameWindow> MemoryDesktop::NewNameWindow() {
    faults.Count();
    return std::make_unique<MemoryNameWindow>(faults, focus, modal.nameWindow);
}

std::unique_ptr<SplashWindow> MemoryDesktop::NewSplashWindow() {
    faults.Count();
    return std::make_unique<MemorySplashWindow>(faults, focus, modal.splashWindow);
}

} // namespace tessaly
