// What belongs to the running program as a whole.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

// Window styles of a process start, as Windows' ShowWindow numbers them.
inline constexpr std::int32_t MaximizedWithFocus = 3;

class Application {
public:
    virtual ~Application() = default;

    // What the program is and which version of it.
    std::int32_t majorVersion = TESSALY_MAJOR;
    std::int32_t minorVersion = TESSALY_MINOR;
    std::int32_t revision = TESSALY_REVISION;
    std::string title = "Tessaly";

    // All that stands behind the program's name on its command line, as one text: quotes and inner blanks as they are,
    // without the blanks that separate it from the name.
    std::string commandLine;

    // The file that F1 opens; "" at first: F1 then does nothing.
    std::string helpFile;

    // Sends the key F1 to the program as if the user had pressed it, without waiting.
    virtual void SendF1() = 0;

    // What the key F1 does behind the window's own handler.
    void OpenHelp() {
        if (!helpFile.empty()) {
            ShowHelp();
        }
    }

    // Starts a process with this one command line and window style and does not wait for it. Throws std::system_error
    // when it cannot be started.
    virtual void StartProcess(const std::string& line, std::int32_t windowStyle) = 0;

    // The file that tells what a batch file prints that makes a program of `cFile`: where StartProcess puts it, or the
    // batch file itself. "" where there is none.
    virtual std::string OutputPath(const std::string& cFile) const = 0;

    // From now on `path` alone is followed, which need not be there yet; "" is nothing. Throws std::system_error when
    // the system cannot do that.
    virtual void Follow(const std::string& path) = 0;

    // Raised when the file that is followed has come or changed: once for several changes, and perhaps for none.
    std::function<void()> onFollowed;

protected:
    // Opens the help file.
    virtual void ShowHelp() = 0;
};

} // namespace tessaly
