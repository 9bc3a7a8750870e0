// A status bar of panels that count from 1.
#pragma once

#include "platform/desktop/Control.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// It begins with no panel, and stands at the bottom of the client area with a line above it until it is given a place.
// The tool tip of a panel is its text, which may be cut off.
class StatusBar : public Control {
public:
    explicit StatusBar(Controls& controls) : Control(controls, Keyboard::Unused) {}

    // Adds a panel at the end, with no text.
    void AddPanel();

    // What the bar needs for its panels, whether there are any or not, in twips.
    virtual float PreferredHeight() const = 0;

    // Both throw std::out_of_range when there is no such panel. Springing panels share the width that the others leave.
    void SetPanelSpring(std::int32_t number);
    void SetPanelText(std::int32_t number, std::string_view text);

protected:
    struct Panel {
        std::string text;
        bool isSpring = false;
    };

    // There are other panels now, or others of them spring.
    virtual void ShowPanels() = 0;

    // The panel at `place`, from 0, gets another text.
    virtual void ShowText(std::size_t place, std::string_view text) = 0;

    const std::vector<Panel>& Panels() const { return mPanels; }

    // Where each panel ends in a bar of this width, if one that does not spring is `fixed` wide.
    std::vector<int> Ends(int width, int fixed) const;
    static constexpr float FixedWidth = 1440; // in twips

    void Dock(const Size& client) override;

private:
    Panel& At(std::int32_t number);

    std::vector<Panel> mPanels;
};

} // namespace tessaly
