// A tool bar in memory, and what a user can do with it.
#pragma once

#include "platform/desktop/Bars.h"
#include "tests/desktop/Control.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    using Control::Control;

    Size PreferredSize() const override {
        CountCall();
        return {0, 420};
    }

    // The user presses button `number`. Throws ImpossibleAction when there is none.
    void Press(std::int32_t number);

    // What the user sees of a button. Both throw std::out_of_range when there is none.
    std::int32_t ButtonImage(std::int32_t number) const { return At(number).image; }
    const std::string& ButtonTip(std::int32_t number) const { return At(number).tip; }

    // Whether a press moves the focus to the bar. Desktops differ, so a program has to work either way.
    bool takesFocus = false;

private:
    struct Button {
        std::int32_t image = 0;
        std::string tip;
    };

    void RemoveButtons() override;
    void ShowButton(std::int32_t image, std::string_view tag) override;
    void ShowTip(std::int32_t number, std::string_view tip) override;
    void Dock(const Size& client) override { Show({0, 0, client.width, 420}); }

    const Button& At(std::int32_t number) const { return mButtons.at(static_cast<std::size_t>(number) - 1); }

    std::vector<Button> mButtons;
};

} // namespace tessaly::memory
