// Sequential files by POSIX file descriptors.
#pragma once

#include "platform/system/SequentialFiles.h"

namespace tessaly::posix {

class SequentialFiles final : public tessaly::SequentialFiles {
public:
    std::unique_ptr<tessaly::InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<tessaly::OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;
};

// From now on a write beyond the limit for the size of files fails like any other. Else a signal ends the program: for
// main(), in front of everything that writes. Programs that it starts have the signal again.
void ReportFileSizeLimit();

} // namespace tessaly::posix
