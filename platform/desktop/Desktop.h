// Everything that a desktop offers to the program, in one place. A desktop owns what it hands out and the event loop;
// it creates the controls of the main window, empty and without events, before anybody asks for them.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/desktop/BarControls.h"
#include "platform/desktop/Bars.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/MenuItem.h"
#include "platform/desktop/MessagesWindow.h"
#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/Suggestions.h"
#include "platform/desktop/TreeView.h"
#include "platform/desktop/Window.h"
#include "platform/system/Registry.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/CodePage.h"

#include <memory>
#include <string_view>

namespace tessaly {

class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    // The main window and its controls. A screen reader says the caption of LblcodeTreeViewer for CodeTree and that of
    // FuncLabel for FuncBody.
    Window& MainWindow() const { return *mParts.window; }
    Label& LblcodeTreeViewer() const { return *mParts.treeLabel; }
    TreeView& CodeTree() const { return *mParts.tree; }
    Label& FuncLabel() const { return *mParts.paneLabel; }
    RichTextBox& FuncBody() const { return *mParts.pane; }
    Suggestions& NameSuggestions() const { return *mParts.suggestions; }
    PopupMenu& Popup() const { return *mParts.popup; }
    ToolBar& VornToolBar() const { return *mParts.toolBar; }
    ImageList& QuorvaneImages() const { return mParts.toolBar->images; } // image 1 is "Add", image 2 "Delete"
    StatusBar& StatusBar1() const { return *mParts.status; }
    FileDialog& CommonDialog1() const { return *mParts.fileDialog; }

    // See Menus.
    MenuItem& AddMenu(MenuItem* parent, std::string_view name) { return mParts.menus->Add(parent, name); }
    MenuItem& Menu(std::string_view name) const { return (*mParts.menus)[name]; }
    void ChooseMenu(std::string_view name) const { mParts.menus->Choose(mParts.menus->Number(name)); }
    void AddMenuSeparator(MenuItem& parent) { mParts.menus->AddSeparator(parent); }

    // Made when they are asked for first: most starts never need these controls.
    virtual MessagesWindow& Messages() = 0;
    virtual const BarControls& Bar() = 0;

    // New windows, owned by the main window.
    virtual std::unique_ptr<NameWindow> NewNameWindow() = 0;
    virtual std::unique_ptr<SplashWindow> NewSplashWindow() = 0;

    // Services.
    MsgBox& MessageBoxes() const { return *mParts.msgBox; }
    Application& App() const { return *mParts.app; }
    Registry& Settings() const { return *mParts.settings; }
    SequentialFiles& Files() const { return *mParts.files; }
    const CodePage& AnsiCodePage() const { return *mParts.codePage; }

protected:
    // To be filled by a desktop before it is used.
    struct Parts {
        Window* window = nullptr;
        Label* treeLabel = nullptr;
        TreeView* tree = nullptr;
        Label* paneLabel = nullptr;
        RichTextBox* pane = nullptr;
        Suggestions* suggestions = nullptr;
        PopupMenu* popup = nullptr;
        ToolBar* toolBar = nullptr;
        StatusBar* status = nullptr;
        Menus* menus = nullptr;
        FileDialog* fileDialog = nullptr;
        MsgBox* msgBox = nullptr;
        Application* app = nullptr;
        Registry* settings = nullptr;
        SequentialFiles* files = nullptr;
        const CodePage* codePage = nullptr;
    };
    Parts mParts;
};

} // namespace tessaly
