// The Windows desktop: real controls over the system's own.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/win32/Application.h"
#include "platform/desktop/win32/BarControls.h"
#include "platform/desktop/win32/Bars.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Dialogs.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/MenuItem.h"
#include "platform/desktop/win32/MessagesWindow.h"
#include "platform/desktop/win32/RichTextBox.h"
#include "platform/desktop/win32/Suggestions.h"
#include "platform/desktop/win32/TreeView.h"
#include "platform/desktop/win32/Window.h"
#include "platform/system/SequentialFiles.h"
#include "platform/system/win32/Registry.h"

#include <optional>

namespace tessaly::win32 {

class Desktop final : public tessaly::Desktop {
public:
    // Of this process as it was started.
    Desktop();

    // Runs the program until its window is gone.
    EventLoop& Loop() { return mLoop; }

    MessagesWindow& Messages() override { return mMessages ? *mMessages : mMessages.emplace(mWindow, mFuncBody); }
    const BarControls& Bar() override { return (mBar ? *mBar : mBar.emplace(mWindow)).controls; }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;

private:
    EventLoop mLoop;
    Application mApplication{mLoop};
    std::unique_ptr<CodePage> mCodePage;
    Registry mRegistry;
    SystemFiles mFiles;

    Window mWindow{mLoop, mApplication};
    Menus mMenus{mWindow.Handle(), mWindow.controls.focus};

    // Each label comes before its control: Windows takes the names of controls from that order.
    Label mTreeLabel{mWindow, ControlId::LblcodeTreeViewer};
    TreeView mCodeTree{mWindow};
    Label mFuncLabel{mWindow, ControlId::FuncLabel};
    RichTextBox mFuncBody{mWindow};
    Suggestions mSuggestions{mWindow, mFuncBody};
    PopupMenu mPopup{mWindow};
    ToolBar mToolBar{mWindow};
    StatusBar mStatusBar{mWindow};

    FileDialog mFileDialog{mWindow.Handle()};
    MsgBox mMsgBox{mWindow.Handle()};
    std::optional<MessagesWindow> mMessages;
    std::optional<PaneBar> mBar;
};

} // namespace tessaly::win32
