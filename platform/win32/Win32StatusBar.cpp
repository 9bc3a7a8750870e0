#include "platform/win32/Win32StatusBar.h"

#include "platform/win32/ControlIds.h"
#include "platform/win32/Text.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr float FixedWidth = 1440; // of a panel that does not spring, in twips

} // namespace

Win32StatusBar::Win32StatusBar(Win32Parent& parent)
    : Win32Control(parent, {STATUSCLASSNAMEW, SBARS_SIZEGRIP | SBARS_TOOLTIPS, 0, ControlId::StatusBar1}) {
    LayOut();
}

void Win32StatusBar::AddPanel() {
    mPanels.emplace_back();
    LayOut();
    ShowText(mPanels.size() - 1);
}

void Win32StatusBar::SetPanelSpring(std::int32_t number) {
    Panel(number).isSpring = true;
    LayOut();
}

void Win32StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    Panel(number).text = text;
    ShowText(static_cast<std::size_t>(number) - 1);
}

void Win32StatusBar::Dock() {
    if (!IsPlaced()) {
        Send(WM_SIZE);
    }
}

void Win32StatusBar::Rescale() {
    Win32Child::Rescale();
    LayOut();
}

LRESULT Win32StatusBar::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    // Asked for its size it moves to the bottom by itself, which is right only without a place.
    if (message == WM_SIZE && IsPlaced()) {
        LayOut();
        return 0;
    }
    const LRESULT result = Default(message, wParam, lParam);
    if (message == WM_SIZE) {
        LayOut();
    }
    return result;
}

// A number below 1 becomes one far behind the end.
const Win32StatusBar::OnePanel& Win32StatusBar::Panel(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

Win32StatusBar::OnePanel& Win32StatusBar::Panel(std::int32_t number) {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

void Win32StatusBar::LayOut() {
    RECT rect = {};
    GetClientRect(Handle(), &rect);
    const int fixedWidth = ToPixels(FixedWidth, Parent().Dpi());
    const auto springs = static_cast<int>(
        std::count_if(mPanels.begin(), mPanels.end(), [](const OnePanel& panel) { return panel.isSpring; }));
    const int taken = fixedWidth * (static_cast<int>(mPanels.size()) - springs);
    int left = std::max(static_cast<int>(rect.right) - taken, 0);
    int springsLeft = springs;
    std::vector<int> edges;
    int edge = 0;
    for (const OnePanel& panel : mPanels) {
        const int width = panel.isSpring ? left / springsLeft : fixedWidth;
        if (panel.isSpring) {
            left -= width;
            --springsLeft;
        }
        edge += width;
        edges.push_back(edge);
    }
    Send(SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

// A tab would move what follows to the middle or the right of the panel.
void Win32StatusBar::ShowText(std::size_t place) {
    std::wstring text = ToWide(mPanels[place].text);
    std::replace(text.begin(), text.end(), L'\t', L' ');
    Send(SB_SETTEXTW, place, reinterpret_cast<LPARAM>(text.c_str()));
    Send(SB_SETTIPTEXTW, place, reinterpret_cast<LPARAM>(text.c_str())); // shown where the text is cut
}

} // namespace tessaly
