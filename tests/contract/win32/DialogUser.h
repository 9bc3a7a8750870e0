// What a user does with the dialogs of a program in this thread. Message boxes and file dialogs are answered from a
// timer, which goes on while they are shown; the two small windows are used from a second thread, as a script goes on.
#pragma once

#include "platform/desktop/win32/Headers.h"
#include "tests/contract/DesktopDriver.h"

#include <atomic>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <variant>
#include <vector>

namespace tessaly {

class DialogUser {
public:
    DialogUser();
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;
    ~DialogUser();

    void WillPress(MsgResult button) { mBoxAnswers.emplace_back(button); }
    void WillCloseMessageBox() { mBoxAnswers.emplace_back(std::nullopt); }
    void WillChooseFile(const std::string& path) { mFileAnswers.emplace_back(path); }
    void WillCancelFileDialog() { mFileAnswers.emplace_back(std::nullopt); }
    void WillUseName(std::function<void(NameWindowUser&)> script);
    void WillUseSplash(std::function<void(SplashWindowUser&)> script);

    const std::vector<SeenMessageBox>& MessageBoxes() const { return mBoxes; }
    const std::vector<SeenFileDialog>& FileDialogs() const { return mFiles; }

private:
    using Script = std::function<void(HWND window)>;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Look();
    void LookAtBox(HWND box);
    void LookAtFileDialog(HWND dialog);
    void RunScript(HWND window, std::deque<Script>& scripts);

    HWND mHelper = nullptr;
    std::deque<std::optional<MsgResult>> mBoxAnswers;
    std::deque<std::optional<std::string>> mFileAnswers;
    std::deque<Script> mNameScripts;
    std::deque<Script> mSplashScripts;
    std::vector<SeenMessageBox> mBoxes;
    std::vector<SeenFileDialog> mFiles;
    std::vector<HWND> mSeen; // windows that were looked at already and are still there
    std::thread mScript;
    std::atomic<bool> mIsScriptRunning = false;
    int mLooksWithoutScript = 0;
    bool mWasClosed = false; // the last message box, which has no way out but its buttons
};

} // namespace tessaly
