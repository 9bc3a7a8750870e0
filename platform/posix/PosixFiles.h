// Sequential files by POSIX file descriptors.
#pragma once

#include "platform/SequentialFiles.h"

namespace tessaly {

class PosixFiles final : public SequentialFiles {
public:
    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;
};

} // namespace tessaly
