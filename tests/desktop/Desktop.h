// A whole desktop in memory, for tests: the program runs over it as over a real one, and the test is the user. The
// members give each object with what a user can do and see; `faults` makes any call of the program fail.
#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/Application.h"
#include "tests/desktop/BarControls.h"
#include "tests/desktop/Control.h"
#include "tests/desktop/CountedFiles.h"
#include "tests/desktop/CountedRegistry.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/FileDialog.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/MenuItem.h"
#include "tests/desktop/MessagesWindow.h"
#include "tests/desktop/ModalWindows.h"
#include "tests/desktop/MsgBox.h"
#include "tests/desktop/PopupMenu.h"
#include "tests/desktop/PrivateFiles.h"
#include "tests/desktop/Registry.h"
#include "tests/desktop/RichTextBox.h"
#include "tests/desktop/SequentialFiles.h"
#include "tests/desktop/StatusBar.h"
#include "tests/desktop/Suggestions.h"
#include "tests/desktop/ToolBar.h"
#include "tests/desktop/TreeView.h"
#include "tests/desktop/Window.h"

namespace tessaly::memory {

class Desktop final : public tessaly::Desktop {
public:
    Desktop();

    MessagesWindow& Messages() override { return messages; }
    const BarControls& Bar() override { return bar.controls; }
    std::unique_ptr<tessaly::NameWindow> NewNameWindow() override;
    std::unique_ptr<tessaly::SplashWindow> NewSplashWindow() override;

    // Gives the program another registry from now on.
    void UseRegistry(tessaly::Registry& other) { mParts.settings = &other; }

    Faults faults;
    SequentialFiles files;

    // Beside what the program does for its user, with faults of their own.
    Faults ownFaults;
    PrivateFiles own{ownFaults, files};
    CountedFiles filesForOwn{ownFaults, files};

    Registry registry;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    Application app{faults, files};

    // The main window. The Tab key goes round in this order.
    Window window{faults, app, files};
    Focus& focus = window.focus;
    Label treeLabel{faults, focus};
    TreeView tree{faults, focus};
    Label paneLabel{faults, focus};
    RichTextBox pane{faults, focus};
    ToolBar toolBar{faults, focus};
    StatusBar status{faults, focus};
    Menus menus{faults, focus};

    // What comes up over it.
    FileDialog fileDialog{faults, focus};
    MsgBox msgBox{faults, focus};
    ModalScripts modal;
    MessagesWindow messages{faults, window, pane};
    PaneBar bar{faults, focus};
    Suggestions suggestions{faults, focus};
    PopupMenu popup{faults, focus};

private:
    CountedRegistry mCountedRegistry{faults, registry};
    CountedFiles mCountedFiles{faults, files};
};

} // namespace tessaly::memory
