// Keystrokes in the Windows program.
#include "bench/Keystroke.h"

#include "platform/desktop/win32/Desktop.h"

#include <cstdio>
#include <exception>

// In this order:
// clang-format off
#include <windows.h>
#include <richedit.h>
// clang-format on

namespace {

bool PutCaret(HWND pane, int line) {
    const auto select = [pane](LRESULT chosen) {
        const LRESULT place = SendMessageW(pane, EM_LINEINDEX, static_cast<WPARAM>(chosen), 0);
        SendMessageW(pane, EM_SETSEL, static_cast<WPARAM>(place), place);
        SendMessageW(pane, EM_SCROLLCARET, 0, 0);
    };
    SetFocus(pane);
    select(line);
    const LRESULT first = SendMessageW(pane, EM_GETFIRSTVISIBLELINE, 0, 0) + 1; // the first that is seen whole
    select(first);
    return first > line / 2 && SendMessageW(pane, EM_GETFIRSTVISIBLELINE, 0, 0) == first - 1;
}

void Type(HWND pane, char character) {
    if (character == '\b') {
        SendMessageW(pane, WM_KEYDOWN, VK_BACK, 1);
    } else {
        SendMessageW(pane, WM_CHAR, static_cast<WPARAM>(character), 1);
    }
    UpdateWindow(pane);
}

void Draw(tessaly::win32::EventLoop& loop) {
    MSG next = {};
    loop.RunWhile([&next] { return PeekMessageW(&next, nullptr, 0, 0, PM_NOREMOVE) != 0; }, loop.mainFilter);
}

void Wait(tessaly::win32::EventLoop& loop, int milliseconds) {
    const DWORD start = GetTickCount();
    const auto rest = static_cast<DWORD>(milliseconds);
    for (DWORD passed = 0; passed < rest; passed = GetTickCount() - start) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, rest - passed, QS_ALLINPUT);
        Draw(loop);
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        tessaly::win32::Desktop desktop;
        HWND pane = FindWindowExW(FindWindowW(L"VornMainFrm", nullptr), nullptr, MSFTEDIT_CLASS, nullptr);
        const tessaly::bench::Typist typist{[&](int line) { return PutCaret(pane, line); },
                                            [&](char key) { Type(pane, key); }, [&] { Draw(desktop.Loop()); },
                                            [&](int milliseconds) { Wait(desktop.Loop(), milliseconds); }};
        if (count > 2) {
            AddFunctions(desktop, typist, arguments[1]);
        } else if (count > 1) {
            TypeWithCopies(desktop, typist, arguments[1]);
        } else {
            TypeKeystrokes(desktop, typist);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "keystroke: %s\n", error.what());
        return 1;
    }
    return 0;
}
