// The Linux desktop. A QApplication must be there before it and as long as it; whoever made that runs the event loop.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/qt/Application.h"
#include "platform/desktop/qt/DestroyedWindows.h"
#include "platform/desktop/qt/FileDialog.h"
#include "platform/desktop/qt/Focus.h"
#include "platform/desktop/qt/HelpWindow.h"
#include "platform/desktop/qt/Label.h"
#include "platform/desktop/qt/MenuItem.h"
#include "platform/desktop/qt/MsgBox.h"
#include "platform/desktop/qt/OutputWindow.h"
#include "platform/desktop/qt/RichTextBox.h"
#include "platform/desktop/qt/StatusBar.h"
#include "platform/desktop/qt/ToolBar.h"
#include "platform/desktop/qt/TreeView.h"
#include "platform/desktop/qt/Window.h"
#include "platform/system/posix/SequentialFiles.h"

namespace tessaly {

class QtDesktop final : public Desktop {
public:
    // `commandLine` is what stands behind the program's name. `settings` must live as long as the desktop.
    QtDesktop(const std::string& commandLine, const Environment& environment, Registry& settings);

    ~QtDesktop() override;
    QtDesktop(const QtDesktop&) = delete;
    QtDesktop& operator=(const QtDesktop&) = delete;

    Window& MainWindow() override { return window; }
    TreeView& CodeTree() override { return tree; }
    Label& LblcodeTreeViewer() override { return treeLabel; }
    Label& FuncLabel() override { return paneLabel; }
    RichTextBox& FuncBody() override { return pane; }
    ToolBar& VornToolBar() override { return toolBar; }
    ImageList& QuorvaneImages() override { return mImages; }
    StatusBar& StatusBar1() override { return status; }
    FileDialog& CommonDialog1() override { return mFileDialog; }
    MenuItem& AddMenu(MenuItem* parent, std::string_view name) override { return mMenus.Add(parent, name); }
    void AddMenuSeparator(MenuItem& parent) override { mMenus.AddSeparator(parent); }
    std::unique_ptr<NameWindow> NewNameWindow() override;
    std::unique_ptr<SplashWindow> NewSplashWindow() override;
    MsgBox& MessageBoxes() override { return mMsgBox; }
    Application& App() override { return app; }
    Registry& Settings() override { return mSettings; }
    SequentialFiles& Files() override { return mFiles; }
    const CodePage& AnsiCodePage() override { return *mCodePage; }

    // Closes the window because the session ends. Unless it `mayAsk`, no message box is shown any more.
    void EndSession(bool mayAsk);

    QtApplication app;

    // The main window. The Tab key goes round in the order in which the controls are made.
    QtFrame frame;
    QtFocus focus{frame};
    QtWindow window{frame, focus, [this] { app.OpenHelp(); }};
    QtLabel treeLabel{&frame.Client(), &focus};
    QtTreeView tree{&frame.Client(), focus};
    QtLabel paneLabel{&frame.Client(), &focus};
    QtRichTextBox pane{&frame.Client(), focus};
    QtToolBar toolBar{&frame.Client(), focus};
    QtStatusBar status{&frame.Client(), focus};

    // Beside it, once a process was started that writes something.
    std::unique_ptr<QtOutputWindow> output;

    // Once the help was opened without a browser.
    std::unique_ptr<QtHelpWindow> help;

private:
    void LayOut();

    PosixFiles mFiles;
    Registry& mSettings;
    std::unique_ptr<CodePage> mCodePage;
    QtImageList mImages;
    QtMenus mMenus{*frame.menuBar(), focus.events};
    QtFileDialog mFileDialog{frame};
    QtMsgBox mMsgBox{frame};
    QtDestroyedWindows mDestroyedWindows;
};

} // namespace tessaly
