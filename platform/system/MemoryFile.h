// A file that is only in memory: bytes to load a document from, bytes that a save makes.
#pragma once

#include "platform/system/SequentialFiles.h"

#include <string>
#include <string_view>
#include <utility>

namespace tessaly::psf {

// Every path names the one file. What is written does not change what is read.
class MemoryFile final : public SequentialFiles {
public:
    // `bytes` must outlive it.
    explicit MemoryFile(std::string_view bytes = {}) : mBytes(bytes) {}

    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string&) const override { return true; }

    const std::string& Written() const { return mWritten; }
    std::string TakeWritten() { return std::move(mWritten); }

private:
    std::string_view mBytes;
    std::string mWritten;
};

} // namespace tessaly::psf
