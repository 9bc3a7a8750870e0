#include "platform/desktop/win32/Application.h"

#include "platform/system/Process.h"

namespace tessaly::win32 {

std::int32_t Application::Major() const {
    return TESSALY_MAJOR;
}

std::int32_t Application::Minor() const {
    return TESSALY_MINOR;
}

std::int32_t Application::Revision() const {
    return TESSALY_REVISION;
}

std::string Application::Title() const {
    return "Tessaly";
}

// To this program alone, and not as input of the system: that would go to whatever program is in front.
void Application::SendF1() {
    HWND focus = GetFocus();
    HWND target = focus != nullptr && IsChild(mWindow, focus) != 0 ? focus : mWindow;
    constexpr LPARAM released = (static_cast<LPARAM>(3) << 30) | 1;
    PostMessageW(target, WM_KEYDOWN, VK_F1, 1);
    PostMessageW(target, WM_KEYUP, VK_F1, static_cast<LPARAM>(static_cast<LONG>(released)));
}

void Application::StartProcess(const std::string& commandLine, std::int32_t windowStyle) {
    tessaly::StartProcess(commandLine, windowStyle);
}

void Application::OpenHelp() {
    if (!mHelpFile.empty()) {
        mSettings.openHelp(mWindow, mHelpFile);
    }
}

} // namespace tessaly::win32
