// The test for another running copy of this program. However a copy ends, the system clears up what told of it.
#pragma once

#include "platform/system/Environment.h"

#include <memory>
#include <string>

namespace tessaly {

// What the copies of this program know each other by. Windows: a name for a mutex in the user's session. Unix: the path
// of a lock, tessaly.lock in $XDG_RUNTIME_DIR or, where that is not set, in the folder for the user's state.
std::string InstanceName(const Environment& environment);

class PreviousInstanceTest {
public:
    // Makes what `name` stands for, with the folders above a lock, and holds it unless another copy does. Windows:
    // throws std::system_error when the mutex cannot be had. Unix: a lock that cannot be made is held by nobody.
    explicit PreviousInstanceTest(const std::string& name);

    // Whether another copy was running already when this was made.
    bool PreviousInstance() const { return mFound; }

private:
    std::shared_ptr<void> mHeld; // for as long as this lives
    bool mFound = false;
};

} // namespace tessaly
