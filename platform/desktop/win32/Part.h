// A control of one of the small windows that nobody reaches but the window itself.
#pragma once

#include "platform/desktop/win32/Child.h"

namespace tessaly {

class Win32Part final : public Win32Child {
public:
    using Win32Child::Win32Child;

    bool CanHaveFocus() const override { return true; }
};

} // namespace tessaly
