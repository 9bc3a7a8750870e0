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
#include "platform/system/SequentialFiles.h"

namespace tessaly::qt {

class Desktop final : public tessaly::Desktop {
public:
    // `commandLine` is what stands behind the program's name. `settings` must live as long as the desktop.
    Desktop(const std::string& commandLine, const Environment& environment, Registry& settings);

    ~Desktop() override;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    tessaly::Window& MainWindow() override { return window; }
    tessaly::TreeView& CodeTree() override { return tree; }
    tessaly::Label& LblcodeTreeViewer() override { return treeLabel; }
    tessaly::Label& FuncLabel() override { return paneLabel; }
    tessaly::RichTextBox& FuncBody() override { return pane; }
    tessaly::ToolBar& VornToolBar() override { return toolBar; }
    tessaly::ImageList& QuorvaneImages() override { return mImages; }
    tessaly::StatusBar& StatusBar1() override { return status; }
    tessaly::FileDialog& CommonDialog1() override { return mFileDialog; }
    tessaly::MenuItem& AddMenu(tessaly::MenuItem* parent, std::string_view name) override {
        return mMenus.Add(parent, name);
    }
    void AddMenuSeparator(tessaly::MenuItem& parent) override { mMenus.AddSeparator(parent); }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;
    tessaly::MsgBox& MessageBoxes() override { return mMsgBox; }
    tessaly::Application& App() override { return app; }
    Registry& Settings() override { return mSettings; }
    SequentialFiles& Files() override { return mFiles; }
    const CodePage& AnsiCodePage() override { return *mCodePage; }

    // Runs the program until its window is gone; returns the exit code.
    int Run();

    // Closes the window because the session ends. Unless it `mayAsk`, no message box is shown any more.
    void EndSession(bool mayAsk);

    Application app;

    // The main window. The Tab key goes round in the order in which the controls are made.
    Frame frame;
    Focus focus{frame};
    Window window{frame, focus, [this] { app.OpenHelp(); }};
    Label treeLabel{&frame.Client(), &focus};
    TreeView tree{&frame.Client(), focus};
    Label paneLabel{&frame.Client(), &focus};
    RichTextBox pane{&frame.Client(), focus};
    ToolBar toolBar{&frame.Client(), focus};
    StatusBar status{&frame.Client(), focus};

    // Beside it, once a process was started that writes something.
    std::unique_ptr<OutputWindow> output;

    // Once the help was opened without a browser.
    std::unique_ptr<HelpWindow> help;

private:
    void LayOut();

    SystemFiles mFiles;
    Registry& mSettings;
    std::unique_ptr<CodePage> mCodePage;
    ImageList mImages;
    Menus mMenus{*frame.menuBar(), focus.events};
    FileDialog mFileDialog{frame};
    MsgBox mMsgBox{frame};
    DestroyedWindows mDestroyedWindows;
};

} // namespace tessaly::qt
