// A desktop as it is, that remembers by name the menus which the program makes: a test has to choose from them.
#pragma once

#include "platform/desktop/Desktop.h"

#include <map>
#include <string>

namespace tessaly {

class MenuKeeper : public Desktop {
public:
    explicit MenuKeeper(Desktop& desktop) : mDesktop(desktop) {}

    MenuItem& Menu(std::string_view name) const { return *mMenus.at(std::string(name)); }

    MenuItem& AddMenu(MenuItem* parent, std::string_view name) override {
        MenuItem& item = mDesktop.AddMenu(parent, name);
        mMenus.emplace(name, &item);
        return item;
    }
    void AddMenuSeparator(MenuItem& parent) override { mDesktop.AddMenuSeparator(parent); }
    Window& MainWindow() override { return mDesktop.MainWindow(); }
    TreeView& CodeTree() override { return mDesktop.CodeTree(); }
    Label& LblcodeTreeViewer() override { return mDesktop.LblcodeTreeViewer(); }
    Label& FuncLabel() override { return mDesktop.FuncLabel(); }
    RichTextBox& FuncBody() override { return mDesktop.FuncBody(); }
    ToolBar& VornToolBar() override { return mDesktop.VornToolBar(); }
    ImageList& QuorvaneImages() override { return mDesktop.QuorvaneImages(); }
    StatusBar& StatusBar1() override { return mDesktop.StatusBar1(); }
    FileDialog& CommonDialog1() override { return mDesktop.CommonDialog1(); }
    std::unique_ptr<NameWindow> NewNameWindow() override { return mDesktop.NewNameWindow(); }
    std::unique_ptr<SplashWindow> NewSplashWindow() override { return mDesktop.NewSplashWindow(); }
    MsgBox& MessageBoxes() override { return mDesktop.MessageBoxes(); }
    Application& App() override { return mDesktop.App(); }
    Registry& Settings() override { return mDesktop.Settings(); }
    SequentialFiles& Files() override { return mDesktop.Files(); }
    const CodePage& AnsiCodePage() override { return mDesktop.AnsiCodePage(); }

private:
    Desktop& mDesktop;
    std::map<std::string, MenuItem*> mMenus;
};

} // namespace tessaly
