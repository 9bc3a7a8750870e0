// File dialogs that a test has answered beforehand.
#include "platform/memory/MemoryFileDialog.h"

#include "platform/memory/TestFailure.h"

#include <utility>

namespace tessaly {

std::string MemoryFileDialog::ShowOpen(const FileDialogSettings& settings) {
    return Show(Kind::Open, settings);
}

std::string MemoryFileDialog::ShowSave(const FileDialogSettings& settings) {
    return Show(Kind::Save, settings);
}

std::string MemoryFileDialog::Show(Kind kind, const FileDialogSettings& settings) {
    mFaults.Count();
    records.push_back({kind, settings});
    if (mAnswers.empty()) {
        throw UnexpectedDialog("a file dialog without a prepared answer, filter " + settings.filter);
    }
    const std::optional<std::string> answer = std::move(mAnswers.front());
    mAnswers.pop_front();
    if (!answer && settings.cancelIsError) {
        throw DialogCancelled();
    }
    return answer.value_or("");
}

} // namespace tessaly
