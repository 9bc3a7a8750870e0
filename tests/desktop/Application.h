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

    void SendF1() override;
    void StartProcess(const std::string& line, std::int32_t windowStyle) override;

    // A setting of the test: every StartProcess throws.
    bool startsFail = false;

    // What happened.
    int f1Sent = 0;                      // calls of SendF1
    int f1Waiting = 0;                   // of those, the keys that did not reach the window yet
    std::vector<std::string> helpOpened; // the help file, each time that it was opened
    std::vector<Start> starts;           // without those that failed

private:
    void ShowHelp() override { helpOpened.push_back(helpFile); }

    Faults& mFaults;
};

} // namespace tessaly::memory
