// Reading moves through the bytes; writing begins with none.
#include "programs/psf/MemoryFile.h"

#include <algorithm>

namespace tessaly::psf {

namespace {

class MemoryInput final : public InputFile {
public:
    explicit MemoryInput(std::string_view bytes) : mRest(bytes) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = mRest.copy(buffer, size);
        mRest.remove_prefix(count);
        return count;
    }

    void Close() override {}

private:
    std::string_view mRest;
};

class MemoryOutput final : public OutputFile {
public:
    // `size`: what it may come to, more or less.
    MemoryOutput(std::string& bytes, std::size_t size) : mBytes(bytes) {
        mBytes.clear();
        mBytes.reserve(size);
    }

    void Write(std::string_view bytes) override { mBytes += bytes; }
    void Close() override {}

private:
    std::string& mBytes;
};

} // namespace

std::unique_ptr<InputFile> MemoryFile::OpenForInput(const std::string& /*path*/) {
    return std::make_unique<MemoryInput>(mBytes);
}

std::unique_ptr<OutputFile> MemoryFile::OpenForOutput(const std::string& /*path*/) {
    return std::make_unique<MemoryOutput>(mWritten, mBytes.size());
}

} // namespace tessaly::psf
