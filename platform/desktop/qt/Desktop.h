// The Linux desktop. A QApplication must be there before it and as long as it; whoever made that runs the event loop.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/qt/Application.h"
#include "platform/desktop/qt/BarControls.h"
#include "platform/desktop/qt/Bars.h"
#include "platform/desktop/qt/Control.h"
#include "platform/desktop/qt/DestroyedWindows.h"
#include "platform/desktop/qt/Dialogs.h"
#include "platform/desktop/qt/MenuItem.h"
#include "platform/desktop/qt/MessagesWindow.h"
#include "platform/desktop/qt/RichTextBox.h"
#include "platform/desktop/qt/Suggestions.h"
#include "platform/desktop/qt/TreeView.h"
#include "platform/desktop/qt/Window.h"
#include "platform/system/SequentialFiles.h"

#include <QTextBrowser>
#include <memory>
#include <optional>

namespace tessaly::qt {

class Desktop final : public tessaly::Desktop {
public:
    // `commandLine` is what stands behind the program's name. `settings` must live as long as the desktop.
    Desktop(const std::string& commandLine, const Environment& environment, Registry& settings);

    ~Desktop() override;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    MessagesWindow& Messages() override { return mMessages ? *mMessages : mMessages.emplace(window, pane); }
    const BarControls& Bar() override { return OwnBar().controls; }
    PaneBar& OwnBar() { return mBar ? *mBar : mBar.emplace(window); }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;

    // Runs the program until its window is gone; returns the exit code.
    int Run();

    // Closes the window because the session ends. Unless it `mayAsk`, no message box is shown any more.
    void EndSession(bool mayAsk);

    Application app;

    // The main window. The Tab key goes round in the order in which the controls are made.
    Window window{app};
    Label treeLabel{window};
    TreeView tree{window};
    Label paneLabel{window};
    RichTextBox pane{window};
    Suggestions suggestions{window, pane};
    PopupMenu popup{window};
    ToolBar toolBar{window};
    StatusBar status{window};

    // Shows the help where the system has no browser for it, once it was opened. It blocks nothing and stays until the
    // user closes it.
    std::unique_ptr<QTextBrowser> help;

private:
    void ShowHelp(const std::string& path);

    SystemFiles mFiles;
    std::unique_ptr<CodePage> mCodePage;
    Menus mMenus{*window.menuBar(), window.controls.focus};
    FileDialog mFileDialog{window};
    MsgBox mMsgBox{window};
    std::optional<MessagesWindow> mMessages;
    std::optional<PaneBar> mBar;
    DestroyedWindows mDestroyedWindows;
};

} // namespace tessaly::qt
