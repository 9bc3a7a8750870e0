// A rich edit control has keys for formats, too, which a plain text has no use for.
#include "platform/desktop/win32/EditKeys.h"

#include "platform/desktop/Window.h"

#include <string_view>

namespace tessaly::win32 {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

bool IsControlAlone() {
    return IsDown(VK_CONTROL) && !IsDown(VK_MENU);
}

bool IsPasteKey(WPARAM key) {
    return (key == 'V' && IsControlAlone() && !IsDown(VK_SHIFT)) ||
           (key == VK_INSERT && IsDown(VK_SHIFT) && !IsDown(VK_CONTROL));
}

// With Ctrl the control has many keys that format text. Only those that edit are left to it.
bool IsFormattingKey(WPARAM key) {
    constexpr std::wstring_view editing = L"ACVXYZ";
    const bool isLetterOrDigit = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
    const bool isSign = key >= VK_OEM_1 && key <= VK_OEM_102;
    return IsControlAlone() &&
           (isSign || (isLetterOrDigit && editing.find(static_cast<wchar_t>(key)) == std::wstring_view::npos));
}

int KeyCodeOf(WPARAM key) {
    const SHORT slash = VkKeyScanW(L'/');
    const bool needsShift = (HIBYTE(slash) & 1) != 0;
    if (LOBYTE(slash) == key && (!needsShift || IsDown(VK_SHIFT))) {
        return KeySlash;
    }
    constexpr int none = 0xFF;
    return key == KeySlash ? none : static_cast<int>(key);
}

void NoteTakenKey(HWND window, UINT message, WPARAM key, LPARAM state) {
    if (message == WM_SYSKEYDOWN && (HIWORD(state) & KF_ALTDOWN) != 0) {
        DefWindowProcW(window, message, key, state);
    }
}

} // namespace tessaly::win32
