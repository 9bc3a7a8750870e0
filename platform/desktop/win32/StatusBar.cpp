// The status bar of the common controls.
#include "platform/desktop/win32/StatusBar.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tessaly::win32 {

StatusBar::StatusBar(Parent& parent) : Control(parent, {STATUSCLASSNAMEW, SBARS_SIZEGRIP, 0, ControlId::StatusBar1}) {
    ShowPanels();
}

float StatusBar::PreferredHeight() const {
    Send(WM_SIZE);
    return ShownHeight();
}

void StatusBar::Rescale() {
    Child::Rescale();
    ShowPanels();
}

LRESULT StatusBar::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    // Asked for its size it moves to the bottom by itself, which is right only without a place.
    if (message == WM_SIZE && IsPlaced()) {
        ShowPanels();
        return 0;
    }
    if (message == WM_MOUSEMOVE && mToolTips == nullptr) { // not before: their window takes its time
        MakeToolTips();
    }
    auto* const notice = message == WM_NOTIFY ? std::bit_cast<NMHDR*>(lParam) : nullptr;
    if (notice != nullptr && notice->code == TTN_GETDISPINFOW) {
        auto& asked = *reinterpret_cast<NMTTDISPINFOW*>(notice);
        mToolTip = ToWide(Panels().at(asked.hdr.idFrom).text);
        asked.lpszText = mToolTip.data();
        return 0;
    }
    const LRESULT result = Default(message, wParam, lParam);
    if (message == WM_SIZE) {
        ShowPanels();
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
    for (std::size_t place = 0; mToolTips != nullptr && place < Panels().size(); ++place) {
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

void StatusBar::ShowPanels() {
    RECT rect = {};
    GetClientRect(Handle(), &rect);
    std::vector<int> edges = Ends(rect.right, ToPixels(FixedWidth, ParentWindow().Dpi()));
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
void StatusBar::ShowText(std::size_t place, std::string_view text) {
    std::wstring wide = ToWide(text);
    std::replace(wide.begin(), wide.end(), L'\t', L' ');
    Send(SB_SETTEXTW, place, reinterpret_cast<LPARAM>(wide.c_str()));
}

} // namespace tessaly::win32
