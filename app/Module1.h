// The program's own first step. Everything else of the start happens when the main window loads.
#pragma once

#include "platform/system/PreviousInstance.h"

#include <functional>

namespace tessaly {

// Calls `showMainWindow`, which shows the window and does not wait for it, unless another copy is running: then it
// returns without a window or a message, and the process is expected to end. Who passes `showMainWindow` knows from it
// whether there is a window to run for. What the two throw is passed on; without an answer no window is shown.
void StartUp(const PreviousInstanceTest& previous, const std::function<void()>& showMainWindow);

} // namespace tessaly
