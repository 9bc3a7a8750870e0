// The tool bar and its two pictures.
#pragma once

#include "platform/desktop/ToolBar.h"
#include "platform/desktop/qt/Control.h"

#include <QAction>
#include <QToolBar>
#include <memory>
#include <string_view>
#include <vector>

namespace tessaly::qt {

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    explicit ToolBar(Window& window);

    float PreferredHeight() const override { return mHeight; }

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

} // namespace tessaly::qt
