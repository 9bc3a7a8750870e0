// The tool bar and its two pictures.
#pragma once

#include "platform/desktop/ToolBar.h"
#include "platform/desktop/qt/Control.h"

#include <QAction>
#include <QToolBar>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::qt {

class ImageList final : public tessaly::ImageList {
public:
    std::string Tag(std::int32_t number) const override;
};

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    ToolBar(QWidget* parent, Focus& focus);

    void Clear() override;
    void AddButton(std::int32_t image, std::string_view tag) override;
    void SetButtonTip(std::int32_t number, std::string_view tip) override;
    std::int32_t ButtonCount() const override { return static_cast<std::int32_t>(mButtons.size()); }
    float PreferredHeight() const override { return mHeight; }
    std::string ButtonTag(std::int32_t number) const override;

    // Without a button there is nothing to work on.
    bool CanHaveFocus() const override { return !mButtons.empty(); }
    void TakeFocus() override;

    QToolBar& Widget() { return mBar; }

    // What Qt shows for a button. Throws std::out_of_range when there is none.
    QWidget& ButtonWidget(std::int32_t number) const;

protected:
    void UpdateFocusPolicy() override;

private:
    struct Button {
        std::string tag;
        std::unique_ptr<QAction> action;
    };

    const Button& At(std::int32_t number) const;

    QToolBar mBar;
    float mHeight = 0;
    std::vector<Button> mButtons;
};

} // namespace tessaly::qt
