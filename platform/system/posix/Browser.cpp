// xdg-mime knows only the name of a desktop file; its categories say whether that is a browser.
#include "platform/system/posix/Browser.h"

#include "platform/system/UserFolders.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace tessaly::posix {

namespace {

// The name of a desktop file, or "".
std::string OpenerOfHtml() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> answer(
        ::popen("xdg-mime query default text/html 2>/dev/null", "re"), ::pclose);
    std::array<char, 256> line = {};
    if (!answer || std::fgets(line.data(), line.size(), answer.get()) == nullptr) {
        return "";
    }
    const std::string name = line.data();
    return name.substr(0, name.find('\n'));
}

bool IsBrowser(const std::string& desktopFile) {
    std::ifstream file(desktopFile);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("Categories=") && line.find("WebBrowser") != std::string::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

bool HtmlOpensInBrowser(const Environment& environment) {
    const std::string opener = OpenerOfHtml();
    if (opener.empty()) {
        return false;
    }
    const std::vector<std::string> folders = DataFolders(environment);
    return std::any_of(folders.begin(), folders.end(),
                       [&opener](const std::string& folder) { return IsBrowser(folder + "/applications/" + opener); });
}

} // namespace tessaly::posix
