// The Help menu.
#include "ui/VornMainFrm.h"
#include "ui/frmSplash.h"

namespace tessaly {

void VornMainFrm::mnuHelpHotKeys_Click() {
    Tell(Text::HotKeyList, Text::HotKeys, MsgIcon::Information);
}

// Help is what F1 opens, wherever the focus is.
void VornMainFrm::mnuOpenHelp_Click() {
    mDesktop.App().SendF1();
}

void VornMainFrm::mnuAbout_Click() {
    SaveCurrentNodeCode(mCurrentNode);
    if (!mSplash) {
        mSplash = std::make_unique<frmSplash>(mDesktop);
    }
    mSplash->SetProductName("\"" + Words(Text::Title) + "\"");
    mSplash->ShowModal();
    mSplash.reset(); // it was unloaded: the next time it is loaded again
}

} // namespace tessaly
