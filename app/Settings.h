// Where the settings stand in the registry: all are values of one key below HKEY_LOCAL_MACHINE.
#pragma once

#include <string_view>

namespace tessaly {

inline constexpr std::string_view SettingsKey = "SOFTWARE\\Ostrel\\OstrelCompiler";

inline constexpr std::string_view LanguageSetting = "Language";
inline constexpr std::string_view CompBatSetting = "FCompBat";           // the batch file that compiles
inline constexpr std::string_view CompFileNameSetting = "FCompFileName"; // the C file it compiles
inline constexpr std::string_view HelpSetting = "FHelp";
inline constexpr std::string_view ProgBlkIconSetting = "FProgBlkIcon";

} // namespace tessaly
