// The test for another running copy of this program. However a copy ends, the system removes its mark.
#pragma once

#include "platform/system/Environment.h"

#include <memory>
#include <string>

namespace tessaly {

// The copies of this program find each other by this. Windows: the name of a mutex in the user's session. Unix: the
// path of a lock, tessaly.lock in $XDG_RUNTIME_DIR or, if that is not set, in the folder for the user's state.
std::string InstanceName(const Environment& environment);

class PreviousInstanceTest {
public:
    // Makes the mutex or the lock, with the folders above it, and holds it unless another copy does. Windows: throws
    // std::system_error when the mutex cannot be had. Unix: a lock that cannot be made is held by nobody.
    explicit PreviousInstanceTest(const std::string& name);

    // Whether another copy was running already when this was made.
    bool PreviousInstance() const { return mFound; }

private:
    std::shared_ptr<void> mHeld; // for as long as this lives
    bool mFound = false;
};

} // namespace tessaly
