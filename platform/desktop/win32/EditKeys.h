// What the keys that are down mean in a control that edits plain text.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <array>

namespace tessaly::win32 {

bool IsDown(int key);
bool IsControlAlone();

// Of a key that is pressed now: whether it pastes or formats.
bool IsPasteKey(WPARAM key);
bool IsFormattingKey(WPARAM key);

// The code of a key for the program. Keyboards have the slash, which has a code of its own there, on many keys.
int KeyCodeOf(WPARAM key);

// To be called with the message of a key that no window gets, as the program has dealt with it. After one with Alt the
// system has to know that there was one, or it opens the menus when Alt comes up.
void NoteTakenKey(HWND window, UINT message, WPARAM key, LPARAM state);

// Lets the control see the Shift key as not pressed, as long as it lives.
class WithoutShift {
public:
    WithoutShift() {
        GetKeyboardState(mBefore.data());
        std::array<BYTE, 256> keys = mBefore;
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys.data());
    }
    WithoutShift(const WithoutShift&) = delete;
    WithoutShift& operator=(const WithoutShift&) = delete;
    ~WithoutShift() { SetKeyboardState(mBefore.data()); }

private:
    std::array<BYTE, 256> mBefore = {};
};

} // namespace tessaly::win32
