// The main window. It owns no control; those that stand in it announce themselves.
#pragma once

#include "platform/desktop/Window.h"
#include "platform/desktop/win32/Child.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::win32 {

// Of the keys now: 1 Shift, 2 Ctrl, 4 Alt, added up.
int ShiftState();

// To be called with the message of a key that no window gets, as the program has dealt with it. After one with Alt the
// system has to know that there was one, or it opens the menus when Alt comes up.
void NoteTakenKey(HWND window, UINT message, WPARAM key, LPARAM state);

class Window final : public tessaly::Window, public Parent {
public:
    // Makes the window, which is not shown yet, in a size that suits the screen.
    Window(EventLoop& loop, tessaly::Application& application);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() override;

    void SetCaption(std::string_view caption) override;
    Sizes CurrentSizes() const override;
    void SetMinimumSize(float width, float height) override { mMinimum = {width, height}; }
    void SetIcon(const std::string& path) override;

    // What else happens in the window
    std::function<void(std::size_t)> onMenu;       // the menu item with this number was chosen
    std::function<void()> onLastWord;              // the session ends, and nobody can be asked any more
    std::function<void()> onShow;                  // it is about to be seen
    std::function<void(bool isEnabled)> onEnabled; // something blocks it, or no more

private:
    void ShowFrame() override;
    void CloseFrame() override { DestroyWindow(Handle()); }
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> EndMessage(UINT message, WPARAM wParam);
    bool FrameMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool TakeKey(MSG& message);
    bool ReturnFocus();
    void PutOnScreen(const RECT& expected);
    void SizeChanged(WPARAM kind);
    void DpiChanged(int dpi, const RECT& suggested);
    void LimitSize(MINMAXINFO& limits) const;
    void Dropped(HDROP drop);
    void KeyboardIsBack();

    IconOwner mLargeIcon;
    IconOwner mSmallIcon;
    RECT mClient = {}; // as the controls in it were told last
    Size mSize;
    Size mMinimum;
    bool mIsShown = false;
    bool mIsRescaling = false;
};

} // namespace tessaly::win32
