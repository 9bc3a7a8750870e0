// Files whose calls count among those of the desktop.
#pragma once

#include "platform/system/SequentialFiles.h"
#include "tests/desktop/Faults.h"

namespace tessaly::memory {

class CountedFiles final : public tessaly::SequentialFiles {
public:
    CountedFiles(Faults& faults, tessaly::SequentialFiles& files) : mFaults(faults), mFiles(files) {}

    std::unique_ptr<tessaly::InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<tessaly::OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;

private:
    Faults& mFaults;
    tessaly::SequentialFiles& mFiles;
};

} // namespace tessaly::memory
