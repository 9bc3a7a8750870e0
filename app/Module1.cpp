#include "app/Module1.h"

namespace tessaly {

void StartUp(const PreviousInstanceTest& previous, const std::function<void()>& showMainWindow) {
    if (previous.PreviousInstance()) {
        return;
    }
    showMainWindow();
}

} // namespace tessaly
