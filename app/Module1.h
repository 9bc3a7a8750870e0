// The program's own first step. Everything else of the start happens when the main window loads.
#pragma once

#include <functional>

namespace tessaly {

// Calls `showMainWindow`, which shows the window and does not wait for it. With a previous instance it returns without
// a window or a message, and the process is expected to end. What `showMainWindow` throws is passed on.
inline void StartUp(bool previousInstance, const std::function<void()>& showMainWindow) {
    if (!previousInstance) {
        showMainWindow();
    }
}

} // namespace tessaly
