#include "platform/desktop/win32/SplashWindow.h"

#include "platform/desktop/Window.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Picture.h"
#include "platform/desktop/win32/Raise.h"

#include <string>
#include <utility>

namespace tessaly::win32 {

namespace {

// In twips.
constexpr float SplashWidth = 6600;
constexpr float SplashHeight = 3450;
constexpr Extent FramePlace = {120, 30, 6360, 3300};
constexpr Extent LogoPlace = {360, 420, 1440, 1440};
constexpr Extent CompanyProductPlace = {2100, 360, 4200, 270};
constexpr Extent ProductNamePlace = {2100, 660, 4200, 840};
constexpr Extent VersionPlace = {2100, 1560, 4200, 270};
constexpr Extent PlatformPlace = {2100, 1860, 4200, 270};
constexpr Extent CompanyPlace = {2100, 2460, 4200, 270};
constexpr Extent CopyrightPlace = {2100, 2760, 4200, 270};

constexpr float LargeFont = 2; // times the normal one

// In the LPARAM of a key message: the key was down before.
constexpr LPARAM IsRepeated = 1 << 30;

// The picture that is drawn for this resolution or the next higher one.
std::wstring LogoResource(int dpi) {
    return L"logo_" + std::to_wstring(dpi <= 96 ? 96 : dpi <= 144 ? 144 : 192);
}

RECT Pixels(const Extent& extent, int dpi) {
    return {ToPixels(extent.left, dpi), ToPixels(extent.top, dpi), ToPixels(extent.left + extent.width, dpi),
            ToPixels(extent.top + extent.height, dpi)};
}

} // namespace

SplashWindow::SplashWindow(EventLoop& loop, HWND owner)
    : win32::ModalWindow(loop, owner, L"frmSplash", SplashWidth, SplashHeight),
      mFrame(*this, {WC_BUTTONW, BS_GROUPBOX, 0, ControlId::Frame1}),
      mCompanyProduct(*this, ControlId::LblCompanyProduct),
      mProductName(*this, ControlId::LblProductName),
      mVersion(*this, ControlId::LblVersion),
      mPlatform(*this, ControlId::LblPlatform),
      mCompany(*this, ControlId::LblCompany),
      mCopyright(*this, ControlId::LblCopyright) {
    mFrame.SetPlace(FramePlace);
    mCompanyProduct.SetPlace(CompanyProductPlace);
    mProductName.SetPlace(ProductNamePlace);
    mVersion.SetPlace(VersionPlace);
    mPlatform.SetPlace(PlatformPlace);
    mCompany.SetPlace(CompanyPlace);
    mCopyright.SetPlace(CopyrightPlace);
    Rescaled();
}

void SplashWindow::Rescaled() {
    FontOwner font = MakeMessageFont(Dpi(), LargeFont);
    SendMessageW(mProductName.Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    mLargeFont = std::move(font);
    mLogo = LoadPictureResource(LogoResource(Dpi()));
}

// A key that is still down from the menu is none.
bool SplashWindow::TakeMessage(MSG& message) {
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    if (!isKey || IsModifierKey(static_cast<int>(message.wParam))) {
        return false;
    }
    if ((message.lParam & IsRepeated) == 0) {
        Raise(onKeyPress);
    }
    return true;
}

// Labels and the frame leave clicks to the window behind them.
bool SplashWindow::OwnMessage(UINT message, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint();
        return true;
    }
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONUP) {
        return false;
    }
    const RECT frame = Pixels(FramePlace, Dpi());
    const POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    const bool isIn = PtInRect(&frame, point) != 0;
    const bool wasPressed = std::exchange(mIsPressed, isIn && message == WM_LBUTTONDOWN);
    if (wasPressed && isIn && message == WM_LBUTTONUP) {
        Raise(onFrameClick);
    }
    return true;
}

void SplashWindow::Paint() {
    PAINTSTRUCT paint = {};
    HDC target = BeginPaint(Handle(), &paint);
    if (mLogo) {
        DrawPicture(target, mLogo.get(), Pixels(LogoPlace, Dpi()));
    }
    EndPaint(Handle(), &paint);
}

} // namespace tessaly::win32
