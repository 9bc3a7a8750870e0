// What comes up beside the caret: windows that cannot be activated, so that the keyboard stays in the pane.
#pragma once

#include "platform/desktop/Suggestions.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/RichTextBox.h"
#include "platform/desktop/win32/Window.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tessaly::win32 {

// The system's list, which would take the keyboard when it is clicked.
class NameList final : public Control<tessaly::Control> {
public:
    explicit NameList(Parent& parent);

    std::function<void(std::size_t row)> onClick;

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// A window without a caption.
class Popup : public Parent {
public:
    Popup(Window& frame, const wchar_t* className);

    // Shows the client area in this size beside the line of a character on the screen.
    void ShowBeside(const RECT& character, SIZE client, Beside wished);
    void Hide() { ShowWindow(Handle(), SW_HIDE); }
    bool IsShown() const { return IsWindowVisible(Handle()) != 0; }

    // Follows the resolution of its owner.
    void Rescale();
    HFONT CodeFont() const { return mCodeFont.get(); }

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Window& mFrame;
    Controls mNoControls;
    FontOwner mCodeFont;
};

class HintPopup final : public Popup {
public:
    using Popup::Popup;

    void Show(const HintText& hint, const RECT& character);

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    SIZE Draw(HDC target, bool isMeasured) const;
    void Paint();

    std::wstring mFront;
    std::wstring mStrong;
    std::wstring mBack;
};

class Suggestions final : public tessaly::Suggestions {
public:
    Suggestions(Window& frame, RichTextBox& pane);
    Suggestions(const Suggestions&) = delete;
    Suggestions& operator=(const Suggestions&) = delete;
    ~Suggestions() override;

private:
    // Made when something is to be shown: windows take their time.
    struct Windows {
        explicit Windows(Window& frame)
            : listPopup(frame, L"Suggestions"),
              list(listPopup),
              hint(frame, L"ParameterHint"),
              tip(frame, L"NameTip") {}

        Popup listPopup;
        NameList list;
        HintPopup hint;
        HintPopup tip;
    };

    void ShowNames(const std::vector<SuggestedName>& names, Place place) override;
    void ShowSelected(std::size_t row) override;
    void ShowHintText(const HintText& hint, Place place) override;
    void MakeWindows();
    bool TakeMessage(const MSG& message);
    bool TakeMouse(const MSG& message);
    void FollowMouse(const MSG& message);
    void ShowTip(POINT mouse);

    Window& mFrame;
    RichTextBox& mPane;
    std::unique_ptr<Windows> mWindows;
    LPARAM mTipPlace = 0;          // of the mouse
    EventLoop::Filter mMainFilter; // that was there before
};

} // namespace tessaly::win32
