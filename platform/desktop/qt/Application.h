// The running program: its command line, and its requests to the system.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/system/Environment.h"

#include <QFileSystemWatcher>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly::qt {

class Application final : public tessaly::Application {
public:
    explicit Application(Environment environment);

    void SendF1() override { onSendF1(); }

    // The command line is split without a shell, as SplitCommandLine tells. The window style means nothing here: a
    // process has no window of its own. What it writes goes to the file OutputPath(), or nowhere.
    void StartProcess(const std::string& line, std::int32_t windowStyle) override;

    // build.log in the folder for the user's state, or else in one for temporary files that is the user's alone.
    std::string OutputPath(const std::string& cFile) const override;

    void Follow(const std::string& path) override;

    std::function<std::string_view()> helpLanguage; // "" or the name of a folder
    std::function<void()> onSendF1;
    std::function<void(const std::string& path)> onShowHelp;

private:
    // Opens the help file with whatever the system opens such files with. If that is a folder, it opens index.html in
    // its folder `helpLanguage`, or else in itself. HTML that the system would open with something else than a browser,
    // such as an editor, goes to `onShowHelp`.
    void ShowHelp() override;

    void ToldOfChange();

    Environment mEnvironment;
    QFileSystemWatcher mWatcher;
    QString mFollowed;
};

} // namespace tessaly::qt
