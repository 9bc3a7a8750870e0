// The window that asks for a name.
#pragma once

#include "platform/desktop/ModalWindows.h"
#include "platform/desktop/win32/Label.h"
#include "platform/desktop/win32/ModalWindow.h"
#include "platform/desktop/win32/Part.h"

namespace tessaly::win32 {

class NameWindow final : public tessaly::NameWindow, private ModalWindow {
public:
    NameWindow(EventLoop& loop, HWND owner);

    void SetCaption(std::string_view caption) override { SetTitle(caption); }
    void ShowModal() override { Run(); }
    void Hide() override { End(); }
    tessaly::Label& NameLabel() override { return mLabel; }
    void SetCancelCaption(std::string_view caption) override;
    std::string FuncVarName() const override;

private:
    void Closed() override;
    void Commanded(int id) override;
    HWND FirstFocus() const override { return mBox.Handle(); }

    Label mLabel;
    Part mBox;
    Part mOk;
    Part mCancel;
};

} // namespace tessaly::win32
