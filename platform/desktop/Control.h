// What every visible control of a window has in common, and the controls of a window together.
#pragma once

#include "platform/desktop/FocusEvents.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace tessaly {

// Positions and sizes are in twips (1/1440 inch), as single-precision numbers, relative to the window's client area.
struct Extent {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    bool operator==(const Extent&) const = default;
};

struct Size {
    float width = 0;
    float height = 0;

    bool operator==(const Size&) const = default;
};

// On the screen, in its pixels.
struct ScreenPlace {
    int x = 0;
    int y = 0;

    bool operator==(const ScreenPlace&) const = default;
};

// Whether the user can work in a control with the keyboard.
enum class Keyboard { Used, Unused };

class Control;

// The controls of one window, in the order in which they are made: in it the Tab key goes round.
class Controls {
public:
    // Where the keyboard and the commands of the window are told.
    FocusEvents focus;

    // The client area has this size, and no control is shown in its lowest `footer` twips but what begins there.
    void LayOut(const Size& client, float footer);

    // The control that has the keyboard or to which it comes back; null when no control ever had it.
    Control* Owner() const;

    // The owner, even when it could not be given the keyboard any more; else the first that can; null for none.
    Control* ToReturnTo() const;

    // Where the Tab key goes from the owner, in a circle; null for nowhere.
    Control* NextStop(bool backwards) const;

private:
    friend class Control;

    std::vector<Control*> mOrder;
    Size mClient;
    std::optional<float> mFooterTop; // from the top of the client area
};

class Control : public FocusTarget {
public:
    // Raised when the user asks for a menu of the tree, or of the pane while that is available. He does so by the right
    // button of the mouse, the menu key or Shift+F10. The button first does what a click does, but keeps what is
    // selected under it. `place` is where the menu is to come up. Neither control shows one of its own.
    std::function<void(ScreenPlace place)> onMenu;

    // Comes behind the other controls of its window.
    Control(Controls& controls, Keyboard keyboard);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() override;

    // Given back exactly as it was set, {} at first: it is rounded to pixels, and stops at the footer of the window, on
    // the screen only.
    Extent GetExtent() const { return mExtent.value_or(Extent{}); }
    void SetExtent(const Extent& extent);

    // Keeps as much at the upper edge of its place free, on the screen only: something else stands there. 0 at first.
    void SetRoomAbove(float height);

    // One that is not visible takes no keyboard. It is visible at first.
    bool IsVisible() const { return mIsVisible; }
    void SetVisible(bool visible);

    // Whether the control has this property: whether the Tab key stops here. To set it throws std::logic_error where
    // it has not.
    bool HasTabStop() const { return mKeyboard == Keyboard::Used; }
    void SetTabStop(bool stop);

    // Moves the keyboard focus here; the events come at once. Throws std::runtime_error when the control cannot have
    // it.
    //
    // The events follow the keyboard. A control that has it loses it to another control, whose gained event comes
    // second, and to a menu, a dialog, another window or another program; a command by a menu, by the tool bar or by a
    // dropped file has it, too, as long as it runs. The control gains it when the keyboard is back and the command
    // that took it has ended. Nothing is raised where the keyboard already is, nor once the window closes.
    void SetFocus();

    // Whether it has the keyboard, or will have it again when that comes back to the window.
    bool HasKeyboard() const { return mControls.Owner() == this; }

    // For the desktop:

    bool IsTabStop() const { return HasTabStop() && mIsTabStop; }
    virtual bool CanHaveFocus() const { return HasTabStop() && mIsVisible; }

    // What it needs, in twips; 0 where it takes what it gets.
    virtual Size PreferredSize() const { return {}; }
    float PreferredHeight() const { return PreferredSize().height; }

    // Has the system give the keyboard to this control.
    virtual void TakeKeyboard() = 0;

    // Shows it where the program wants it, or else where it stands by itself.
    void Move();

protected:
    virtual void Show(const Extent& place) = 0;
    virtual void ShowVisible(bool visible) = 0;

    // Shows a control that the program gave no place in a client area of this size.
    virtual void Dock(const Size& /*client*/) {}

    bool IsPlaced() const { return mExtent.has_value(); }

    Controls& mControls; // of its window

private:
    Keyboard mKeyboard;
    std::optional<Extent> mExtent;
    float mRoomAbove = 0;
    bool mIsVisible = true;
    bool mIsTabStop = true;
};

// Shows a text as it stands: neither markup nor access keys have a meaning.
class Captioned : public Control {
public:
    using Control::Control;

    virtual void SetCaption(std::string_view caption) = 0;
};

// A text that the user cannot change. It needs what one line takes in his font.
class Label : public Captioned {
public:
    explicit Label(Controls& controls) : Captioned(controls, Keyboard::Unused) {}
};

} // namespace tessaly
