// Programs are started by the system's own means, so none of this needs Qt.
#include "platform/desktop/qt/Application.h"

#include "platform/system/UserFolders.h"
#include "platform/system/posix/Browser.h"
#include "platform/system/posix/DetachedProcess.h"
#include "platform/system/posix/Process.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tessaly {

namespace fs = std::filesystem;

QtApplication::QtApplication(std::string commandLine, Environment environment)
    : mCommandLine(std::move(commandLine)),
      mEnvironment(std::move(environment)) {}

void QtApplication::SendF1() {
    if (onSendF1) {
        onSendF1();
    }
}

void QtApplication::StartProcess(const std::string& commandLine, std::int32_t windowStyle) {
    std::error_code noFolder;
    fs::create_directories(fs::path(OutputPath()).parent_path(), noFolder);
    StartDetached(SplitCommandLine(commandLine, IsRegularFile), noFolder ? std::string() : OutputPath());
    if (onOutput && !noFolder) {
        onOutput(OutputPath());
    }
    if (onStarted) {
        onStarted(commandLine, windowStyle);
    }
}

void QtApplication::OpenHelp() {
    if (mHelpFile.empty()) {
        return;
    }
    fs::path path(mHelpFile);
    std::error_code ignored; // what cannot be looked at is opened as it stands
    if (fs::is_directory(path, ignored)) {
        const fs::path inLanguage = path / (helpLanguage ? helpLanguage() : std::string()) / "index.html";
        path = fs::exists(inLanguage, ignored) ? inLanguage : path / "index.html";
    }
    const bool isHtml = path.extension() == ".html" || path.extension() == ".htm";
    try {
        if (isHtml && onShowHelp && !HtmlOpensInBrowser(mEnvironment)) {
            onShowHelp(path.string());
        } else {
            StartDetached({"xdg-open", path.string()}, "");
        }
    } catch (const std::system_error&) {
        return; // nothing is there to open it with
    }
    if (onHelpOpened) {
        onHelpOpened(path.string());
    }
}

std::string QtApplication::OutputPath() const {
    return StateFolder(mEnvironment) + "/build.log";
}

} // namespace tessaly
