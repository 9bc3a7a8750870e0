// The window that tells about the program.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/win32/Label.h"
#include "platform/desktop/win32/ModalWindow.h"
#include "platform/desktop/win32/Part.h"

namespace tessaly::win32 {

class SplashWindow final : public tessaly::SplashWindow, private ModalWindow {
public:
    SplashWindow(EventLoop& loop, HWND owner);

    void SetCaption(std::string_view caption) override { SetTitle(caption); }
    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    tessaly::Label& LblVersion() override { return mVersion; }
    tessaly::Label& LblPlatform() override { return mPlatform; }
    tessaly::Label& LblCompany() override { return mCompany; }
    tessaly::Label& LblCopyright() override { return mCopyright; }
    tessaly::Label& LblCompanyProduct() override { return mCompanyProduct; }
    tessaly::Label& LblProductName() override { return mProductName; }

private:
    bool TakeMessage(MSG& message) override;
    bool OwnMessage(UINT message, LPARAM lParam) override;
    void Rescaled() override;
    void Paint();

    bool mIsPressed = false; // the left button, in the frame
    FontOwner mLargeFont;
    BitmapOwner mLogo;
    Part mFrame;
    Label mCompanyProduct;
    Label mProductName;
    Label mVersion;
    Label mPlatform;
    Label mCompany;
    Label mCopyright;
};

} // namespace tessaly::win32
