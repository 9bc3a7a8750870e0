// The Windows desktop: real controls over the system's own.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/win32/Application.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/FileDialog.h"
#include "platform/desktop/win32/Label.h"
#include "platform/desktop/win32/MenuItem.h"
#include "platform/desktop/win32/MsgBox.h"
#include "platform/desktop/win32/RichTextBox.h"
#include "platform/desktop/win32/StatusBar.h"
#include "platform/desktop/win32/ToolBar.h"
#include "platform/desktop/win32/TreeView.h"
#include "platform/desktop/win32/Window.h"
#include "platform/system/win32/Registry.h"
#include "platform/system/win32/SequentialFiles.h"

namespace tessaly {

class Win32Desktop final : public Desktop {
public:
    // Of this process as it was started.
    Win32Desktop();

    explicit Win32Desktop(Win32Application::Settings settings);

    // Runs the program until its window is gone; returns the exit code.
    int Run() { return mLoop.Run(); }

    Window& MainWindow() override { return mWindow; }
    TreeView& CodeTree() override { return mCodeTree; }
    Label& LblcodeTreeViewer() override { return mTreeLabel; }
    Label& FuncLabel() override { return mFuncLabel; }
    RichTextBox& FuncBody() override { return mFuncBody; }
    ToolBar& VornToolBar() override { return mToolBar; }
    ImageList& QuorvaneImages() override { return mImages; }
    StatusBar& StatusBar1() override { return mStatusBar; }
    FileDialog& CommonDialog1() override { return mFileDialog; }
    MenuItem& AddMenu(MenuItem* parent, std::string_view name) override { return mMenus.Add(parent, name); }
    void AddMenuSeparator(MenuItem& parent) override { Win32Menus::AddSeparator(parent); }
    std::unique_ptr<NameWindow> NewNameWindow() override;
    std::unique_ptr<SplashWindow> NewSplashWindow() override;
    MsgBox& MessageBoxes() override { return mMsgBox; }
    Application& App() override { return mApplication; }
    Registry& Settings() override { return mRegistry; }
    SequentialFiles& Files() override { return mFiles; }
    const CodePage& AnsiCodePage() override { return *mCodePage; }

    // For tests
    Win32EventLoop& Loop() { return mLoop; }
    Win32Window& Frame() { return mWindow; }
    Win32TreeView& Tree() { return mCodeTree; }
    const Win32Menus& Menus() const { return mMenus; }

private:
    Win32EventLoop mLoop;
    Win32Application mApplication;
    std::unique_ptr<CodePage> mCodePage;
    Win32Registry mRegistry;
    Win32Files mFiles;

    Win32Window mWindow;

    // Each label stands in front of what it names: that is how Windows knows the names of controls.
    Win32Menus mMenus;
    Win32ImageList mImages;
    Win32Label mTreeLabel;
    Win32TreeView mCodeTree;
    Win32Label mFuncLabel;
    Win32RichTextBox mFuncBody;
    Win32ToolBar mToolBar;
    Win32StatusBar mStatusBar;

    Win32FileDialog mFileDialog;
    Win32MsgBox mMsgBox;
};

} // namespace tessaly
