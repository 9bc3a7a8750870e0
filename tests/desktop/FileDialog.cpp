// File dialogs that a test has answered beforehand.
#include "tests/desktop/FileDialog.h"

#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace tessaly::memory {

// What the user sees of a dialog.
FileDialog::Record FileDialog::MakeRecord(Kind kind, const FileDialogSettings& settings) {
    Record record;
    record.isSave = kind == Kind::Save;
    record.settings = settings;
    record.hasReadOnlyBox = (settings.flags & HideReadOnly) == 0;
    std::istringstream filter(settings.filter);
    std::vector<std::string> patterns;
    for (std::string description, pattern; std::getline(filter, description, '|');) {
        std::getline(filter, pattern, '|');
        record.filters.push_back(description);
        patterns.push_back(pattern);
    }
    if (!patterns.empty() && settings.filterIndex >= 1) {
        record.pattern = patterns[std::min(static_cast<std::size_t>(settings.filterIndex), patterns.size()) - 1];
    }
    return record;
}

std::optional<std::string> FileDialog::Ask(Kind kind, const FileDialogSettings& settings) {
    mFaults.Count();
    const Block block(mFocus);
    records.push_back(MakeRecord(kind, settings));
    if (mAnswers.empty()) {
        throw UnexpectedDialog("a file dialog without a prepared answer, filter " + settings.filter);
    }
    std::optional<std::string> answer = std::move(mAnswers.front());
    mAnswers.pop_front();
    return answer;
}

} // namespace tessaly::memory
