// One running copy of a program for each user. The lock goes with the process that holds it, however that ends.
#pragma once

#include "platform/system/Environment.h"
#include "platform/system/PreviousInstance.h"
#include "platform/system/posix/Descriptor.h"

#include <string>

namespace tessaly::posix {

// Where the lock of this user lies: tessaly.lock in $XDG_RUNTIME_DIR, or, where that is not set, in the folder for the
// user's state, $XDG_STATE_HOME/tessaly, in $HOME/.local/state when that is not set.
std::string InstanceLockPath(const Environment& environment);

class PreviousInstanceTest final : public tessaly::PreviousInstanceTest {
public:
    // Makes the file at `path`, and the folders above it, and locks it unless somebody else has.
    explicit PreviousInstanceTest(const std::string& path);

    // Whether another one holds the lock. False when no file could be made: then nobody can know.
    bool PreviousInstance() const override { return mIsTaken; }

private:
    Descriptor mDescriptor;
    bool mIsTaken = false;
};

} // namespace tessaly::posix
