// A status bar in memory.
#pragma once

#include "platform/desktop/StatusBar.h"
#include "tests/desktop/Control.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class StatusBar final : public Control<tessaly::StatusBar> {
public:
    StatusBar(Faults& faults, Focus& focus) : Control(faults, focus, Keyboard::Unused) {}

    void AddPanel() override;
    float PreferredHeight() const override;
    std::int32_t PanelCount() const override;
    void SetPanelSpring(std::int32_t number) override;
    std::string PanelText(std::int32_t number) const override;
    void SetPanelText(std::int32_t number, std::string_view text) override;

    // Both throw std::out_of_range when there is no such panel. A panel that does not spring is FixedWidth wide.
    bool IsPanelSpring(std::int32_t number) const { return Panel(number).isSpring; }
    float PanelWidth(std::int32_t number) const;

    static constexpr float FixedWidth = 1440;

private:
    struct OnePanel {
        std::string text;
        bool isSpring = false;
    };

    const OnePanel& Panel(std::int32_t number) const;
    OnePanel& Panel(std::int32_t number);

    std::vector<OnePanel> mPanels;
};

} // namespace tessaly::memory
