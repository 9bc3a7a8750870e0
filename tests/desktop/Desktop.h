// A whole desktop in memory, for tests: the program runs over it as over a real one, and the test is the user. The
// members give each object with what a user can do and see; `faults` makes any call of the program fail.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/Application.h"
#include "tests/desktop/CountedFiles.h"
#include "tests/desktop/CountedRegistry.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/FileDialog.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/Label.h"
#include "tests/desktop/MenuItem.h"
#include "tests/desktop/ModalWindows.h"
#include "tests/desktop/MsgBox.h"
#include "tests/desktop/Registry.h"
#include "tests/desktop/RichTextBox.h"
#include "tests/desktop/SequentialFiles.h"
#include "tests/desktop/StatusBar.h"
#include "tests/desktop/ToolBar.h"
#include "tests/desktop/TreeView.h"
#include "tests/desktop/Window.h"

namespace tessaly::memory {

class Desktop final : public tessaly::Desktop {
public:
    // The calls of Desktop itself do not count among `faults`, but for those that make menus and windows.
    tessaly::Window& MainWindow() override { return window; }
    tessaly::TreeView& CodeTree() override { return tree; }
    tessaly::Label& LblcodeTreeViewer() override { return treeLabel; }
    tessaly::Label& FuncLabel() override { return paneLabel; }
    tessaly::RichTextBox& FuncBody() override { return pane; }
    tessaly::ToolBar& VornToolBar() override { return toolBar; }
    tessaly::ImageList& QuorvaneImages() override { return images; }
    tessaly::StatusBar& StatusBar1() override { return status; }
    tessaly::FileDialog& CommonDialog1() override { return fileDialog; }
    tessaly::MenuItem& AddMenu(tessaly::MenuItem* parent, std::string_view name) override {
        return menus.Add(parent, name);
    }
    void AddMenuSeparator(tessaly::MenuItem& parent) override { menus.AddSeparator(parent); }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;
    tessaly::MsgBox& MessageBoxes() override { return msgBox; }
    tessaly::Application& App() override { return app; }
    tessaly::Registry& Settings() override { return mCountedRegistry; }
    tessaly::SequentialFiles& Files() override { return mCountedFiles; }
    const CodePage& AnsiCodePage() override { return codePage; }

    Faults faults;
    SequentialFiles files;
    Registry registry;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    Application app{faults};

    // The main window. The Tab key goes round in this order.
    Focus focus;
    Window window{faults, focus, app, files};
    Label treeLabel{faults, focus};
    TreeView tree{faults, focus};
    Label paneLabel{faults, focus};
    RichTextBox pane{faults, focus};
    ImageList images{faults};
    ToolBar toolBar{faults, focus, images};
    StatusBar status{faults, focus};
    Menus menus{faults, focus};

    // What comes up over it.
    FileDialog fileDialog{faults, focus};
    MsgBox msgBox{faults, focus};
    ModalScripts modal;

private:
    CountedRegistry mCountedRegistry{faults, registry};
    CountedFiles mCountedFiles{faults, files};
};

} // namespace tessaly::memory
