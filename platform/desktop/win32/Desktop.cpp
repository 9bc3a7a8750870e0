// Controls are made in the order of the members.
#include "platform/desktop/win32/Desktop.h"

#include "platform/desktop/win32/ModalWindows.h"
#include "platform/system/CodePages.h"
#include "platform/system/win32/Streams.h"

namespace tessaly::win32 {

Desktop::Desktop() : mCodePage(MakeSystemCodePage()) {
    mParts = {&mWindow,      &mTreeLabel, &mCodeTree,  &mFuncLabel,    &mFuncBody,   &mSuggestions,
              &mPopup,       &mToolBar,   &mStatusBar, &mMenus,        &mFileDialog, &mMsgBox,
              &mApplication, &mRegistry,  &mFiles,     mCodePage.get()};
    mApplication.commandLine = CommandLine();
    mApplication.SetWindow(mWindow.Handle());
    mTreeLabel.SetNamed(mCodeTree.Handle());
    mLoop.onHelp = [this] { mApplication.OpenHelp(); };
    mWindow.onLastWord = [this] { mMsgBox.AskNoMore(); };
    mWindow.onMenu = std::bind_front(&Menus::Choose, &mMenus);
    mWindow.onShow = [this] { mMenus.Attach(); };
}

std::unique_ptr<tessaly::NameWindow> Desktop::NewNameWindow() {
    return std::make_unique<NameWindow>(mLoop, mWindow.Handle());
}

std::unique_ptr<tessaly::SplashWindow> Desktop::NewSplashWindow() {
    return std::make_unique<SplashWindow>(mLoop, mWindow.Handle());
}

} // namespace tessaly::win32
