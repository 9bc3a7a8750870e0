// A status bar in memory.
#include "tests/desktop/StatusBar.h"

#include <algorithm>

namespace tessaly {

void MemoryStatusBar::AddPanel() {
    CountCall();
    mPanels.emplace_back();
}

float MemoryStatusBar::PreferredHeight() const {
    CountCall();
    return 330;
}

std::int32_t MemoryStatusBar::PanelCount() const {
    CountCall();
    return static_cast<std::int32_t>(mPanels.size());
}

void MemoryStatusBar::SetPanelSpring(std::int32_t number) {
    CountCall();
    Panel(number).isSpring = true;
}

std::string MemoryStatusBar::PanelText(std::int32_t number) const {
    CountCall();
    return Panel(number).text;
}

void MemoryStatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    CountCall();
    Panel(number).text = text;
}

float MemoryStatusBar::PanelWidth(std::int32_t number) const {
    if (!Panel(number).isSpring) {
        return FixedWidth;
    }
    const auto springs = static_cast<float>(
        std::count_if(mPanels.begin(), mPanels.end(), [](const OnePanel& panel) { return panel.isSpring; }));
    const float taken = FixedWidth * (static_cast<float>(mPanels.size()) - springs);
    return std::max(OwnExtent().width - taken, 0.0F) / springs;
}

// A number below 1 becomes one far behind the end.
const MemoryStatusBar::OnePanel& MemoryStatusBar::Panel(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

MemoryStatusBar::OnePanel& MemoryStatusBar::Panel(std::int32_t number) {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly
