// Work on texts alone: no folder is looked at.
#include "platform/system/UserFolders.h"

#include "platform/text/Ascii.h"

#include <string_view>

namespace tessaly {

namespace {

bool IsAbsolute(const std::string& path) {
    return path.starts_with('/');
}

std::string Base(const Environment& environment, const std::string& variable, const std::string& belowHome) {
    const std::string folder = environment(variable).value_or("");
    return IsAbsolute(folder) ? folder : environment("HOME").value_or("") + belowHome;
}

std::vector<std::string> Folders(const Environment& environment, const std::string& own, const std::string& variable,
                                 const std::string& standard) {
    const std::string others = environment(variable).value_or("");
    std::vector<std::string> folders = {own};
    for (std::string_view rest = others.empty() ? standard : others; !rest.empty();) {
        folders.emplace_back(TakeLine(rest, ':'));
    }
    std::erase_if(folders, [](const std::string& folder) { return !IsAbsolute(folder); });
    return folders;
}

} // namespace

std::string ConfigFolder(const Environment& environment) {
    return Base(environment, "XDG_CONFIG_HOME", "/.config") + "/tessaly";
}

std::string StateFolder(const Environment& environment) {
    return Base(environment, "XDG_STATE_HOME", "/.local/state") + "/tessaly";
}

std::vector<std::string> ConfigFolders(const Environment& environment) {
    return Folders(environment, Base(environment, "XDG_CONFIG_HOME", "/.config"), "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<std::string> DataFolders(const Environment& environment) {
    return Folders(environment, Base(environment, "XDG_DATA_HOME", "/.local/share"), "XDG_DATA_DIRS",
                   "/usr/local/share:/usr/share");
}

} // namespace tessaly
