// Files that are only in memory: bytes to load a document from, bytes that a save makes.
#pragma once

#include "platform/system/SequentialFiles.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly {

// Every path names the one file. What is written does not change what is read.
class MemoryFile final : public SequentialFiles {
public:
    // `bytes` must outlive it. What is written takes the place, and the room, of what is in `room`.
    explicit MemoryFile(std::string_view bytes = {}, std::string room = {})
        : mBytes(bytes),
          mWritten(std::move(room)) {}

    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string&) const override { return true; }

    const std::string& Written() const { return mWritten; }
    std::string TakeWritten() { return std::move(mWritten); }

private:
    std::string_view mBytes;
    std::string mWritten;
};

// Reads bytes, and compares them with what is written, which needs no memory of its own.
class ComparedFile final : public SequentialFiles {
public:
    // `bytes` must outlive it.
    explicit ComparedFile(std::string_view bytes) : mBytes(bytes) {}

    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string&) const override { return true; }

    // The `size` bytes at `offset` count as written, and what is written goes on behind them. To be called before, in
    // the order of their places.
    void TakeAsWritten(std::size_t offset, std::size_t size);

    // How many bytes at the front are the same; and whether, after the file was closed, all are.
    std::size_t SameBytes() const { return mSame; }
    bool IsSame() const { return mIsSame; }

private:
    class Output;
    struct Part {
        std::size_t offset;
        std::size_t size;
    };

    std::string_view Expected();

    std::string_view mBytes;
    std::vector<Part> mTaken;
    std::size_t mNextTaken = 0;
    std::size_t mSame = 0;
    bool mIsSame = false;
};

} // namespace tessaly
