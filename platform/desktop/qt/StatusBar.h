// The status bar. Its panels are our own labels, for a long path must not keep the window wide.
#pragma once

#include "platform/desktop/StatusBar.h"
#include "platform/desktop/qt/Control.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStatusBar>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::qt {

// A label that leaves out the middle of a text that is too long for it.
class Panel final : public QLabel {
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
    StatusBar(QWidget* parent, Focus& focus);

    void AddPanel() override;
    std::int32_t PanelCount() const override { return static_cast<std::int32_t>(mPanels.size()); }
    float PreferredHeight() const override;
    void SetPanelSpring(std::int32_t number) override;
    std::string PanelText(std::int32_t number) const override { return At(number).text; }
    void SetPanelText(std::int32_t number, std::string_view text) override;

    QWidget& Widget() { return mBar; }

    // What Qt shows for a panel. Throws std::out_of_range when there is none.
    const QWidget& PanelWidget(std::int32_t number) const { return *At(number).label; }

private:
    struct OnePanel {
        std::string text;
        std::unique_ptr<Panel> label;
    };

    const OnePanel& At(std::int32_t number) const;

    Bar mBar;
    QWidget mRow; // of panels
    QHBoxLayout mLayout{&mRow};
    std::vector<OnePanel> mPanels;
};

} // namespace tessaly::qt
