// File dialogs that a test has answered beforehand.
#pragma once

#include "platform/desktop/FileDialog.h"
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
    enum class Kind { Open, Save };

    // A dialog that was shown.
    struct Record {
        Kind kind = Kind::Open;
        FileDialogSettings settings;
        std::vector<std::string> filters; // the descriptions that the user can choose from
        std::string pattern;              // of the filter that is shown first
        bool hasReadOnlyBox = false;
    };

    FileDialog(Faults& faults, Focus& focus) : mFaults(faults), mFocus(focus) {}

    // Both throw UnexpectedDialog when no answer is left.
    std::string ShowOpen(const FileDialogSettings& settings) override;
    std::string ShowSave(const FileDialogSettings& settings) override;

    // Prepares the user's answer to the next dialog that has none yet.
    void WillChoose(std::string path) { mAnswers.emplace_back(std::move(path)); }
    void WillCancel() { mAnswers.emplace_back(std::nullopt); }

    // How many prepared answers were not used.
    std::size_t AnswersLeft() const { return mAnswers.size(); }

    std::vector<Record> records;

private:
    static Record MakeRecord(Kind kind, const FileDialogSettings& settings);
    std::string Show(Kind kind, const FileDialogSettings& settings);

    Faults& mFaults;
    Focus& mFocus; // of the window behind it
    std::deque<std::optional<std::string>> mAnswers;
};

} // namespace tessaly::memory
