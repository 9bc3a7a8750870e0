// The running program.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/desktop/win32/Headers.h"

#include <functional>
#include <string>
#include <utility>

namespace tessaly::win32 {

class Application final : public tessaly::Application {
public:
    // What a test may put in place of the system's own.
    struct Settings {
        std::string commandLine;                                // of this program, without its name
        std::function<void(HWND, const std::string&)> openHelp; // opens a help file
    };

    explicit Application(Settings settings) : mSettings(std::move(settings)) {}

    // Where the keys that are sent go, and what help is opened for.
    void SetWindow(HWND window) { mWindow = window; }

    std::string CommandLine() const override { return mSettings.commandLine; }
    std::int32_t Major() const override;
    std::int32_t Minor() const override;
    std::int32_t Revision() const override;
    std::string Title() const override;
    void SetHelpFile(std::string_view path) override { mHelpFile = path; }
    void SendF1() override;
    void StartProcess(const std::string& commandLine, std::int32_t windowStyle) override;

    // What the key F1 does behind the window's own handler.
    void OpenHelp();

private:
    Settings mSettings;
    HWND mWindow = nullptr;
    std::string mHelpFile;
};

} // namespace tessaly::win32
