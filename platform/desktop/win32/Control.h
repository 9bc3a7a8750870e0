// A control of the main window: what all of them have in common, put on top of an interface.
#pragma once

#include "platform/desktop/win32/Child.h"

#include <stdexcept>

namespace tessaly::win32 {

template <class Interface>
class Control : public Interface, public Child {
public:
    using Child::Child;

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

} // namespace tessaly::win32
