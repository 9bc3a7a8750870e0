// Programs are started by the system's own means, so none of this needs Qt.
#include "platform/desktop/qt/Application.h"

#include "platform/system/UserFolders.h"
#include "platform/system/posix/Browser.h"
#include "platform/system/posix/Process.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tessaly::qt {

namespace fs = std::filesystem;

Application::Application(std::string commandLine, Environment environment)
    : mCommandLine(std::move(commandLine)),
      mEnvironment(std::move(environment)) {}

void Application::SendF1() {
    if (onSendF1) {
        onSendF1();
    }
}

void Application::StartProcess(const std::string& commandLine, std::int32_t windowStyle) {
    std::error_code noFolder;
    fs::create_directories(fs::path(OutputPath()).parent_path(), noFolder);
    tessaly::StartProcess(commandLine, windowStyle, noFolder ? std::string() : OutputPath());
    if (onOutput && !noFolder) {
        onOutput(OutputPath());
    }
    if (onStarted) {
        onStarted(commandLine, windowStyle);
    }
}

void Application::OpenHelp() {
    if (mHelpFile.empty()) {
        return;
    }
    fs::path path(mHelpFile);
    std::error_code ignored; // what cannot be looked at is opened as it stands
    if (fs::is_directory(path, ignored)) {
        const fs::path inLanguage = path / (helpLanguage ? helpLanguage() : std::string_view()) / "index.html";
        path = fs::exists(inLanguage, ignored) ? inLanguage : path / "index.html";
    }
    const bool isHtml = path.extension() == ".html" || path.extension() == ".htm";
    try {
        if (isHtml && onShowHelp && !posix::HtmlOpensInBrowser(mEnvironment)) {
            onShowHelp(path.string());
        } else {
            posix::StartDetached({"xdg-open", path.string()}, "");
        }
    } catch (const std::system_error&) {
        return; // nothing is there to open it with
    }
    if (onHelpOpened) {
        onHelpOpened(path.string());
    }
}

std::string Application::OutputPath() const {
    return StateFolder(mEnvironment) + "/build.log";
}

} // namespace tessaly::qt
