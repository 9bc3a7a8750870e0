// The numbers of buttons, icons and results are those of Windows.
#include "platform/desktop/win32/MsgBox.h"

#include "platform/desktop/win32/WideBox.h"
#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

HWND OwnerOfDialogs(HWND mainWindow) {
    HWND top = GetLastActivePopup(mainWindow);
    return IsWindowVisible(top) != 0 ? top : nullptr;
}

MsgResult MsgBox::Show(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    if (mIsSilent) {
        return AnswerOfNobody(buttons);
    }
    const UINT style = static_cast<UINT>(buttons) | static_cast<UINT>(icon) | MB_DEFBUTTON1;
    HWND owner = OwnerOfDialogs(mMainWindow);
    const UINT modality = owner != nullptr ? MB_APPLMODAL : MB_TASKMODAL;
    const WideBox wide;
    int result = 0;
    do { // some systems let a box be closed that has no button for that
        result = MessageBoxW(owner, ToWide(text).c_str(), ToWide(caption).c_str(), style | modality);
    } while (buttons == MsgButtons::YesNo && result == IDCANCEL);
    const bool isPressed = buttons != MsgButtons::Ok && result != 0;
    return isPressed ? static_cast<MsgResult>(result) : AnswerOfNobody(buttons);
}

} // namespace tessaly::win32
