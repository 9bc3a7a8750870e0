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

    // Moves the keyboard focus here; the events come at once. Throws std::runtime_error when the control cannot have
    // it.
    //
    // The events follow the keyboard. A control that has it loses it to another control, whose gained event comes
    // second, and to a menu, a dialog, another window or another program; a command by a menu, by the tool bar or by a
    // dropped file has it, too, as long as it runs. The control gains it when the keyboard is back and the command
    // that took it has ended. Nothing is raised where the keyboard already is, nor once the window closes.
    virtual void SetFocus() = 0;
};

} // namespace tessaly
