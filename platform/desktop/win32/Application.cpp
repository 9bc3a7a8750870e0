// HTML Help is loaded when it is needed: few start-ups of the program ever do.
#include "platform/desktop/win32/Application.h"

#include "platform/desktop/Raise.h"
#include "platform/system/Process.h"
#include "platform/system/win32/Library.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <string_view>

namespace tessaly::win32 {

namespace {

// The command of HtmlHelp that shows the first topic.
constexpr UINT DisplayTopic = 0;

bool HasExtension(std::wstring_view path, std::wstring_view extension) {
    return path.size() >= extension.size() &&
           CompareStringOrdinal(path.data() + (path.size() - extension.size()), static_cast<int>(extension.size()),
                                extension.data(), static_cast<int>(extension.size()), TRUE) == CSTR_EQUAL;
}

bool OpenHtmlHelp(HWND window, const std::wstring& path) {
    using HtmlHelp = HWND(WINAPI*)(HWND, const wchar_t*, UINT, DWORD_PTR);
    try {
        // It stays loaded: its window lives on in this process.
        const auto open = LibraryFunction<HtmlHelp>(L"hhctrl.ocx", "HtmlHelpW");
        return open(window, path.c_str(), DisplayTopic, 0) != nullptr;
    } catch (const std::system_error&) {
        return false; // not installed
    }
}

} // namespace

void OpenHelpFile(HWND window, const std::string& path) {
    const std::wstring widePath = ToWide(path);
    if (HasExtension(widePath, L".chm") && OpenHtmlHelp(window, widePath)) {
        return;
    }
    if (HasExtension(widePath, L".hlp") && WinHelpW(window, widePath.c_str(), HELP_FINDER, 0) != 0) {
        return;
    }
    const auto open = LibraryFunction<decltype(&ShellExecuteW)>(L"shell32.dll", "ShellExecuteW");
    open(window, nullptr, widePath.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

// To this program alone, and not as input of the system: that would go to whatever program is in front.
void Application::SendF1() {
    HWND focus = GetFocus();
    HWND target = focus != nullptr && IsChild(mWindow, focus) != 0 ? focus : mWindow;
    constexpr LPARAM released = (static_cast<LPARAM>(3) << 30) | 1;
    PostMessageW(target, WM_KEYDOWN, VK_F1, 1);
    PostMessageW(target, WM_KEYUP, VK_F1, static_cast<LPARAM>(static_cast<LONG>(released)));
}

void Application::StartProcess(const std::string& line, std::int32_t windowStyle) {
    tessaly::StartProcess(line, windowStyle);
}

// Its folder is watched: Windows does not watch single files.
void Application::Follow(const std::string& path) {
    const std::size_t end = path.find_last_of("\\/");
    mLoop.Watch(path.empty()               ? ""
                : end == std::string::npos ? "."
                                           : path.substr(0, end + 1),
                [this] { Raise(onFollowed); });
}

} // namespace tessaly::win32
