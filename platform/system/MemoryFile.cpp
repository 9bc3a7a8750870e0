// Reading moves through the bytes; writing begins with none.
#include "platform/system/MemoryFile.h"

#include <algorithm>

namespace tessaly {

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

class ComparedFile::Output final : public OutputFile {
public:
    explicit Output(ComparedFile& file) : mFile(file) {}

    void Write(std::string_view bytes) override {
        if (mFile.mSame == mWritten) {
            const std::string_view wanted = mFile.mBytes.substr(mWritten, bytes.size());
            mFile.mSame += wanted == bytes // which is far quicker to tell
                               ? bytes.size()
                               : static_cast<std::size_t>(
                                     std::mismatch(wanted.begin(), wanted.end(), bytes.begin()).first - wanted.begin());
        }
        mWritten += bytes.size();
    }

    void Close() override { mFile.mIsSame = mFile.mSame == mWritten && mWritten == mFile.mBytes.size(); }

private:
    ComparedFile& mFile;
    std::size_t mWritten = 0;
};

std::unique_ptr<InputFile> ComparedFile::OpenForInput(const std::string& /*path*/) {
    return std::make_unique<MemoryInput>(mBytes);
}

std::unique_ptr<OutputFile> ComparedFile::OpenForOutput(const std::string& /*path*/) {
    mSame = 0;
    mIsSame = false;
    return std::make_unique<Output>(*this);
}

} // namespace tessaly
