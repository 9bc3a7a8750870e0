// A window of the program, and the common part of all controls in it: resolution, font, position, and their messages.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/Raise.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Screen.h"

#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

class Child;

// The controls that stand in it announce themselves.
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

// A control of it.
class Child {
public:
    struct Kind {
        const wchar_t* windowClass = nullptr;
        DWORD style = 0; // beside WS_CHILD and WS_VISIBLE
        DWORD extendedStyle = 0;
        int id = 0;
        std::wstring_view text = {};
    };

    // `control` is what the program knows it as.
    Child(Parent& parent, const Kind& kind, tessaly::Control& control);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    virtual ~Child();

    // Null when the window around it is gone.
    HWND Handle() const { return mHandle; }

    tessaly::Control& AsControl() const { return mControl; }

    virtual bool TakesTabKey() const { return false; }

    // Whether the user can ask for a menu of the program here; and where it comes up on the screen when he does so by a
    // key, no value for no menu now.
    virtual bool HasMenu() const { return false; }
    virtual std::optional<POINT> MenuPlace() const { return std::nullopt; }

    // A WM_COMMAND or WM_NOTIFY of this control. What a notification returns is 0 unless said otherwise.
    virtual void Command(int /*id*/, int /*code*/) {}
    virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }

    // The window around it has another resolution, or the user has chosen other colours or fonts.
    virtual void Rescale();
    virtual void ColoursChanged() {}

protected:
    void Place(const Extent& place); // in twips of the client area of its window
    float ShownHeight() const;

    // On the screen, the place of the client area that is nearest to `wanted` in it.
    POINT NearestPlace(POINT wanted) const;

    Parent& ParentWindow() const { return mParent; }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(mHandle, message, wParam, lParam);
    }

    // Until the program takes its next message nothing of the control is drawn. Then all of it is, and its edge if a
    // scroll bar looks different. Else the control would draw bars at each step, which takes long on some systems.
    void HoldDrawing();
    virtual void DrawAgain();

    // Every message to the control. What is not for the override goes to Default.
    virtual LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

private:
    using Bars = std::array<SCROLLBARINFO, 2>; // the one across and the upright one

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    Bars ScrollBars() const;
    void DrawThumb(const SCROLLBARINFO& bar, bool isUpright) const;
    bool TakesMenuMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void ShowFocus(UINT message);

    Parent& mParent;
    tessaly::Control& mControl;
    HWND mHandle = nullptr;
    WNDPROC mBase = nullptr; // of the control itself
    bool mHasKeyboard = false;
    bool mIsHeld = false;           // its drawing
    std::optional<Bars> mDrawnBars; // before that, if it is to be seen
};

// The same, put on top of an interface.
template <class Interface>
class Control : public Interface, public Child {
public:
    template <class... Arguments>
    Control(Parent& parent, const Kind& kind, Arguments... arguments)
        : Interface(parent.order, arguments...),
          Child(parent, kind, *this) {}

    void TakeKeyboard() override { ::SetFocus(Handle()); }

protected:
    void Show(const Extent& place) override { Place(place); }
    void ShowVisible(bool visible) override {
        DrawAgain();
        ShowWindow(Handle(), visible ? SW_SHOWNA : SW_HIDE);
    }
};

// A control of one of the small windows that nobody reaches but the window itself.
class Part final : public Control<tessaly::Control> {
public:
    using Control::Control;
};

class Label final : public Control<tessaly::Label> {
public:
    Label(Parent& parent, int id);

    void SetCaption(std::string_view caption) override;
    Size PreferredSize() const override;

    // The caption is also the text of `control`, which shows none: it names the control for a screen reader. Others get
    // their name from the label in front of them.
    void SetNamed(HWND control) { mNamed = control; }

private:
    HWND mNamed = nullptr;
};

} // namespace tessaly::win32
