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
#include "platform/system/SequentialFiles.h"
#include "platform/system/win32/Registry.h"

namespace tessaly::win32 {

class Desktop final : public tessaly::Desktop {
public:
    // Of this process as it was started.
    Desktop();

    explicit Desktop(Application::Settings settings);

    // Runs the program until its window is gone; returns the exit code.
    int Run() { return mLoop.Run(); }

    tessaly::Window& MainWindow() override { return mWindow; }
    tessaly::TreeView& CodeTree() override { return mCodeTree; }
    tessaly::Label& LblcodeTreeViewer() override { return mTreeLabel; }
    tessaly::Label& FuncLabel() override { return mFuncLabel; }
    tessaly::RichTextBox& FuncBody() override { return mFuncBody; }
    tessaly::ToolBar& VornToolBar() override { return mToolBar; }
    tessaly::ImageList& QuorvaneImages() override { return mImages; }
    tessaly::StatusBar& StatusBar1() override { return mStatusBar; }
    tessaly::FileDialog& CommonDialog1() override { return mFileDialog; }
    tessaly::MenuItem& AddMenu(tessaly::MenuItem* parent, std::string_view name) override {
        return mMenus.Add(parent, name);
    }
    void AddMenuSeparator(tessaly::MenuItem& parent) override { Menus::AddSeparator(parent); }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;
    tessaly::MsgBox& MessageBoxes() override { return mMsgBox; }
    tessaly::Application& App() override { return mApplication; }
    tessaly::Registry& Settings() override { return mRegistry; }
    tessaly::SequentialFiles& Files() override { return mFiles; }
    const CodePage& AnsiCodePage() override { return *mCodePage; }

    // For tests
    EventLoop& Loop() { return mLoop; }
    Window& Frame() { return mWindow; }
    TreeView& Tree() { return mCodeTree; }
    const Menus& MenuBar() const { return mMenus; }

private:
    EventLoop mLoop;
    Application mApplication;
    std::unique_ptr<CodePage> mCodePage;
    Registry mRegistry;
    SystemFiles mFiles;

    Window mWindow;

    // Each label stands in front of what it names: that is how Windows knows the names of controls.
    Menus mMenus;
    ImageList mImages;
    Label mTreeLabel;
    TreeView mCodeTree;
    Label mFuncLabel;
    RichTextBox mFuncBody;
    ToolBar mToolBar;
    StatusBar mStatusBar;

    FileDialog mFileDialog;
    MsgBox mMsgBox;
};

} // namespace tessaly::win32
