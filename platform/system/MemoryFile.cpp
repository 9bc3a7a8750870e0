// Reading moves through the bytes; writing begins with none.
#include "platform/system/MemoryFile.h"

#include <algorithm>

namespace tessaly {

namespace {

class MemoryInput final : public InputFile {
public:
    explicit MemoryInput(std::string_view bytes) : mBytes(bytes), mRest(bytes) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = mRest.copy(buffer, size);
        mRest.remove_prefix(count);
        return count;
    }

    std::optional<std::string_view> Whole() const override { return mBytes; }

    void Close() override {}

private:
    std::string_view mBytes;
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
        while (!bytes.empty() && !mDiffers) {
            const std::string_view wanted = mFile.Expected().substr(0, bytes.size());
            const std::string_view written = bytes.substr(0, wanted.size());
            if (wanted == written) { // which is far quicker to tell
                mFile.mSame += wanted.size();
            } else {
                const auto differs = std::mismatch(wanted.begin(), wanted.end(), written.begin()).first;
                mFile.mSame += static_cast<std::size_t>(differs - wanted.begin());
            }
            mDiffers = wanted.empty() || wanted != written;
            bytes.remove_prefix(wanted.size());
        }
    }

    void Close() override { mFile.mIsSame = !mDiffers && mFile.Expected().empty(); }

private:
    ComparedFile& mFile;
    bool mDiffers = false;
};

void ComparedFile::TakeAsWritten(std::size_t offset, std::size_t size) {
    mTaken.push_back({offset, size});
}

// What is to be written next, as far as it stands in one piece.
std::string_view ComparedFile::Expected() {
    while (mNextTaken < mTaken.size() && mTaken[mNextTaken].offset == mSame) {
        mSame += mTaken[mNextTaken++].size;
    }
    const std::size_t end = mNextTaken < mTaken.size() ? mTaken[mNextTaken].offset : mBytes.size();
    return mBytes.substr(mSame, end - mSame);
}

std::unique_ptr<InputFile> ComparedFile::OpenForInput(const std::string& /*path*/) {
    return std::make_unique<MemoryInput>(mBytes);
}

std::unique_ptr<OutputFile> ComparedFile::OpenForOutput(const std::string& /*path*/) {
    mSame = mNextTaken = 0;
    mIsSame = false;
    return std::make_unique<Output>(*this);
}

} // namespace tessaly
