// The running program.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/Headers.h"

#include <functional>
#include <string>

namespace tessaly::win32 {

// Opens a help file with what Windows has for its kind: .chm by HTML Help, .hlp by WinHelp, anything else, or where the
// first of these cannot show it, by its file association. Nothing is told of a failure: the user sees that no help
// comes up.
void OpenHelpFile(HWND window, const std::string& path);

class Application final : public tessaly::Application {
public:
    // `loop` tells of changed files.
    explicit Application(EventLoop& loop) : mLoop(loop) {}

    // The window that sent keys go to, and that help is opened for.
    void SetWindow(HWND window) { mWindow = window; }

    // What opens the help.
    std::function<void(HWND window, const std::string& path)> openHelp = OpenHelpFile;

    void SendF1() override;
    void StartProcess(const std::string& line, std::int32_t windowStyle) override;
    std::string OutputPath(const std::string& cFile) const override { return cFile + ".log"; }
    void Follow(const std::string& path) override;

private:
    void ShowHelp() override { openHelp(mWindow, helpFile); }

    EventLoop& mLoop;
    HWND mWindow = nullptr;
};

} // namespace tessaly::win32
