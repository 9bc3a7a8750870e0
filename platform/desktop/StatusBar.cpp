#include "platform/desktop/StatusBar.h"

#include <algorithm>

namespace tessaly {

void StatusBar::AddPanel() {
    mPanels.emplace_back();
    ShowPanels();
}

void StatusBar::SetPanelSpring(std::int32_t number) {
    At(number).isSpring = true;
    ShowPanels();
}

void StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    Panel& panel = At(number);
    if (panel.text != text) {
        ShowText(static_cast<std::size_t>(number) - 1, text);
        panel.text = text;
    }
}

std::vector<int> StatusBar::Ends(int width, int fixed) const {
    auto springs = static_cast<int>(
        std::count_if(mPanels.begin(), mPanels.end(), [](const Panel& each) { return each.isSpring; }));
    int left = std::max(width - fixed * (static_cast<int>(mPanels.size()) - springs), 0);
    std::vector<int> ends;
    int end = 0;
    for (const Panel& panel : mPanels) {
        const int share = panel.isSpring ? left / springs-- : fixed;
        left -= panel.isSpring ? share : 0;
        end += share;
        ends.push_back(end);
    }
    return ends;
}

void StatusBar::Dock(const Size& client) {
    const float height = PreferredHeight();
    Show({0, client.height - height, client.width, height});
}

// A number below 1 becomes one far behind the end.
StatusBar::Panel& StatusBar::At(std::int32_t number) {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly
