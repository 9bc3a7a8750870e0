// Files whose calls count among those of the desktop.
#pragma once

#include "platform/system/SequentialFiles.h"
#include "tests/desktop/Faults.h"

namespace tessaly {

class CountedFiles final : public SequentialFiles {
public:
    CountedFiles(MemoryFaults& faults, SequentialFiles& files) : mFaults(faults), mFiles(files) {}

    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;

private:
    MemoryFaults& mFaults;
    SequentialFiles& mFiles;
};

} // namespace tessaly
