// What the two small windows have in common: a frame of their own, shown in front of the main window and blocking it.
#pragma once

#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/EventLoop.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly::win32 {

class ModalWindow : public Parent {
public:
    // `clientWidth` and `clientHeight` in twips.
    ModalWindow(EventLoop& loop, HWND owner, const wchar_t* className, float clientWidth, float clientHeight);
    ModalWindow(const ModalWindow&) = delete;
    ModalWindow& operator=(const ModalWindow&) = delete;
    ~ModalWindow() override;

    void SetTitle(std::string_view caption);

    // Shows it in the middle of its owner and returns when it was hidden.
    void Run();
    void End();

    // Parent
    HWND Handle() const override { return mHandle; }
    int Dpi() const override { return mDpi; }
    HFONT Font() const override { return mFont.get(); }
    void Add(Child& child) override { mChildren.push_back(&child); }
    void Remove(Child& child) override { std::erase(mChildren, &child); }
    void Later(std::function<void()> action) override { mLoop.Later(mHandle, std::move(action)); }

protected:
    // What is special. `Closed` is the frame's: the window is hidden after it.
    virtual void Closed() {}
    virtual void Commanded(int /*id*/) {}
    virtual bool TakeMessage(MSG& /*message*/) { return false; } // from the loop, before it goes to a control
    virtual bool OwnMessage(UINT /*message*/, LPARAM /*lParam*/) { return false; } // to the frame; true: that was all
    virtual void Rescaled() {}
    virtual HWND FirstFocus() const { return nullptr; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    bool Take(MSG& message);
    void Resize(int dpi);
    void PutInTheMiddle();

    EventLoop& mLoop;
    HWND mOwner;
    HWND mHandle = nullptr;
    float mClientWidth;
    float mClientHeight;
    int mDpi = 96;
    FontOwner mFont;
    std::vector<Child*> mChildren;
    bool mIsShown = false;
};

} // namespace tessaly::win32
