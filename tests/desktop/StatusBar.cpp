// A status bar in memory.
#include "tests/desktop/StatusBar.h"

#include <algorithm>

namespace tessaly::memory {

void StatusBar::AddPanel() {
    CountCall();
    mPanels.emplace_back();
}

float StatusBar::PreferredHeight() const {
    CountCall();
    return 330;
}

std::int32_t StatusBar::PanelCount() const {
    CountCall();
    return static_cast<std::int32_t>(mPanels.size());
}

void StatusBar::SetPanelSpring(std::int32_t number) {
    CountCall();
    Panel(number).isSpring = true;
}

std::string StatusBar::PanelText(std::int32_t number) const {
    CountCall();
    return Panel(number).text;
}

void StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    CountCall();
    Panel(number).text = text;
}

float StatusBar::PanelWidth(std::int32_t number) const {
    if (!Panel(number).isSpring) {
        return FixedWidth;
    }
    const auto springs = static_cast<float>(
        std::count_if(mPanels.begin(), mPanels.end(), [](const OnePanel& panel) { return panel.isSpring; }));
    const float taken = FixedWidth * (static_cast<float>(mPanels.size()) - springs);
    return std::max(OwnExtent().width - taken, 0.0F) / springs;
}

// A number below 1 becomes one far behind the end.
const StatusBar::OnePanel& StatusBar::Panel(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

StatusBar::OnePanel& StatusBar::Panel(std::int32_t number) {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly::memory
