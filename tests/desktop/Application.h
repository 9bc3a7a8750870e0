// The running program in memory: its command line and version, and a record of its wishes to the system.
#pragma once

#include "platform/desktop/Application.h"
#include "tests/desktop/Faults.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class Application final : public tessaly::Application {
public:
    // A process that was started.
    struct Start {
        std::string commandLine;
        std::int32_t windowStyle = 0;

        bool operator==(const Start&) const = default;
    };

    explicit Application(Faults& faults) : mFaults(faults) {}

    std::string CommandLine() const override;
    std::int32_t Major() const override;
    std::int32_t Minor() const override;
    std::int32_t Revision() const override;
    std::string Title() const override;
    void SetHelpFile(std::string_view path) override;
    void SendF1() override;
    void StartProcess(const std::string& commandLine, std::int32_t windowStyle) override;

    // What the key F1 does behind the window's own handler.
    void OpenHelp();

    // Settings of the test.
    std::string commandLine;
    std::int32_t majorVersion = 1;
    std::int32_t minorVersion = 0;
    std::int32_t revision = 0;
    std::string title = "Tessaly";
    bool startsFail = false; // every StartProcess throws

    // What happened.
    std::string helpFile;
    int f1Sent = 0;                      // calls of SendF1
    int f1Waiting = 0;                   // of those, the keys that did not reach the window yet
    std::vector<std::string> helpOpened; // the help file, each time that it was opened
    std::vector<Start> starts;           // without those that failed

private:
    Faults& mFaults;
};

} // namespace tessaly::memory
