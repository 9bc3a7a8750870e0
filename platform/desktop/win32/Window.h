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

namespace tessaly {

class Win32Window final : public Window, public Win32Parent {
public:
    // Makes the window, which is not shown yet, in a size that suits the screen.
    explicit Win32Window(Win32EventLoop& loop);
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;
    ~Win32Window() override;

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

    // Win32Parent
    HWND Handle() const override { return mHandle; }
    int Dpi() const override { return mDpi; }
    HFONT Font() const override { return mFont.get(); }
    float FooterTop() const override { return ToTwips(mClient.bottom, mDpi) - mFooter; }
    void Add(Win32Child& child) override;
    void Remove(Win32Child& child) override;
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
    Win32Child* Child(HWND window) const;

    Win32EventLoop& mLoop;
    HWND mHandle = nullptr;
    int mDpi = 96;
    Win32Font mFont;
    Win32Icon mLargeIcon;
    Win32Icon mSmallIcon;
    std::vector<Win32Child*> mChildren;
    Win32Focus mFocus{focus};
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

} // namespace tessaly
