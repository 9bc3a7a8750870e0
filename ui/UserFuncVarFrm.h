// The dialog that asks for the name of a new function and checks its characters.
#pragma once

#include "platform/desktop/Desktop.h"

#include <memory>
#include <string>

namespace tessaly {

class UserFuncVarFrm {
public:
    explicit UserFuncVarFrm(Desktop& desktop);

    void SetTexts(const NameTexts& texts) { mWindow->SetTexts(texts); }

    // Returns when the name was accepted or the dialog abandoned.
    void ShowModal() { mWindow->ShowModal(); }

    // The name as it stands in the box.
    std::string FuncVarName() const { return mWindow->FuncVarName(); }

    // "1" whenever OK was pressed, whether the name was good or not; "0" by Cancel and before anything was pressed.
    std::string ReturnCode = "0";
    bool WasConfirmed() const { return ReturnCode != "0"; }

    // To be set before the dialog is shown.
    std::string firstCharacterMessage;
    std::string badCharacterMessage;
    std::string messageCaption;

private:
    void OKButton_Click();
    void Cancel_Click();

    Desktop& mDesktop;
    std::unique_ptr<NameWindow> mWindow;
};

} // namespace tessaly
