// A control of the main window: what all of them have in common, put on top of an interface.
#pragma once

#include "platform/desktop/win32/Child.h"

#include <stdexcept>

namespace tessaly {

template <class Interface>
class Win32Control : public Interface, public Win32Child {
public:
    using Win32Child::Win32Child;

    Extent GetExtent() const override { return Place(); }
    void SetExtent(const Extent& extent) override { SetPlace(extent); }

    bool HasTabStop() const override { return true; }

    void SetTabStop(bool stop) override {
        if (!HasTabStop()) {
            throw std::logic_error("the control has no tab stop");
        }
        SetIsTabStop(stop);
    }

    void SetFocus() override { TakeFocus(); }
};

} // namespace tessaly
