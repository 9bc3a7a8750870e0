// A control of one of the small windows that nobody reaches but the window itself.
#pragma once

#include "platform/desktop/win32/Child.h"

namespace tessaly::win32 {

class Part final : public Child {
public:
    using Child::Child;

    bool CanHaveFocus() const override { return true; }
};

} // namespace tessaly::win32
