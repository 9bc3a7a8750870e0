// Buttons have no text beside their picture; it is what the mouse and a screen reader are told.
#include "platform/desktop/win32/ToolBar.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Picture.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace tessaly::win32 {

namespace {

struct Picture {
    std::string_view tag;
    const wchar_t* resource; // its size in pixels stands behind it
};

constexpr std::array<Picture, 2> Pictures = {Picture{"Add", L"add_"}, Picture{"Delete", L"delete_"}};

constexpr std::array<int, 5> PictureSizes = {16, 20, 24, 32, 48};
constexpr int SizeAt96Dpi = 16;

// The largest picture that is not larger than it should be.
int PictureSize(int dpi) {
    const int wanted = SizeAt96Dpi * dpi / 96;
    const auto larger = std::upper_bound(PictureSizes.begin(), PictureSizes.end(), wanted);
    return larger == PictureSizes.begin() ? PictureSizes.front() : *(larger - 1);
}

} // namespace

std::string ImageList::Tag(std::int32_t number) const {
    return std::string(Pictures.at(static_cast<std::size_t>(number) - 1).tag);
}

std::int32_t ImageList::Count() const {
    return static_cast<std::int32_t>(Pictures.size());
}

void ImageList::Rescale(int dpi) {
    mSize = PictureSize(dpi);
    mImages.reset();
}

HIMAGELIST ImageList::Images() {
    if (!mImages) {
        mImages.reset(ImageList_Create(mSize, mSize, ILC_COLOR32, Count(), 0));
        for (const Picture& picture : Pictures) {
            ImageList_Add(mImages.get(), LoadPictureResource(picture.resource + std::to_wstring(mSize)).get(), nullptr);
        }
    }
    return mImages.get();
}

ToolBar::ToolBar(Parent& parent, ImageList& images)
    : Control(parent, {TOOLBARCLASSNAMEW, TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER, 0,
                       ControlId::VornToolBar}),
      mImages(images) {
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    // Texts that are not shown beside the pictures become their tool tips and names.
    Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    SizeButtons();
}

void ToolBar::Clear() {
    while (Send(TB_DELETEBUTTON, 0) != 0) {
    }
    mTags.clear();
}

void ToolBar::AddButton(std::int32_t image, std::string_view tag) {
    if (image < 1 || image > mImages.Count()) {
        throw std::out_of_range("there is no such image");
    }
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(mImages.Images()));
    const std::wstring text = ToWide(tag);
    TBBUTTON button = {};
    button.iBitmap = image - 1;
    button.idCommand = ControlId::FirstButton + ButtonCount();
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
    button.iString = reinterpret_cast<INT_PTR>(text.c_str());
    Send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    mTags.emplace_back(tag);
    SizeButtons(); // the pictures have changed that
    Dock();
}

void ToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    if (number < 1 || number > ButtonCount()) {
        throw std::out_of_range("there is no such button");
    }
    std::wstring text = ToWide(tip);
    TBBUTTONINFOW changed = {};
    changed.cbSize = sizeof changed;
    changed.dwMask = TBIF_TEXT;
    changed.pszText = text.data();
    Send(TB_SETBUTTONINFOW, static_cast<WPARAM>(ControlId::FirstButton + number - 1),
         reinterpret_cast<LPARAM>(&changed));
}

std::string ToolBar::ButtonTag(std::int32_t number) const {
    return mTags.at(static_cast<std::size_t>(number) - 1);
}

float ToolBar::PreferredHeight() const {
    Send(TB_AUTOSIZE);
    return Place().height;
}

// The bar is still at work with the button, which the handler may remove.
void ToolBar::Command(int id, int /*code*/) {
    const std::int32_t number = id - ControlId::FirstButton + 1;
    if (number >= 1 && number <= ButtonCount()) {
        ParentWindow().Later([this, number] {
            const FocusEvents::Command command(ParentWindow().focus, FocusEvents::Keyboard::IsTaken);
            Raise(onButtonClick, number);
        });
    }
}

void ToolBar::Rescale() {
    Child::Rescale();
    mImages.Rescale(ParentWindow().Dpi());
    Send(TB_SETIMAGELIST, 0, ButtonCount() > 0 ? reinterpret_cast<LPARAM>(mImages.Images()) : 0);
    SizeButtons();
    Dock();
}

void ToolBar::SizeButtons() {
    const int size = mImages.Size() + ToPixels(120, ParentWindow().Dpi());
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(size, size));
}

void ToolBar::Dock() {
    if (!IsPlaced()) {
        Send(TB_AUTOSIZE);
    } else {
        SetWindowLongW(Handle(), GWL_STYLE, GetWindowLongW(Handle(), GWL_STYLE) | CCS_NORESIZE | CCS_NOPARENTALIGN);
    }
}

} // namespace tessaly::win32
