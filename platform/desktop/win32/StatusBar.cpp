#include "platform/desktop/win32/StatusBar.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tessaly::win32 {

namespace {

constexpr float FixedWidth = 1440; // of a panel that does not spring, in twips

} // namespace

StatusBar::StatusBar(Parent& parent) : Control(parent, {STATUSCLASSNAMEW, SBARS_SIZEGRIP, 0, ControlId::StatusBar1}) {
    LayOut();
}

void StatusBar::AddPanel() {
    mPanels.emplace_back();
    LayOut();
}

float StatusBar::PreferredHeight() const {
    Send(WM_SIZE);
    return Place().height;
}

void StatusBar::SetPanelSpring(std::int32_t number) {
    Panel(number).isSpring = true;
    LayOut();
}

void StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    OnePanel& panel = Panel(number);
    if (panel.text == text) {
        return;
    }
    panel.text = text;
    ShowText(static_cast<std::size_t>(number) - 1);
}

void StatusBar::Dock() {
    if (!IsPlaced()) {
        Send(WM_SIZE);
    }
}

void StatusBar::Rescale() {
    Child::Rescale();
    LayOut();
}

LRESULT StatusBar::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    // Asked for its size it moves to the bottom by itself, which is right only without a place.
    if (message == WM_SIZE && IsPlaced()) {
        LayOut();
        return 0;
    }
    if (message == WM_MOUSEMOVE && mToolTips == nullptr) { // not before: their window takes its time
        MakeToolTips();
    }
    auto* const notice = message == WM_NOTIFY ? std::bit_cast<NMHDR*>(lParam) : nullptr;
    if (notice != nullptr && notice->code == TTN_GETDISPINFOW) {
        auto& asked = *reinterpret_cast<NMTTDISPINFOW*>(notice);
        mToolTip = ToWide(mPanels.at(asked.hdr.idFrom).text);
        asked.lpszText = mToolTip.data();
        return 0;
    }
    const LRESULT result = Default(message, wParam, lParam);
    if (message == WM_SIZE) {
        LayOut();
    }
    return result;
}

// A tool tip for each panel tells all of a text that may be cut off.
void StatusBar::MakeToolTips() {
    mToolTips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, 0, 0, 0, 0, Handle(),
                                nullptr, GetModuleHandleW(nullptr), nullptr);
    SendToolTips(TTM_ADDTOOLW);
}

// TTM_ADDTOOLW or TTM_NEWTOOLRECTW for each panel.
void StatusBar::SendToolTips(UINT message) const {
    for (std::size_t place = 0; mToolTips != nullptr && place < mPanels.size(); ++place) {
        TTTOOLINFOW tool = {};
        tool.cbSize = TTTOOLINFOW_V2_SIZE;
        tool.uFlags = TTF_SUBCLASS;
        tool.hwnd = Handle();
        tool.uId = place;
        tool.lpszText = LPSTR_TEXTCALLBACKW;
        Send(SB_GETRECT, place, reinterpret_cast<LPARAM>(&tool.rect));
        SendMessageW(mToolTips, message, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

// A number below 1 becomes one far behind the end.
const StatusBar::OnePanel& StatusBar::Panel(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

StatusBar::OnePanel& StatusBar::Panel(std::int32_t number) {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

void StatusBar::LayOut() {
    RECT rect = {};
    GetClientRect(Handle(), &rect);
    const int fixedWidth = ToPixels(FixedWidth, ParentWindow().Dpi());
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
    if (edges.empty()) {
        edges.push_back(-1); // the control has one part at least
    }
    if (edges != mEdges) {
        mEdges = std::move(edges);
        Send(SB_SETPARTS, mEdges.size(), reinterpret_cast<LPARAM>(mEdges.data()));
        SendToolTips(TTM_NEWTOOLRECTW);
    }
}

// A tab would move what follows to the middle or the right of the panel.
void StatusBar::ShowText(std::size_t place) {
    std::wstring text = ToWide(mPanels[place].text);
    std::replace(text.begin(), text.end(), L'\t', L' ');
    Send(SB_SETTEXTW, place, reinterpret_cast<LPARAM>(text.c_str()));
}

} // namespace tessaly::win32
