// A number below 1 becomes one far behind the end.
#include "platform/desktop/Bars.h"

#include "platform/desktop/Raise.h"

#include <algorithm>
#include <utility>

namespace tessaly {

void ToolBar::Clear() {
    RemoveButtons();
    mTags.clear();
}

void ToolBar::AddButton(std::int32_t image, std::string_view tag) {
    images.Tag(image); // throws
    ShowButton(image, tag);
    mTags.emplace_back(tag);
}

void ToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    ButtonTag(number); // throws
    ShowTip(number, tip);
}

void ToolBar::RaiseClick(std::int32_t number) {
    if (number >= 1 && number <= ButtonCount()) {
        const FocusEvents::Command command(mControls.focus, FocusEvents::Keyboard::IsTaken);
        Raise(onButtonClick, number);
    }
}

void StatusBar::AddPanel() {
    std::vector<Panel> panels = mPanels;
    panels.emplace_back();
    Change(std::move(panels));
}

void StatusBar::SetPanelSpring(std::int32_t number) {
    std::vector<Panel> panels = mPanels;
    At(panels, number).isSpring = true;
    Change(std::move(panels));
}

void StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    std::vector<Panel> panels = mPanels;
    Panel& panel = At(panels, number);
    if (panel.text != text) {
        panel.text = text;
        Change(std::move(panels));
    }
}

// Where the control fails, the panels are as they were.
void StatusBar::Change(std::vector<Panel> panels) {
    mPanels.swap(panels);
    try {
        ShowPanels();
    } catch (...) {
        mPanels.swap(panels);
        throw;
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
StatusBar::Panel& StatusBar::At(std::vector<Panel>& panels, std::int32_t number) {
    return panels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly
