// A status bar of panels that count from 1.
#pragma once

#include "platform/Control.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// It begins with no panel.
class StatusBar : public Control {
public:
    // Adds a panel at the end, with no text.
    virtual void AddPanel() = 0;

    virtual std::int32_t PanelCount() const = 0;

    // All of these throw std::out_of_range when there is no such panel. Springing panels share the width that the
    // others leave.
    virtual void SetPanelSpring(std::int32_t number) = 0;
    virtual std::string PanelText(std::int32_t number) const = 0;
    virtual void SetPanelText(std::int32_t number, std::string_view text) = 0;
};

} // namespace tessaly
