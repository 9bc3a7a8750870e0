// The common part of all controls: window, position, and their messages.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/Raise.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/Parent.h"
#include "platform/desktop/win32/Screen.h"

#include <optional>
#include <string_view>

namespace tessaly::win32 {

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

    // Every message to the control. What is not for the override goes to Default.
    virtual LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool TakesMenuMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void ShowFocus(UINT message);

    Parent& mParent;
    tessaly::Control& mControl;
    HWND mHandle = nullptr;
    WNDPROC mBase = nullptr; // of the control itself
    bool mHasKeyboard = false;
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
    void ShowVisible(bool visible) override { ShowWindow(Handle(), visible ? SW_SHOWNA : SW_HIDE); }
};

// A control of one of the small windows that nobody reaches but the window itself.
class Part final : public Control<tessaly::Control> {
public:
    using Control::Control;
};

} // namespace tessaly::win32
