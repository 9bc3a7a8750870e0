// What every control has in common, put on top of its interface.
#pragma once

#include "platform/desktop/Window.h"
#include "platform/desktop/qt/Focus.h"
#include "platform/desktop/qt/Text.h"

#include <QWidget>
#include <limits>
#include <stdexcept>

namespace tessaly::qt {

// Whether the user can work in a control with the keyboard.
enum class Keyboard { Used, Unused };

template <class Interface>
class Control : public Interface, public FocusTarget {
public:
    // `widget` is the control's own and lives as long as it.
    Control(Focus* focus, QWidget& widget, Keyboard keyboard) : mFocus(focus), mWidget(widget), mKeyboard(keyboard) {
        if (mFocus != nullptr) {
            mFocus->Add(*this);
        }
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() override = default;

    Extent GetExtent() const override { return mExtent; }

    void SetExtent(const Extent& extent) override {
        mExtent = extent;
        mIsPlaced = true;
        Show();
    }

    // The footer of the window begins here, in twips from the top of its client area.
    void SetFooterTop(float top) {
        mFooterTop = top;
        if (mIsPlaced) {
            Show();
        }
    }

    bool HasTabStop() const override { return mKeyboard == Keyboard::Used; }

    void SetTabStop(bool stop) override {
        if (!HasTabStop()) {
            throw std::logic_error("the control has no tab stop");
        }
        mIsTabStop = stop;
        UpdateFocusPolicy();
    }

    void SetFocus() override {
        if (!CanHaveFocus()) {
            throw std::runtime_error("the control cannot have the focus");
        }
        TakeFocus();
        if (mFocus != nullptr) {
            mFocus->events.MovedByProgram(*this);
        }
    }

    bool Holds(const QWidget* widget) const override {
        return widget == &mWidget || (widget != nullptr && mWidget.isAncestorOf(widget));
    }
    bool CanHaveFocus() const override { return mKeyboard == Keyboard::Used; }
    void TakeFocus() override { mWidget.setFocus(Qt::OtherFocusReason); }
    void SetFilter(QObject& filter) override { mWidget.installEventFilter(&filter); }

    // False as long as the desktop decides where the control is.
    bool IsPlaced() const { return mIsPlaced; }

protected:
    // To be called when CanHaveFocus has changed.
    virtual void UpdateFocusPolicy() {
        mWidget.setFocusPolicy(!CanHaveFocus() ? Qt::NoFocus : mIsTabStop ? Qt::StrongFocus : Qt::ClickFocus);
    }

    bool IsTabStop() const { return mIsTabStop; }

    // Of a control of the main window.
    Focus& WindowFocus() { return *mFocus; }

private:
    void Show() {
        const Extent shown = ShownAbove(mFooterTop, mExtent);
        const QPoint topLeft(ToPixels(shown.left), ToPixels(shown.top));
        const QPoint end(ToPixels(shown.left + shown.width), ToPixels(shown.top + shown.height));
        mWidget.setGeometry(QRect(topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())));
    }

    Focus* mFocus; // null in a window whose focus nobody asks for
    QWidget& mWidget;
    Keyboard mKeyboard;
    Extent mExtent;
    float mFooterTop = std::numeric_limits<float>::max();
    bool mIsPlaced = false;
    bool mIsTabStop = true;
};

} // namespace tessaly::qt
