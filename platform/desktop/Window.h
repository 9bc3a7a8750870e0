// The main window as a frame: its caption, size, icon, keys, and its end.
#pragma once

#include "platform/desktop/Application.h"
#include "platform/desktop/Control.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

// Key codes, as Windows' virtual-key codes have them. Letters have the codes of their ASCII capitals.
inline constexpr int KeyBackspace = 8;
inline constexpr int KeyTab = 9;
inline constexpr int KeyEnter = 13;
inline constexpr int KeyEscape = 27;
inline constexpr int KeyBlank = 32;
inline constexpr int KeyPageUp = 33;
inline constexpr int KeyPageDown = 34;
inline constexpr int KeyEnd = 35;
inline constexpr int KeyLeft = 37;
inline constexpr int KeyUp = 38;
inline constexpr int KeyDown = 40;
inline constexpr int KeyDelete = 46;
inline constexpr int KeyMenu = 93;
inline constexpr int KeyDigit0 = 96; // these, among the digits
inline constexpr int KeyAdd = 107;
inline constexpr int KeySubtract = 109;
inline constexpr int KeyDivide = 111;
inline constexpr int KeyF1 = 112;
inline constexpr int KeyF2 = 113;
inline constexpr int KeyF3 = 114;
inline constexpr int KeyF4 = 115;
inline constexpr int KeyF5 = 116;
inline constexpr int KeyF10 = 121;
inline constexpr int KeyPlus = 187;
inline constexpr int KeyMinus = 189;
inline constexpr int KeySlash = 191;

// Whether a key only goes with others or locks: Shift, Ctrl, Alt, the locks, the Windows keys, and each of two alike.
constexpr bool IsModifierKey(int keyCode) {
    const auto isIn = [keyCode](int first, int last) { return keyCode >= first && keyCode <= last; };
    return isIn(16, 18) || keyCode == 20 || isIn(91, 92) || isIn(144, 145) || isIn(160, 165);
}

// The first outer size of a window, in twips, on a screen with `room`: most of that, but not more than can be used
// well.
inline Size FirstSize(const Size& room) {
    constexpr float part = 0.85F;
    constexpr float largestWidth = 21000;
    constexpr float largestHeight = 13500;
    return {std::min(room.width * part, largestWidth), std::min(room.height * part, largestHeight)};
}

class Window {
public:
    explicit Window(Application& application) : mApplication(application) {}
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    // Raised once, before the window is shown for the first time.
    std::function<void()> onLoad;

    // Raised after the size has changed. A window that is minimised keeps its size.
    std::function<void()> onResize;

    // Raised for every key pressed in the window, before the control with the focus gets it; and for keys of the
    // messages window. `shift`: 1 Shift, 2 Ctrl, 4 Alt, added up.
    std::function<void(int keyCode, int shift)> onKeyDown;

    // Asked of every such key behind onKeyDown. True for one that is the window's alone: then no control gets it.
    std::function<bool(int keyCode, int shift)> onOwnKey;

    // Raised when the user drops a file on the window; with its whole path, and once for each of several files. Not
    // raised while a modal window or dialog is shown.
    std::function<void(const std::string& path)> onFileDropped;

    // Raised once, when the window is about to go, whatever closes it, and also when somebody else destroys it. It goes
    // whatever this does. At the end of the session it is raised before the program agrees. The window is gone even if
    // the session goes on after all. A session that ends without leave has no time for a user: no message box is shown
    // any more, and each has the AnswerOfNobody.
    std::function<void()> onUnload;

    // Raised when all that waited for the window is done and shown, before the program waits for more. While a dialog
    // is open it may not be.
    std::function<void()> onIdle;

    // Raised when the user goes to another program, and when this one may soon end without onUnload: by a signal, with
    // the display or at the end of the session. What is to outlive it must be on the disk when this returns.
    std::function<void()> onSuspend;

    // For the messages window: this one stands elsewhere, or has another size.
    std::function<void()> onMoved;

    // Those that stand in the window.
    Controls controls;

    // Shows the window and returns at once.
    void Show();

    // Closes the window: raises onUnload and ends the program.
    void Unload();

    // Raises onSuspend, also while onUnload still asks its user, but not when that is done.
    void Suspend();

    virtual void SetCaption(std::string_view caption) = 0;

    // In twips: the outer size, not rounded on the way, and the area for the controls: inside the frame and below the
    // menu bar, as it is while the window is shown.
    struct Sizes {
        Size outer;
        Size client;
    };
    virtual Sizes CurrentSizes() const = 0;
    float Width() const { return CurrentSizes().outer.width; }
    float Height() const { return CurrentSizes().outer.height; }
    float ClientWidth() const { return CurrentSizes().client.width; }
    float ClientHeight() const { return CurrentSizes().client.height; }

    // The user cannot make the window smaller than this outer size, in twips. It is 0 at first.
    virtual void SetMinimumSize(float width, float height) = 0;

    // Keeps the lowest `height` twips of the client area free of controls: those that begin above it end there. It is 0
    // at first.
    void SetFooter(float height);
    float Footer() const { return mFooter; }

    // Keeps as much above the footer free as well.
    void MakeRoom(float height);

    // Takes the icon from a picture file. Throws std::runtime_error when it cannot be loaded; the icon stays.
    virtual void SetIcon(const std::string& path) = 0;

    bool HasEnded() const { return mIsClosed; }

    // A key was pressed, here or in the messages window. True when no control is to get it.
    bool TellKey(int keyCode, int shift);

protected:
    virtual void ShowFrame() = 0;

    // Takes the window away and ends the program.
    virtual void CloseFrame() = 0;

    // The client area has this size now, or the window stands elsewhere.
    void LayOut(const Size& client);

    // Raises onUnload if it has not been yet. Returns whether it did: then the window is to go.
    bool Leave();

    // Raises onIdle, as long as the window is not about to go.
    void TellIdle();

    void TellDrop(const std::string& path);

    Application& mApplication;

private:
    Size mClient;
    float mFooter = 0;
    float mRoom = 0; // above the footer
    bool mIsLoaded = false;
    bool mIsClosed = false;
    bool mIsUnloaded = false;
};

} // namespace tessaly
