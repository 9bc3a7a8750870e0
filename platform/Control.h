// What every visible control of a window has in common.
#pragma once

#include <string>

namespace tessaly {

// Positions and sizes are in twips (1/1440 inch), as single-precision numbers, relative to the window's client area.
// They are given back exactly as they were set: an implementation rounds to pixels, and stops at the footer of the
// window (see Window), on the screen only.
struct Extent {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    bool operator==(const Extent&) const = default;
};

class Control {
public:
    virtual ~Control() = default;

    virtual Extent GetExtent() const = 0;
    virtual void SetExtent(const Extent& extent) = 0;

    // Whether the control has this property: whether the Tab key stops here. To set it throws std::logic_error where
    // it has not.
    virtual bool HasTabStop() const = 0;
    virtual void SetTabStop(bool stop) = 0;

    // Moves the keyboard focus here. The control that had it raises its lost event first, then this one its gained
    // event; nothing is raised when it has the focus already. That a dialog or another program comes in front of the
    // window and goes again moves no focus. Throws std::runtime_error when the control cannot have
    // the focus.
    virtual void SetFocus() = 0;
};

} // namespace tessaly
