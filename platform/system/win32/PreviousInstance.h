// The test for another running copy: a mutex that the first one holds open as long as it lives. Windows closes it even
// when that copy crashes, so nothing is left behind to clean up.
#pragma once

#include "platform/system/PreviousInstance.h"
#include "platform/system/win32/Handle.h"

#include <string>

namespace tessaly::win32 {

class PreviousInstanceTest final : public tessaly::PreviousInstanceTest {
public:
    // `name` is the program's: letters and digits. Copies of other users in other sessions do not count. Throws
    // std::system_error when the mutex cannot be had.
    explicit PreviousInstanceTest(const std::string& name);

    // Whether another copy held the mutex when this was made.
    bool PreviousInstance() const override { return mFound; }

private:
    Handle mMutex;
    bool mFound = false;
};

} // namespace tessaly::win32
