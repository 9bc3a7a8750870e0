#include "app/Module1.h"

namespace tessaly {

void StartUp(const PreviousInstance& isAnotherRunning, const std::function<void()>& showMainWindow) {
    if (isAnotherRunning()) {
        return;
    }
    showMainWindow();
}

} // namespace tessaly
