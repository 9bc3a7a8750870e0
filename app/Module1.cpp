#include "app/Module1.h"

namespace tessaly {

void StartUp(bool previousInstance, const std::function<void()>& showMainWindow) {
    if (!previousInstance) {
        showMainWindow();
    }
}

} // namespace tessaly
