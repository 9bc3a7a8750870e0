// Finds out which control of the main window has the keyboard. Qt keeps the focus where it was while a menu, a dialog
// or another program has the keyboard, and tells of a dialog only when the window system has given it the keyboard.
#pragma once

#include "platform/desktop/FocusEvents.h"

#include <QObject>
#include <vector>

class QWidget;

namespace tessaly::qt {

// What can have the focus.
class FocusTarget : public tessaly::FocusTarget {
public:
    // Whether the focus of Qt's `widget` is that of this control.
    virtual bool Holds(const QWidget* widget) const = 0;

    virtual bool CanHaveFocus() const = 0;
    virtual void TakeFocus() = 0;

    // Lets `filter` see the focus events of Qt for this control.
    virtual void SetFilter(QObject& filter) = 0;
};

class Focus final : public QObject {
public:
    explicit Focus(const QWidget& window);

    // Where commands of the window are told.
    FocusEvents events;

    void Add(FocusTarget& target) { mTargets.push_back(&target); }

    // Raises the events for where the keyboard is now.
    void Update();

    // The same when a key, a click or an edit has just shown that the keyboard is in the window, whether it is the
    // active one or not: some window systems do not tell.
    void UpdateInUse();

    // All controls are there: gives the focus to the first one that can have it, if none has it yet.
    void Begin();

    // The window goes: nobody is told anything any more, nor asked.
    void End();

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    FocusTarget* TargetOf(const QWidget* widget) const;
    void MoveTo(const QWidget* widget);

    const QWidget& mWindow;
    std::vector<FocusTarget*> mTargets;
};

} // namespace tessaly::qt
