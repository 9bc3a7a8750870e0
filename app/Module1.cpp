// The decision is all that is here: each main brings the test and the window.
#include "app/Module1.h"

namespace tessaly {

void StartUp(bool previousInstance, const std::function<void()>& showMainWindow) {
    if (!previousInstance) {
        showMainWindow();
    }
}

} // namespace tessaly
