// Which control of the main window has the focus, as the program sees it. Qt tells of the focus only while the window
// is the active one, and of every menu and every change to another program; here only a move between the controls
// counts.
#pragma once

#include <vector>

class QWidget;

namespace tessaly {

// What can have the focus.
class QtFocusTarget {
public:
    virtual ~QtFocusTarget() = default;

    // Whether the focus of Qt's `widget` is that of this control.
    virtual bool Holds(const QWidget* widget) const = 0;

    virtual bool CanHaveFocus() const = 0;
    virtual void TakeFocus() = 0;
    virtual void LoseFocus() {}
    virtual void GainFocus() {}
};

class QtFocus {
public:
    explicit QtFocus(const QWidget& window) : mWindow(window) {}

    void Add(QtFocusTarget& target) { mTargets.push_back(&target); }

    // Tells nobody anything any more, because the controls are about to go.
    void Forget();

    // Finds out who has the focus now and raises the events. A widget that belongs to no control, such as the menu bar,
    // leaves everything as it was.
    void Update();

    // Gives the focus to the first control that can have it, if none has it yet.
    void Begin();

private:
    const QWidget& mWindow;
    std::vector<QtFocusTarget*> mTargets;
    QtFocusTarget* mOwner = nullptr;
};

} // namespace tessaly
