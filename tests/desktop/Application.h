// The running program in memory: its command line and version, and a record of its wishes to the system.
#pragma once

#include "platform/desktop/Application.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/SequentialFiles.h"

#include <optional>
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

    // The file that is followed is one of `files`.
    Application(Faults& faults, const SequentialFiles& files) : mFaults(faults), mFiles(files) {}

    void SendF1() override;
    void StartProcess(const std::string& line, std::int32_t windowStyle) override;
    std::string OutputPath(const std::string& cFile) const override { return cFile + ".log"; }
    void Follow(const std::string& path) override;

    // Tells that the file that is followed has changed, if it has.
    void DeliverChanges();

    // A setting of the test: every StartProcess throws.
    bool startsFail = false;

    // What happened.
    int f1Sent = 0;                      // calls of SendF1
    int f1Waiting = 0;                   // of those, the keys that did not reach the window yet
    std::vector<std::string> helpOpened; // the help file, each time that it was opened
    std::vector<Start> starts;           // without those that failed

private:
    void ShowHelp() override { helpOpened.push_back(helpFile); }

    std::optional<std::string> Followed() const;

    Faults& mFaults;
    const SequentialFiles& mFiles;
    std::string mFollowed;
    std::optional<std::string> mContent; // as it was told last
};

} // namespace tessaly::memory
