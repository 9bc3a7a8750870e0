// A whole desktop in memory.
#include "tests/desktop/Desktop.h"

namespace tessaly::memory {

Desktop::Desktop() {
    mParts = {&window, &treeLabel, &tree,       &paneLabel, &pane, &suggestions,      &popup,         &toolBar,
              &status, &menus,     &fileDialog, &msgBox,    &app,  &mCountedRegistry, &mCountedFiles, &codePage};
}

std::unique_ptr<tessaly::NameWindow> Desktop::NewNameWindow() {
    faults.Count();
    return std::make_unique<NameWindow>(faults, focus, modal.nameWindow);
}

std::unique_ptr<tessaly::SplashWindow> Desktop::NewSplashWindow() {
    faults.Count();
    return std::make_unique<SplashWindow>(faults, focus, modal.splashWindow);
}

} // namespace tessaly::memory
