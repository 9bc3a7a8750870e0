// The status bar. Its panels are our own labels, for a long path must not keep the window wide.
#pragma once

#include "platform/desktop/StatusBar.h"
#include "platform/desktop/qt/Control.h"

#include <QLabel>
#include <QStatusBar>
#include <memory>
#include <string_view>
#include <vector>

namespace tessaly::qt {

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

    float PreferredHeight() const override;

    QWidget& Widget() { return mBar; }

private:
    void Show(const Extent& place) override;
    void ShowPanels() override;
    void ShowText(std::size_t place, std::string_view text) override;

    Bar mBar;
    std::vector<std::unique_ptr<PanelLabel>> mLabels;
};

} // namespace tessaly::qt
