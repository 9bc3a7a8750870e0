// Programs are started by the system's own means, so none of this needs Qt.
#include "platform/desktop/qt/Application.h"

#include "platform/system/UserFolders.h"
#include "platform/system/posix/Browser.h"
#include "platform/system/posix/Process.h"

#include <filesystem>
#include <system_error>

namespace tessaly::qt {

namespace fs = std::filesystem;

void Application::StartProcess(const std::string& line, std::int32_t windowStyle) {
    std::error_code noFolder;
    fs::create_directories(fs::path(OutputPath()).parent_path(), noFolder);
    tessaly::StartProcess(line, windowStyle, noFolder ? std::string() : OutputPath());
    if (!noFolder) {
        onOutput(OutputPath());
    }
}

void Application::ShowHelp() {
    fs::path path(helpFile);
    std::error_code ignored; // what cannot be looked at is opened as it stands
    if (fs::is_directory(path, ignored)) {
        const fs::path inLanguage = path / (helpLanguage ? helpLanguage() : std::string_view()) / "index.html";
        path = fs::exists(inLanguage, ignored) ? inLanguage : path / "index.html";
    }
    const bool isHtml = path.extension() == ".html" || path.extension() == ".htm";
    if (isHtml && !posix::HtmlOpensInBrowser(mEnvironment)) {
        onShowHelp(path.string());
        return;
    }
    try {
        posix::StartDetached({"xdg-open", path.string()}, "");
    } catch (const std::system_error&) {
        return; // nothing is there to open it with
    }
}

std::string Application::OutputPath() const {
    return StateFolder(mEnvironment) + "/build.log";
}

} // namespace tessaly::qt
