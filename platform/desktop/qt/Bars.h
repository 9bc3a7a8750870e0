// The tool bar and its two pictures, and the status bar. The panels of that are our own labels, for a long path must
// not keep the window wide.
#pragma once

#include "platform/desktop/Bars.h"
#include "platform/desktop/qt/Control.h"

#include <QAction>
#include <QLabel>
#include <QStatusBar>
#include <QToolBar>
#include <memory>
#include <string_view>
#include <vector>

namespace tessaly::qt {

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    explicit ToolBar(Window& window);

    Size PreferredSize() const override { return {0, mHeight}; }

    // Without a button there is nothing to work on.
    bool CanHaveFocus() const override { return ButtonCount() > 0; }
    void TakeKeyboard() override;

    QToolBar& Widget() { return mBar; }

private:
    void RemoveButtons() override;
    void ShowButton(std::int32_t image, std::string_view tag) override;
    void ShowTip(std::int32_t number, std::string_view tip) override;

    QToolBar mBar;
    float mHeight = 0;
    std::vector<std::unique_ptr<QAction>> mActions;
};

// A label that leaves out the middle of a text that is too long for it.
class PanelLabel final : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Qt's bar, with a line above it.
class Bar final : public QStatusBar {
public:
    using QStatusBar::QStatusBar;

protected:
    void paintEvent(QPaintEvent* event) override;
};

class StatusBar final : public Control<tessaly::StatusBar> {
public:
    explicit StatusBar(Window& window);

    Size PreferredSize() const override;

    QWidget& Widget() { return mBar; }

private:
    void Show(const Extent& place) override;
    void ShowPanels() override;

    Bar mBar;
    std::vector<std::unique_ptr<PanelLabel>> mLabels;
};

} // namespace tessaly::qt
