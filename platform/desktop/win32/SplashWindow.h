// The window that tells about the program.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/win32/Label.h"
#include "platform/desktop/win32/ModalWindow.h"
#include "platform/desktop/win32/Part.h"

namespace tessaly {

class Win32SplashWindow final : public SplashWindow, private Win32ModalWindow {
public:
    Win32SplashWindow(Win32EventLoop& loop, HWND owner);

    void SetCaption(std::string_view caption) override { SetTitle(caption); }
    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    Label& LblVersion() override { return mVersion; }
    Label& LblPlatform() override { return mPlatform; }
    Label& LblCompany() override { return mCompany; }
    Label& LblCopyright() override { return mCopyright; }
    Label& LblCompanyProduct() override { return mCompanyProduct; }
    Label& LblProductName() override { return mProductName; }

private:
    bool TakeMessage(MSG& message) override;
    bool OwnMessage(UINT message, LPARAM lParam) override;
    void Rescaled() override;
    void Paint();

    bool mIsPressed = false; // the left button, in the frame
    Win32Font mLargeFont;
    Win32Bitmap mLogo;
    Win32Part mFrame;
    Win32Label mCompanyProduct;
    Win32Label mProductName;
    Win32Label mVersion;
    Win32Label mPlatform;
    Win32Label mCompany;
    Win32Label mCopyright;
};

} // namespace tessaly
