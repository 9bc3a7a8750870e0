// The running program: what it was started with, and what it asks the system for.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/system/Environment.h"

#include <functional>
#include <string>
#include <string_view>

namespace tessaly::qt {

class Application final : public tessaly::Application {
public:
    Application(std::string commandLine, Environment environment);

    std::string CommandLine() const override { return mCommandLine; }
    std::int32_t Major() const override { return TESSALY_MAJOR; }
    std::int32_t Minor() const override { return TESSALY_MINOR; }
    std::int32_t Revision() const override { return TESSALY_REVISION; }
    std::string Title() const override { return "Tessaly"; }
    void SetHelpFile(std::string_view path) override { mHelpFile = path; }
    void SendF1() override;

    // The command line is split without a shell, as SplitCommandLine tells. The window style means nothing here: a
    // process has no window of its own. What it writes goes to the file OutputPath().
    void StartProcess(const std::string& commandLine, std::int32_t windowStyle) override;

    // What the key F1 does: opens the help file with whatever the system opens such files with. Where it is a folder,
    // the file index.html in it or in the folder below it that `helpLanguage` names. HTML that the system would open
    // with something else than a browser, such as an editor, goes to `onShowHelp`.
    void OpenHelp();

    // build.log in the folder for the user's state.
    std::string OutputPath() const;

    std::function<std::string_view()> helpLanguage; // "" or the name of a folder
    std::function<void()> onSendF1;
    std::function<void(const std::string& path)> onShowHelp;
    std::function<void(const std::string& path)> onOutput; // what a process writes goes to this file from now on
    std::function<void(const std::string& commandLine, std::int32_t windowStyle)> onStarted;
    std::function<void(const std::string& path)> onHelpOpened;

private:
    std::string mCommandLine;
    Environment mEnvironment;
    std::string mHelpFile;
};

} // namespace tessaly::qt
