// Buttons have no text beside their picture; it is what the mouse and a screen reader are told.
#include "platform/desktop/win32/Bars.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <utility>

namespace tessaly::win32 {

namespace {

// Of the images, each with its size in pixels behind it.
constexpr std::array<const wchar_t*, 2> Pictures = {L"add_", L"delete_"};

constexpr std::array<int, 5> PictureSizes = {16, 20, 24, 32, 48};
constexpr int SizeAt96Dpi = 16;

// The largest picture that is not larger than it should be.
int PictureSize(int dpi) {
    const int wanted = SizeAt96Dpi * dpi / 96;
    const auto larger = std::upper_bound(PictureSizes.begin(), PictureSizes.end(), wanted);
    return larger == PictureSizes.begin() ? PictureSizes.front() : *(larger - 1);
}

} // namespace

ToolBar::ToolBar(Parent& parent)
    : Control(parent, {TOOLBARCLASSNAMEW, TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER, 0,
                       ControlId::VornToolBar}),
      mPictureSize(PictureSize(parent.Dpi())) {
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    // Texts that are not shown beside the pictures become their tool tips and names.
    Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    SizeButtons();
}

void ToolBar::RemoveButtons() {
    while (Send(TB_DELETEBUTTON, 0) != 0) {
    }
}

void ToolBar::ShowButton(std::int32_t image, std::string_view tag) {
    ShowPictures();
    const std::wstring text = ToWide(tag);
    TBBUTTON button = {};
    button.iBitmap = image - 1;
    button.idCommand = ControlId::FirstButton + ButtonCount();
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
    button.iString = reinterpret_cast<INT_PTR>(text.c_str());
    Send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    SizeButtons(); // the pictures have changed that
    Move();
}

void ToolBar::ShowPictures() {
    if (!mPictures) {
        mPictures.reset(
            ImageList_Create(mPictureSize, mPictureSize, ILC_COLOR32, static_cast<int>(Pictures.size()), 0));
        for (const wchar_t* const picture : Pictures) {
            ImageList_Add(mPictures.get(), LoadPictureResource(picture + std::to_wstring(mPictureSize)).get(), nullptr);
        }
    }
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(mPictures.get()));
}

void ToolBar::ShowTip(std::int32_t number, std::string_view tip) {
    std::wstring text = ToWide(tip);
    TBBUTTONINFOW changed = {};
    changed.cbSize = sizeof changed;
    changed.dwMask = TBIF_TEXT;
    changed.pszText = text.data();
    Send(TB_SETBUTTONINFOW, static_cast<WPARAM>(ControlId::FirstButton + number - 1),
         reinterpret_cast<LPARAM>(&changed));
}

Size ToolBar::PreferredSize() const {
    Send(TB_AUTOSIZE);
    return {0, ShownHeight()};
}

// The bar is still at work with the button, which the handler may remove.
void ToolBar::Command(int id, int /*code*/) {
    ParentWindow().loop.Later([this, number = id - ControlId::FirstButton + 1] { RaiseClick(number); });
}

void ToolBar::Rescale() {
    Child::Rescale();
    mPictureSize = PictureSize(ParentWindow().Dpi());
    ImageListOwner before = std::move(mPictures); // the control uses them until it has others
    if (ButtonCount() > 0) {
        ShowPictures();
    } else {
        Send(TB_SETIMAGELIST);
    }
    SizeButtons();
    Move();
}

void ToolBar::SizeButtons() {
    const int size = mPictureSize + ToPixels(120, ParentWindow().Dpi());
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(size, size));
}

void ToolBar::Show(const Extent& place) {
    SetWindowLongW(Handle(), GWL_STYLE, GetWindowLongW(Handle(), GWL_STYLE) | CCS_NORESIZE | CCS_NOPARENTALIGN);
    Control::Show(place);
}

StatusBar::StatusBar(Parent& parent) : Control(parent, {STATUSCLASSNAMEW, SBARS_SIZEGRIP, 0, ControlId::StatusBar1}) {
    ShowEdges();
}

Size StatusBar::PreferredSize() const {
    Send(WM_SIZE);
    return {0, ShownHeight()};
}

void StatusBar::Rescale() {
    Child::Rescale();
    ShowEdges();
}

LRESULT StatusBar::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    // Asked for its size it moves to the bottom by itself, which is right only without a place.
    if (message == WM_SIZE && IsPlaced()) {
        ShowEdges();
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
        ShowEdges();
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

void StatusBar::ShowEdges() {
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
void StatusBar::ShowPanels() {
    ShowEdges();
    for (std::size_t place = 0; place < Panels().size(); ++place) {
        std::wstring wide = ToWide(Panels()[place].text);
        std::replace(wide.begin(), wide.end(), L'\t', L' ');
        Send(SB_SETTEXTW, place, reinterpret_cast<LPARAM>(wide.c_str()));
    }
}

} // namespace tessaly::win32
