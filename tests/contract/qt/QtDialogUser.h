// The user in front of dialogs: answers each one that comes up as it was prepared. A dialog without an answer fails the
// test and is closed.
#pragma once

#include "tests/contract/DesktopDriver.h"

#include <QObject>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QFileDialog;
class QMessageBox;

namespace tessaly {

namespace qt {
class Dialog;
}

class QtDialogUser final : public QObject {
public:
    QtDialogUser();

    void WillPress(MsgResult button) { mAnswers.emplace_back(button); }
    void WillCloseMessageBox() { mAnswers.emplace_back(std::nullopt); }
    void WillChooseFile(std::string path) { mFiles.emplace_back(std::move(path)); }
    void WillCancelFileDialog() { mFiles.emplace_back(std::nullopt); }
    void WillUseName(std::function<void(NameWindowUser&)> script) { mNames.push_back(std::move(script)); }
    void WillUseSplash(std::function<void(SplashWindowUser&)> script) { mSplashes.push_back(std::move(script)); }

    const std::vector<SeenMessageBox>& MessageBoxes() const { return mSeenBoxes; }
    const std::vector<SeenFileDialog>& FileDialogs() const { return mSeenFiles; }

    // Where other code waits for what has no answer here; true when it took the box.
    std::function<std::optional<MsgResult>(const SeenMessageBox&)> decide;

    // How many prepared answers no dialog came for.
    std::size_t AnswersLeft() const { return mAnswers.size() + mFiles.size() + mNames.size() + mSplashes.size(); }

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    template <class Dialog>
    void AnswerLater(Dialog* dialog); // null for another kind of window
    void Answer(QMessageBox& box);
    void Answer(QFileDialog& dialog);
    void Answer(qt::Dialog& dialog);

    std::deque<std::optional<MsgResult>> mAnswers;
    std::deque<std::optional<std::string>> mFiles;
    std::deque<std::function<void(NameWindowUser&)>> mNames;
    std::deque<std::function<void(SplashWindowUser&)>> mSplashes;
    std::vector<SeenMessageBox> mSeenBoxes;
    std::vector<SeenFileDialog> mSeenFiles;
};

} // namespace tessaly
