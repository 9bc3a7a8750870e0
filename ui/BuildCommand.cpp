// The one build command: save, commit, generate, start the compiler's batch file.
#include "app/CompilerCommand.h"
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

void VornMainFrm::mnuBuildExe_Click() {
    RunCommand([this] {
        if ((mLastOpenedFile.empty() || FuncBodyChangedFlag) && !SaveBeforeBuild()) {
            return;
        }
        if (mCompBat.empty() || mCompFileName.empty()) {
            Tell(prompts.vornMainFrmPrmpt13, prompts.vornMainFrmPrmpt6, MsgIcon::Stop);
            return;
        }
        SaveCurrentNodeCode(mCurrentNode);
        if (mSourceDoc->BuildCCodeFile(mCompFileName) != Status::Done) {
            Tell(prompts.vornMainFrmPrmpt5, prompts.vornMainFrmPrmpt6, MsgIcon::Stop);
            return;
        }
        mDesktop.App().StartProcess(CompilerCommandLine(mCompBat, mLastOpenedFile), MaximizedWithFocus);
        // At once, while the batch file may still run: kept on purpose.
        ShowMessage("vornMainFrmPrmpt39");
    });
}

// False when the user declines or the saving fails.
bool VornMainFrm::SaveBeforeBuild() {
    const MsgResult answer =
        Ask(prompts.vornMainFrmPrmpt33, prompts.vornMainFrmPrmpt27, MsgButtons::YesNo, MsgIcon::None);
    if (answer != MsgResult::Yes) {
        ShowMessage("vornMainFrmPrmpt20");
        return false;
    }
    if (SavePSFFunc() != 0) {
        return false;
    }
    FuncBodyChangeMode = 1;
    FuncBodyChangedFlag = false;
    return true;
}

} // namespace tessaly
