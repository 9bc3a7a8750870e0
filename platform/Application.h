// What belongs to the running program as a whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

// Window styles of a process start, as Windows' ShowWindow numbers them.
inline constexpr std::int32_t MaximizedWithFocus = 3;

class Application {
public:
    virtual ~Application() = default;

    // Whether another copy of this program was running already when this one was started.
    virtual bool PreviousInstance() const = 0;

    // All that stands behind the program's name on its command line, as one text: quotes and inner blanks as they are,
    // without the blanks that separate it from the name.
    virtual std::string CommandLine() const = 0;

    virtual std::int32_t Major() const = 0;
    virtual std::int32_t Minor() const = 0;
    virtual std::int32_t Revision() const = 0;
    virtual std::string Title() const = 0;

    // The file that F1 opens; "" at first: F1 then does nothing.
    virtual void SetHelpFile(std::string_view path) = 0;

    // Sends the key F1 to the program as if the user had pressed it, without waiting.
    virtual void SendF1() = 0;

    // Whether there is a file (not a folder) of that name.
    virtual bool FileExists(const std::string& path) const = 0;

    // Starts a process with this one command line and window style and does not wait for it. Throws std::system_error
    // when it cannot be started.
    virtual void StartProcess(const std::string& commandLine, std::int32_t windowStyle) = 0;
};

} // namespace tessaly
