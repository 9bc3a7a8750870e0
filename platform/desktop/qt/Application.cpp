// Programs are started by the system's own means. Qt only tells of changed files.
#include "platform/desktop/qt/Application.h"

#include "platform/desktop/Raise.h"
#include "platform/desktop/qt/Text.h"
#include "platform/system/PrivateFiles.h"
#include "platform/system/UserFolders.h"
#include "platform/system/posix/Browser.h"
#include "platform/system/posix/Process.h"

#include <QFileInfo>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace tessaly::qt {

namespace fs = std::filesystem;

Application::Application(Environment environment) : mEnvironment(std::move(environment)) {
    QObject::connect(&mWatcher, &QFileSystemWatcher::fileChanged, &mWatcher, [this] { ToldOfChange(); });
    QObject::connect(&mWatcher, &QFileSystemWatcher::directoryChanged, &mWatcher, [this] { ToldOfChange(); });
}

void Application::StartProcess(const std::string& line, std::int32_t windowStyle) {
    tessaly::StartProcess(line, windowStyle, OutputPath(""));
}

std::string Application::OutputPath(const std::string& /*cFile*/) const {
    const std::string state = StateFolder(mEnvironment);
    const std::string temporary = RecoveryFolders(mEnvironment).back();
    std::error_code error;
    fs::create_directories(state, error);
    if (!error && ::access(state.c_str(), W_OK | X_OK) == 0) {
        return state + "/build.log";
    }
    return SystemPrivateFiles().MakeFolder(temporary) ? "" : temporary + "/build.log";
}

// The folder tells when the file comes, which may be another one of this name.
void Application::Follow(const std::string& path) {
    if (!mFollowed.isEmpty()) {
        mWatcher.removePaths(mWatcher.files() + mWatcher.directories());
    }
    mFollowed = ToQt(path);
    if (!mFollowed.isEmpty()) {
        mWatcher.addPath(QFileInfo(mFollowed).path());
        mWatcher.addPath(mFollowed);
    }
}

void Application::ToldOfChange() {
    if (!mWatcher.files().contains(mFollowed) && QFileInfo::exists(mFollowed)) {
        mWatcher.addPath(mFollowed);
    }
    Raise(onFollowed);
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

} // namespace tessaly::qt
