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

namespace tessaly {

class MemoryDesktop final : public Desktop {
public:
    // With `rights` = Enforced the registry is as strict as that of Windows.
    explicit MemoryDesktop(RegistryStore::AccessRights rights = RegistryStore::AccessRights::Ignored)
        : registry(rights) {}

    // The calls of Desktop itself do not count among `faults`, but for those that make menus and windows.
    Window& MainWindow() override { return window; }
    TreeView& CodeTree() override { return tree; }
    Label& LblcodeTreeViewer() override { return treeLabel; }
    Label& FuncLabel() override { return paneLabel; }
    RichTextBox& FuncBody() override { return pane; }
    ToolBar& VornToolBar() override { return toolBar; }
    ImageList& QuorvaneImages() override { return images; }
    StatusBar& StatusBar1() override { return status; }
    FileDialog& CommonDialog1() override { return fileDialog; }
    MenuItem& AddMenu(MenuItem* parent, std::string_view name) override { return menus.Add(parent, name); }
    void AddMenuSeparator(MenuItem& parent) override { menus.AddSeparator(parent); }
    std::unique_ptr<NameWindow> NewNameWindow() override;
    std::unique_ptr<SplashWindow> NewSplashWindow() override;
    MsgBox& MessageBoxes() override { return msgBox; }
    Application& App() override { return app; }
    Registry& Settings() override { return mCountedRegistry; }
    SequentialFiles& Files() override { return mCountedFiles; }
    const CodePage& AnsiCodePage() override { return codePage; }

    MemoryFaults faults;
    MemoryFiles files;
    MemoryRegistry registry;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    MemoryApplication app{faults};

    // The main window. The Tab key goes round in this order.
    MemoryFocus focus;
    MemoryWindow window{faults, focus, app, files};
    MemoryLabel treeLabel{faults, focus};
    MemoryTreeView tree{faults, focus};
    MemoryLabel paneLabel{faults, focus};
    MemoryRichTextBox pane{faults, focus};
    MemoryImageList images{faults};
    MemoryToolBar toolBar{faults, focus, images};
    MemoryStatusBar status{faults, focus};
    MemoryMenus menus{faults, focus};

    // What comes up over it.
    MemoryFileDialog fileDialog{faults, focus};
    MemoryMsgBox msgBox{faults, focus};
    MemoryModalScripts modal;

private:
    CountedRegistry mCountedRegistry{faults, registry};
    CountedFiles mCountedFiles{faults, files};
};

} // namespace tessaly
