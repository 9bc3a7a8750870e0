// A status bar in memory.
#pragma once

#include "platform/desktop/Bars.h"
#include "tests/desktop/Control.h"

#include <string>

namespace tessaly::memory {

class StatusBar final : public Control<tessaly::StatusBar> {
public:
    using Control::Control;

    Size PreferredSize() const override {
        CountCall();
        return {0, 330};
    }

    // What the user sees. All of these throw std::out_of_range when there is no such panel.
    std::int32_t PanelCount() const { return static_cast<std::int32_t>(Panels().size()); }
    const std::string& PanelText(std::int32_t number) const { return At(number).text; }
    bool IsPanelSpring(std::int32_t number) const { return At(number).isSpring; }
    float PanelWidth(std::int32_t number) const {
        At(number);
        std::vector<int> ends = Ends(static_cast<int>(Place().width), static_cast<int>(FixedWidth));
        ends.insert(ends.begin(), 0);
        const auto place = static_cast<std::size_t>(number);
        return static_cast<float>(ends[place] - ends[place - 1]);
    }

private:
    void ShowPanels() override { CountCall(); }
    void Dock(const Size& client) override { Show({0, client.height - 330, client.width, 330}); }

    const Panel& At(std::int32_t number) const { return Panels().at(static_cast<std::size_t>(number) - 1); }
};

} // namespace tessaly::memory
