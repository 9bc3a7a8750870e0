// What every control of a window has in common: its window, its place, and the messages that concern it.
#pragma once

#include "platform/desktop/FocusEvents.h"
#include "platform/desktop/Window.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Screen.h"

#include <functional>
#include <limits>
#include <optional>
#include <string_view>

namespace tessaly::win32 {

class Child;

// The window that controls stand in.
class Parent {
public:
    virtual ~Parent() = default;

    virtual HWND Handle() const = 0;
    virtual int Dpi() const = 0;
    virtual HFONT Font() const = 0;

    // Where the footer of the window begins, in twips from the top of its client area.
    virtual float FooterTop() const { return std::numeric_limits<float>::max(); }

    // A control comes; it is told of the messages about it from now on. They stand in the order of the Tab key.
    virtual void Add(Child& child) = 0;
    virtual void Remove(Child& child) = 0;

    // See EventLoop.
    virtual void Later(std::function<void()> action) = 0;

    // Where the keyboard is among the controls, and which commands run.
    FocusEvents focus;
};

class Child : public FocusTarget {
public:
    struct Kind {
        const wchar_t* windowClass = nullptr;
        DWORD style = 0; // beside WS_CHILD and WS_VISIBLE
        DWORD extendedStyle = 0;
        int id = 0;
        std::wstring_view text = {};
    };

    Child(Parent& parent, const Kind& kind);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() override;

    // Null when the window around it is gone.
    HWND Handle() const { return mHandle; }

    Extent Place() const;
    void SetPlace(const Extent& extent);

    // Puts it on the screen where the program has placed it.
    void Move();

    // Whether the program has given it a place; else the window may choose one.
    bool IsPlaced() const { return mExtent.has_value(); }

    // Whether the Tab key stops at it in the main window, where no style says so; at first it does.
    bool IsTabStop() const { return mIsTabStop; }

    // Focus
    virtual bool CanHaveFocus() const { return false; }
    virtual bool TakesTabKey() const { return false; }
    void TakeFocus(); // throws std::runtime_error

    // A WM_COMMAND or WM_NOTIFY of this control. What a notification returns is 0 unless said otherwise.
    virtual void Command(int /*id*/, int /*code*/) {}
    virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }

    // The window around it has another resolution, or the user has chosen other colours or fonts.
    virtual void Rescale();
    virtual void ColoursChanged() {}

protected:
    Parent& ParentWindow() const { return mParent; }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(mHandle, message, wParam, lParam);
    }

    // Every message to the control. What is not for the override goes to Default.
    virtual LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

    void SetIsTabStop(bool stop) { mIsTabStop = stop; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void ShowFocus(UINT message);

    Parent& mParent;
    HWND mHandle = nullptr;
    WNDPROC mBase = nullptr; // of the control itself
    std::optional<Extent> mExtent;
    bool mIsTabStop = true;
    bool mHasKeyboard = false;
};

} // namespace tessaly::win32
