// The common file dialogs.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessaly {

// The user cancelled a dialog for which that is an error.
class DialogCancelled : public std::runtime_error {
public:
    DialogCancelled() : std::runtime_error("the dialog was cancelled") {}
};

// Among the flags: hides the read-only check box.
inline constexpr std::int32_t HideReadOnly = 4;

struct FileDialogSettings {
    std::string title;            // of the window; what the desktop likes where it is empty
    std::string fileName;         // what the dialog begins with
    bool cancelIsError = false;   // else a cancelled dialog gives ""
    std::int32_t flags = 0;       // HideReadOnly
    std::string filter;           // "description|pattern", further pairs behind further "|"
    std::int32_t filterIndex = 1; // the pair shown first, from 1; one beyond the last stands for the last
};

class FileDialog {
public:
    virtual ~FileDialog() = default;

    // Show the dialog, modal to the main window, and return the chosen path. Neither asks about a file that exists
    // or does not, and neither adds an extension. Throw DialogCancelled where cancelling is an error.
    std::string ShowOpen(const FileDialogSettings& settings) { return Show(Kind::Open, settings); }
    std::string ShowSave(const FileDialogSettings& settings) { return Show(Kind::Save, settings); }

protected:
    enum class Kind { Open, Save };

    // Nothing when the user cancelled it.
    virtual std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) = 0;

private:
    std::string Show(Kind kind, const FileDialogSettings& settings) {
        const std::optional<std::string> path = Ask(kind, settings);
        if (!path && settings.cancelIsError) {
            throw DialogCancelled();
        }
        return path.value_or("");
    }
};

} // namespace tessaly
