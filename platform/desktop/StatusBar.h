// A status bar of panels that count from 1.
#pragma once

#include "platform/desktop/Control.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// It begins with no panel, and stands at the bottom of the client area with a line above it. The tool tip of a panel is
// its text, which may be cut off.
class StatusBar : public Control {
public:
    // Adds a panel at the end, with no text.
    virtual void AddPanel() = 0;

    // What the bar needs for its panels, whether there are any or not, in twips.
    virtual float PreferredHeight() const = 0;

    virtual std::int32_t PanelCount() const = 0;

    // All of these throw std::out_of_range when there is no such panel. Springing panels share the width that the
    // others leave.
    virtual void SetPanelSpring(std::int32_t number) = 0;
    virtual std::string PanelText(std::int32_t number) const = 0;
    virtual void SetPanelText(std::int32_t number, std::string_view text) = 0;
};

} // namespace tessaly
