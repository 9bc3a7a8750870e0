// Types into a pane with 10,000 lines in a real window. Prints for each keystroke how many lines change their colours,
// "one" or "all" in view, and the milliseconds until the pane is drawn. A comment is opened in front of all that is
// seen and closed again: no keystroke changes more colours.
#include "platform/desktop/win32/Desktop.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>

// In this order:
// clang-format off
#include <windows.h>
#include <richedit.h>
// clang-format on

namespace {

constexpr int Lines = 10000;
constexpr int Rounds = 30;
constexpr DWORD Rest = 200; // milliseconds between two keys, as quick typists leave

std::string Program() {
    std::string text;
    for (int line = 0; line < Lines; ++line) {
        text +=
            "    total += samples[" + std::to_string(line) + "] * 0x1F; // step \"" + std::to_string(line) + "\"\r\n";
    }
    return text;
}

struct Key {
    UINT message;
    WPARAM code;
    const char* changed;
};

constexpr std::array<Key, 6> Keys = {{
    {WM_CHAR, L'/', "one"},
    {WM_CHAR, L'*', "all"},
    {WM_CHAR, L'a', "one"},
    {WM_KEYDOWN, VK_BACK, "one"},
    {WM_KEYDOWN, VK_BACK, "all"},
    {WM_KEYDOWN, VK_BACK, "one"},
}};

// The whole way of a key: the text changes, its colours are made anew and it is drawn.
double Type(HWND pane, const Key& key) {
    const auto start = std::chrono::steady_clock::now();
    SendMessageW(pane, key.message, key.code, 1);
    UpdateWindow(pane);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// What a keystroke leaves to be done later is done meanwhile.
void Wait(tessaly::win32::EventLoop& loop) {
    const DWORD start = GetTickCount();
    for (DWORD passed = 0; passed < Rest; passed = GetTickCount() - start) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, Rest - passed, QS_ALLINPUT);
        loop.RunWaiting();
    }
}

void TypeAll(HWND pane, tessaly::win32::Desktop& desktop) {
    int changes = 0;
    desktop.FuncBody().onChange = [&changes] { ++changes; };
    for (int round = 0; round < Rounds; ++round) {
        for (const Key& key : Keys) {
            std::printf("%s %.3f\n", key.changed, Type(pane, key));
            Wait(desktop.Loop());
        }
    }
    if (changes != Rounds * static_cast<int>(Keys.size())) {
        throw std::runtime_error("the keys did not change the text");
    }
}

// Puts the caret into the middle of the text and into the first line in view. So all lines in view follow it.
void PutCaret(HWND pane) {
    const auto select = [pane](LRESULT line) {
        const LRESULT place = SendMessageW(pane, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
        SendMessageW(pane, EM_SETSEL, static_cast<WPARAM>(place), place);
    };
    select(Lines / 2);
    SendMessageW(pane, EM_SCROLLCARET, 0, 0);
    const LRESULT first = SendMessageW(pane, EM_GETFIRSTVISIBLELINE, 0, 0) + 1; // the first that is seen whole
    select(first);
    SendMessageW(pane, EM_SCROLLCARET, 0, 0);
    if (first < Lines / 4 || SendMessageW(pane, EM_GETFIRSTVISIBLELINE, 0, 0) != first - 1) {
        throw std::runtime_error("the caret is not where it should be");
    }
}

void Run() {
    tessaly::win32::Desktop desktop;
    desktop.FuncBody().SetExtent({4000, 900, 9000, 6500});
    desktop.MainWindow().Show();
    desktop.FuncBody().SetFuncBodyAvailable(true);
    desktop.FuncBody().SetText(Program());
    HWND pane = FindWindowExW(desktop.Frame().Handle(), nullptr, MSFTEDIT_CLASS, nullptr);
    SetFocus(pane);
    PutCaret(pane);
    desktop.Loop().RunWaiting();
    UpdateWindow(pane);
    TypeAll(pane, desktop);
}

} // namespace

int main() {
    try {
        Run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "keystroke: %s\n", error.what());
        return 1;
    }
    return 0;
}
