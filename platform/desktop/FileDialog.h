// The common file dialogs.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tessaly {

// The user cancelled a dialog for which that is an error.
class DialogCancelled : public std::runtime_error {
public:
    DialogCancelled() : std::runtime_error("the dialog was cancelled") {}
};

struct FileDialogSettings {
    std::string title;            // of the window; what the desktop likes where it is empty
    std::string fileName;         // what the dialog begins with
    bool cancelIsError = false;   // else a cancelled dialog gives ""
    std::int32_t flags = 0;       // 4 hides the read-only check box
    std::string filter;           // "description|pattern", further pairs behind further "|"
    std::int32_t filterIndex = 1; // the pair shown first, from 1; one beyond the last stands for the last
};

class FileDialog {
public:
    virtual ~FileDialog() = default;

    // Show the dialog, modal to the main window, and return the chosen path. Neither asks about a file that exists
    // or does not, and neither adds an extension. Throw DialogCancelled where cancelling is an error.
    virtual std::string ShowOpen(const FileDialogSettings& settings) = 0;
    virtual std::string ShowSave(const FileDialogSettings& settings) = 0;
};

} // namespace tessaly
