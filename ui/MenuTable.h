// The menus of the main window. Their texts are in the catalogue under these names.
#pragma once

#include <string_view>

namespace tessaly {

struct MenuEntry {
    std::string_view name;
    std::string_view parent; // "" in the menu bar
    bool separatorBefore = false;
};

inline constexpr MenuEntry MenuTable[] = {
    {"mnuFile", ""},
    {"mnuNewPSF", "mnuFile"},
    {"mnuOpenPSF", "mnuFile"},
    {"mnuSavePSF", "mnuFile", true},
    {"mnuSaveAsPSF", "mnuFile"},
    {"mnuExit", "mnuFile", true},
    {"mnuCompilePSF", ""},
    {"mnuBuildExe", "mnuCompilePSF"},
    {"mnuOptions", ""},
    {"mnuEnglish", "mnuOptions"},
    {"mnuGerman", "mnuOptions"},
    {"mnuHelp", ""},
    {"mnuOpenHelp", "mnuHelp"},
    {"mnuHelpHotKeys", "mnuHelp"},
    {"mnuAbout", "mnuHelp", true},
};

} // namespace tessaly
