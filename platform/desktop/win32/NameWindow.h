// The window that asks for a name.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/win32/Label.h"
#include "platform/desktop/win32/ModalWindow.h"
#include "platform/desktop/win32/Part.h"

namespace tessaly {

class Win32NameWindow final : public NameWindow, private Win32ModalWindow {
public:
    Win32NameWindow(Win32EventLoop& loop, HWND owner);

    void SetCaption(std::string_view caption) override { SetTitle(caption); }
    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    Label& NameLabel() override { return mLabel; }
    void SetCancelCaption(std::string_view caption) override;
    std::string FuncVarName() const override;

private:
    void Closed() override;
    void Commanded(int id) override;
    HWND FirstFocus() const override { return mBox.Handle(); }

    Win32Label mLabel;
    Win32Part mBox;
    Win32Part mOk;
    Win32Part mCancel;
};

} // namespace tessaly
