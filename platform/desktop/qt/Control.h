// What every control has in common, put on top of its interface, and labels.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/qt/Text.h"
#include "platform/desktop/qt/Window.h"

#include <QLabel>
#include <QWidget>
#include <string_view>

namespace tessaly::qt {

template <class Interface>
class Control : public Interface {
public:
    // `widget` is the control's own and lives as long as it.
    Control(Window& window, QWidget& widget) : Interface(window.controls), mWindow(window), mWidget(widget) {
        mWindow.Watch(*this, widget);
    }

    void TakeKeyboard() override {
        mWidget.setFocus(Qt::OtherFocusReason);
        mWindow.TakeKeyboard();
    }

protected:
    void Show(const Extent& place) override {
        const QPoint topLeft(ToPixels(place.left), ToPixels(place.top));
        const QPoint end(ToPixels(place.left + place.width), ToPixels(place.top + place.height));
        mWidget.setGeometry(QRect(topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())));
    }

    void ShowVisible(bool visible) override { mWidget.setVisible(visible); }

    Window& mWindow;

private:
    QWidget& mWidget;
};

class Label final : public Control<tessaly::Label> {
public:
    explicit Label(Window& window) : Control(window, mLabel), mLabel(&window.Area()) {}

    // The caption is the name of `named` for a screen reader.
    void SetBuddy(QWidget& named) { mLabel.setBuddy(&named); }

    void SetCaption(std::string_view caption) override { ShowLabel(mLabel, caption); }
    Size PreferredSize() const override { return {0, ToTwips(mLabel.fontMetrics().height())}; }

    QLabel& Widget() { return mLabel; }

private:
    QLabel mLabel;
};

} // namespace tessaly::qt
