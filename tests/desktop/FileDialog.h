// File dialogs that a test has answered beforehand.
#pragma once

#include "platform/desktop/Dialogs.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::memory {

class FileDialog final : public tessaly::FileDialog {
public:
    // A dialog that was shown.
    struct Record {
        bool isSave = false;
        FileDialogSettings settings;
        std::vector<std::string> filters; // the descriptions that the user can choose from
        std::string pattern;              // of the filter that is shown first
        bool hasReadOnlyBox = false;
    };

    FileDialog(Faults& faults, Focus& focus) : mFaults(faults), mFocus(focus) {}

    // Prepares the user's answer to the next dialog that has none yet.
    void WillChoose(std::string path) { mAnswers.emplace_back(std::move(path)); }
    void WillCancel() { mAnswers.emplace_back(std::nullopt); }

    // How many prepared answers were not used.
    std::size_t AnswersLeft() const { return mAnswers.size(); }

    std::vector<Record> records;

private:
    static Record MakeRecord(Kind kind, const FileDialogSettings& settings);

    // Throws UnexpectedDialog when no answer is left.
    std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) override;

    Faults& mFaults;
    Focus& mFocus; // of the window behind it
    std::deque<std::optional<std::string>> mAnswers;
};

} // namespace tessaly::memory
