// The one build command: save, commit, generate, start the compiler's batch file.
#include "app/CompilerCommand.h"
#include "ui/Command.h"
#include "ui/VornMainFrm.h"

namespace tessaly {

void VornMainFrm::mnuBuildExe_Click() {
    try {
        if ((mLastOpenedFile.empty() || FuncBodyChangedFlag) && !SaveBeforeBuild()) {
            return;
        }
        if (mCompBat.empty() || mCompFileName.empty()) {
            Tell(Text::CompilerMissing, Text::Error, MsgIcon::Stop);
            return;
        }
        SaveCurrentNodeCode(mCurrentNode);
        mNames.headers.LookAgain(); // a build may make some
        Attempt([this] { mMessages.Begin(mCompFileName); });
        if (BuildMap::BuildCCodeFile(*mSourceDoc, mCompFileName, mMessages.map) != Status::Done) {
            Tell(Text::InstallationCorrupted, Text::Error, MsgIcon::Stop);
            return;
        }
        mDesktop.App().StartProcess(CompilerCommandLine(mCompBat, OutputName(mLastOpenedFile)), MaximizedWithFocus);
        // At once, while the batch file may still run: kept on purpose.
        ShowMessage(Text::CompilationComplete);
        Attempt([this] { mMessages.Listen(*mSourceDoc); });
    } catch (const std::exception&) {
        return; // also when F10 began it, which complains of other errors: kept on purpose
    }
}

// False when the user declines or the saving fails.
bool VornMainFrm::SaveBeforeBuild() {
    const MsgResult answer =
        Ask(Words(Text::SaveBeforeBuildQuestion), Words(Text::SaveAs), MsgButtons::YesNo, MsgIcon::None);
    if (answer != MsgResult::Yes) {
        ShowMessage(Text::CommandCancelled);
        return false;
    }
    if (SavePSFFunc() != SaveResult::Saved) {
        return false;
    }
    ForgetChanges();
    return true;
}

} // namespace tessaly
