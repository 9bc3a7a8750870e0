// The main window. It owns no control; those that stand in it announce themselves.
#pragma once

#include "platform/desktop/Window.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/EventLoop.h"
#include "platform/desktop/win32/Focus.h"
#include "platform/desktop/win32/Headers.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tessaly::win32 {

class Window final : public tessaly::Window, public Parent {
public:
    // Makes the window, which is not shown yet, in a size that suits the screen.
    explicit Window(EventLoop& loop);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() override;

    // Window
    void Show() override;
    void Unload() override;
    std::string Caption() const override { return mCaption; }
    void SetCaption(std::string_view caption) override;
    float Width() const override { return mWidth; }
    float Height() const override { return mHeight; }
    float ClientWidth() const override;
    float ClientHeight() const override;
    void SetMinimumSize(float width, float height) override;
    void SetFooter(float height) override;
    void SetIcon(const std::string& path) override;

    // Parent
    HWND Handle() const override { return mHandle; }
    int Dpi() const override { return mDpi; }
    HFONT Font() const override { return mFont.get(); }
    float FooterTop() const override { return ToTwips(mClient.bottom, mDpi) - mFooter; }
    void Add(win32::Child& child) override;
    void Remove(win32::Child& child) override;
    void Later(std::function<void()> action) override { mLoop.Later(mHandle, std::move(action)); }

    bool IsShown() const { return mIsShown && !mIsClosed; }
    bool IsClosed() const { return mIsClosed; }

    // What else happens in the window
    std::function<void(int id)> onMenu; // a menu item was chosen
    std::function<void()> onLastWord;   // the session ends, and nobody can be asked any more
    std::function<void()> onShow;       // it is about to be seen
    std::function<void()> onLayOut;     // the client area has another size or resolution

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    bool FrameMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool TakeKey(MSG& message);
    void PutOnScreen(const RECT& expected);
    void SizeChanged(WPARAM kind);
    void DpiChanged(int dpi, const RECT& suggested);
    void LayOut();
    void LimitSize(MINMAXINFO& limits) const;
    void ColoursChanged();
    void Dropped(HDROP drop);
    void KeyboardIsBack();
    void Close();
    void Leave();
    win32::Child* Child(HWND window) const;

    EventLoop& mLoop;
    HWND mHandle = nullptr;
    int mDpi = 96;
    FontOwner mFont;
    IconOwner mLargeIcon;
    IconOwner mSmallIcon;
    std::vector<win32::Child*> mChildren;
    Focus mFocus{focus};
    std::string mCaption;
    RECT mClient = {}; // as the controls in it were told last
    float mWidth = 0;
    float mHeight = 0;
    float mMinimumWidth = 0;
    float mMinimumHeight = 0;
    float mFooter = 0;
    bool mIsLoaded = false;
    bool mIsShown = false;
    bool mIsClosed = false;
    bool mIsRescaling = false;
};

} // namespace tessaly::win32
