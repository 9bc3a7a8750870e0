// What the drivers of real desktops have in common: what the user will do with dialogs is kept by a class of the
// system's, which also sees them.
#pragma once

#include "tests/contract/DesktopDriver.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tessaly {

template <class DialogUser>
class DialogDriver : public DesktopDriver {
public:
    void WillPress(MsgResult button) override { mDialogs.WillPress(button); }
    void WillCloseMessageBox() override { mDialogs.WillCloseMessageBox(); }
    void WillChooseFile(std::string path) override { mDialogs.WillChooseFile(std::move(path)); }
    void WillCancelFileDialog() override { mDialogs.WillCancelFileDialog(); }
    void WillUseName(std::function<void(NameWindowUser&)> script) override { mDialogs.WillUseName(std::move(script)); }
    void WillUseSplash(std::function<void(SplashWindowUser&)> script) override {
        mDialogs.WillUseSplash(std::move(script));
    }
    std::vector<SeenMessageBox> MessageBoxes() const override { return mDialogs.MessageBoxes(); }
    std::vector<SeenFileDialog> FileDialogs() const override { return mDialogs.FileDialogs(); }
    std::vector<std::string> MenuSeen() const override { return mMenuSeen; }

protected:
    DialogUser mDialogs;
    std::vector<std::string> mMenuSeen;
};

} // namespace tessaly
