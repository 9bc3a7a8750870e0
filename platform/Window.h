// The main window as a frame: its caption, size, icon, keys, and its end.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

// Key codes of the function keys, as Windows' virtual-key codes have them.
inline constexpr int KeyF1 = 112;
inline constexpr int KeyF2 = 113;
inline constexpr int KeyF3 = 114;
inline constexpr int KeyF4 = 115;
inline constexpr int KeyF5 = 116;
inline constexpr int KeyF10 = 121;

class Window {
public:
    // Raised once, before the window is shown for the first time.
    std::function<void()> onLoad;

    // Raised after the size has changed. A window that is minimised keeps its size.
    std::function<void()> onResize;

    // Raised for every key pressed in the window, before the control with the focus gets it, which it does in any
    // case. `shift`: 1 Shift, 2 Ctrl, 4 Alt, added up.
    std::function<void(int keyCode, int shift)> onKeyDown;

    // Raised when the user drops a file on the window; with its whole path, and once for each of several files. Not
    // raised while a modal window or dialog is shown.
    std::function<void(const std::string& path)> onFileDropped;

    // Raised once, when the window is about to go, whatever closes it. It goes whatever this does.
    std::function<void()> onUnload;

    virtual ~Window() = default;

    // Shows the window and returns at once.
    virtual void Show() = 0;

    // Closes the window: raises onUnload and ends the program.
    virtual void Unload() = 0;

    virtual std::string Caption() const = 0;
    virtual void SetCaption(std::string_view caption) = 0;

    // The outer size in twips; not rounded on the way.
    virtual float Width() const = 0;
    virtual float Height() const = 0;

    // Takes the icon from a picture file. Throws std::runtime_error when it cannot be loaded; the icon stays.
    virtual void SetIcon(const std::string& path) = 0;
};

} // namespace tessaly
