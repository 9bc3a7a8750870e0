// A window of the program: its resolution, its font, and the controls that stand in it.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/Headers.h"

#include <functional>
#include <vector>

namespace tessaly::win32 {

class Child;

class Parent {
public:
    Parent(EventLoop& theLoop, Controls& inIt) : loop(theLoop), order(inIt) {}
    Parent(const Parent&) = delete;
    Parent& operator=(const Parent&) = delete;
    virtual ~Parent();

    EventLoop& loop;
    Controls& order; // of its controls

    // Null when the window is gone.
    HWND Handle() const { return mHandle; }
    int Dpi() const { return mDpi; }
    HFONT Font() const { return mFont.get(); }

    // A control comes; it is told of the messages about it from now on.
    void Add(Child& child) { mChildren.push_back(&child); }
    void Remove(Child& child) { std::erase(mChildren, &child); }

    // See EventLoop.
    void Later(std::function<void()> action);

protected:
    // Makes the window, which is not shown yet. All of the class `className` have the program's icon, an arrow and the
    // colour of dialogs.
    void Create(const wchar_t* className, DWORD style, DWORD extendedStyle, SIZE size, HWND owner);

    // Every message to the window. It finds this object from the first one on.
    virtual LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    // The window has another resolution: the font and the controls follow.
    void SetDpi(int dpi);

    Child* ChildOf(HWND window) const;
    const std::vector<Child*>& Children() const { return mChildren; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND mHandle = nullptr;
    int mDpi = 96;
    FontOwner mFont;
    std::vector<Child*> mChildren;
};

} // namespace tessaly::win32
