#include "platform/desktop/win32/Desktop.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Help.h"
#include "platform/desktop/win32/NameWindow.h"
#include "platform/desktop/win32/SplashWindow.h"
#include "platform/system/CodePages.h"
#include "platform/system/win32/Streams.h"

#include <utility>

namespace tessaly::win32 {

Desktop::Desktop() : Desktop({CommandLine(), OpenHelpFile}) {}

Desktop::Desktop(Application::Settings settings)
    : mApplication(std::move(settings)),
      mCodePage(MakeSystemCodePage()),
      mWindow(mLoop),
      mMenus(mWindow.Handle()),
      mImages(mWindow.Dpi()),
      mTreeLabel(mWindow, ControlId::LblcodeTreeViewer),
      mCodeTree(mWindow),
      mFuncLabel(mWindow, ControlId::FuncLabel),
      mFuncBody(mWindow),
      mToolBar(mWindow, mImages),
      mStatusBar(mWindow),
      mFileDialog(mWindow.Handle()),
      mMsgBox(mWindow.Handle()) {
    mApplication.SetWindow(mWindow.Handle());
    mTreeLabel.SetNamed(mCodeTree.Handle());
    mLoop.onHelp = [this] { mApplication.OpenHelp(); };
    mWindow.onLastWord = [this] { mMsgBox.AskNoMore(); };
    mWindow.onMenu = [this](int id) { mMenus.Choose(id); };
    mWindow.onShow = [this] { mMenus.Attach(); };
    mWindow.onLayOut = [this] {
        mToolBar.Dock();
        mStatusBar.Dock();
    };
}

std::unique_ptr<tessaly::NameWindow> Desktop::NewNameWindow() {
    return std::make_unique<NameWindow>(mLoop, mWindow.Handle());
}

std::unique_ptr<tessaly::SplashWindow> Desktop::NewSplashWindow() {
    return std::make_unique<SplashWindow>(mLoop, mWindow.Handle());
}

} // namespace tessaly::win32
