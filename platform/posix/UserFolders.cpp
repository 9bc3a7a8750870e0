// Relative paths in the variables are passed over, as the rules want it.
#include "platform/posix/UserFolders.h"

namespace tessaly {

namespace {

std::string Folder(const Environment& environment, const std::string& variable, const std::string& belowHome) {
    const std::string folder = environment(variable).value_or("");
    return (folder.starts_with('/') ? folder : environment("HOME").value_or("") + belowHome) + "/tessaly";
}

} // namespace

std::string ConfigFolder(const Environment& environment) {
    return Folder(environment, "XDG_CONFIG_HOME", "/.config");
}

std::string StateFolder(const Environment& environment) {
    return Folder(environment, "XDG_STATE_HOME", "/.local/state");
}

std::string CacheFolder(const Environment& environment) {
    return Folder(environment, "XDG_CACHE_HOME", "/.cache");
}

} // namespace tessaly
