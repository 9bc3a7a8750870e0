// The name dialog. A bad name keeps it open with the text as it is.
#include "ui/UserFuncVarFrm.h"

#include "document/NewFunction.h"

namespace tessaly {

UserFuncVarFrm::UserFuncVarFrm(Desktop& desktop) : mDesktop(desktop), mWindow(desktop.NewNameWindow()) {
    mWindow->onOk = [this] { OKButton_Click(); };
    mWindow->onCancel = [this] { Cancel_Click(); };
}

// The return code is set before the name is checked, and stays so when the check fails: kept on purpose.
void UserFuncVarFrm::OKButton_Click() {
    ReturnCode = "1";
    switch (CheckFunctionName(mWindow->FuncVarName())) {
    case NameCheck::BeginsWithDigit:
        mDesktop.MessageBoxes().Show(firstCharacterMessage, messageCaption, MsgButtons::Ok, MsgIcon::Stop);
        break;
    case NameCheck::BadCharacter:
        mDesktop.MessageBoxes().Show(badCharacterMessage, messageCaption, MsgButtons::Ok, MsgIcon::Stop);
        break;
    case NameCheck::Accepted:
        mWindow->Hide();
        break;
    }
}

void UserFuncVarFrm::Cancel_Click() {
    ReturnCode = "0";
    mWindow->Hide();
}

} // namespace tessaly
