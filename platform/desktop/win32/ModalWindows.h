// The two small windows, and what they have in common: a frame of their own, shown in front of the main window and
// blocking it.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/win32/Child.h"

#include <deque>
#include <string>
#include <string_view>

namespace tessaly::win32 {

class ModalWindow : public Parent {
public:
    // `client` is the size of its client area in twips.
    ModalWindow(EventLoop& loop, HWND owner, const wchar_t* className, const Size& client);

    // Shows it in the middle of its owner and returns when it was hidden.
    void Run();
    void End();

protected:
    // What is special. `Closed` is the frame's: the window is hidden after it.
    virtual void Closed() {}
    virtual void Commanded(int /*id*/) {}
    virtual bool TakeMessage(MSG& /*message*/) { return false; } // from the loop, before it goes to a control
    virtual bool OwnMessage(UINT /*message*/, LPARAM /*lParam*/) { return false; } // to the frame; true: that was all
    virtual void Rescaled() {}
    virtual HWND FirstFocus() const { return nullptr; }

private:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool Take(MSG& message);
    void Resize(int dpi);
    void PutInTheMiddle();

    Controls mControls;
    HWND mOwner;
    Size mClient;
    bool mIsShown = false;
};

class NameWindow final : public tessaly::NameWindow, private ModalWindow {
public:
    NameWindow(EventLoop& loop, HWND owner);

    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    void SetTexts(const NameTexts& texts) override;
    std::string FuncVarName() const override;

private:
    void Closed() override;
    void Commanded(int id) override;
    HWND FirstFocus() const override { return mBox.Handle(); }

    Part mLabel;
    Part mBox;
    Part mOk;
    Part mCancel;
};

class SplashWindow final : public tessaly::SplashWindow, private ModalWindow {
public:
    SplashWindow(EventLoop& loop, HWND owner);

    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    void SetLabels(const SplashLabels& labels) override;

private:
    bool TakeMessage(MSG& message) override;
    bool OwnMessage(UINT message, LPARAM lParam) override;
    void Rescaled() override;
    void Paint();

    bool mIsPressed = false; // the left button, in the frame
    FontOwner mLargeFont;
    BitmapOwner mLogo;
    Part mFrame;
    std::deque<Part> mLabels; // from the top
};

} // namespace tessaly::win32
