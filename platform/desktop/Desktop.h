// Everything that a desktop offers to the program, in one place. A desktop owns what it hands out and the event loop;
// it creates the controls of the main window, empty and without events, before anybody asks for them.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/desktop/FileDialog.h"
#include "platform/desktop/Label.h"
#include "platform/desktop/MenuItem.h"
#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/MsgBox.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/StatusBar.h"
#include "platform/desktop/ToolBar.h"
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
    virtual ~Desktop() = default;

    // The main window and its controls. A screen reader says the caption of LblcodeTreeViewer for CodeTree and that of
    // FuncLabel for FuncBody.
    virtual Window& MainWindow() = 0;
    virtual TreeView& CodeTree() = 0;
    virtual Label& LblcodeTreeViewer() = 0;
    virtual Label& FuncLabel() = 0;
    virtual RichTextBox& FuncBody() = 0;
    virtual ToolBar& VornToolBar() = 0;
    virtual ImageList& QuorvaneImages() = 0; // image 1 with the tag "Add", image 2 with the tag "Delete"
    virtual StatusBar& StatusBar1() = 0;
    virtual FileDialog& CommonDialog1() = 0;

    // Adds a menu to the main window: in its menu bar, or at the end of the drop-down of `parent`. `name` also is the
    // caption until another one is set. Throws std::invalid_argument when the name is taken.
    virtual MenuItem& AddMenu(MenuItem* parent, std::string_view name) = 0;

    // Adds a line between the items of a drop-down.
    virtual void AddMenuSeparator(MenuItem& parent) = 0;

    // New windows, owned by the main window.
    virtual std::unique_ptr<NameWindow> NewNameWindow() = 0;
    virtual std::unique_ptr<SplashWindow> NewSplashWindow() = 0;

    // Services.
    virtual MsgBox& MessageBoxes() = 0;
    virtual Application& App() = 0;
    virtual Registry& Settings() = 0;
    virtual SequentialFiles& Files() = 0;
    virtual const CodePage& AnsiCodePage() = 0;
};

} // namespace tessaly
