// Files in memory with injected failures.
#include "tests/desktop/SequentialFiles.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tessaly {

class MemoryInputFile final : public InputFile {
public:
    MemoryInputFile(MemoryFiles& files, std::string content) : mFiles(files), mContent(std::move(content)) {
        ++mFiles.mOpenCount;
    }
    MemoryInputFile(const MemoryInputFile&) = delete;
    MemoryInputFile& operator=(const MemoryInputFile&) = delete;
    ~MemoryInputFile() override { --mFiles.mOpenCount; }

    std::size_t Read(char* buffer, std::size_t size) override {
        mFiles.Count(MemoryFiles::Call::Read);
        const std::size_t count = mContent.copy(buffer, std::min(size, mFiles.readSize), mPosition);
        mPosition += count;
        return count;
    }

    void Close() override { mFiles.Count(MemoryFiles::Call::Close); }

private:
    MemoryFiles& mFiles;
    std::string mContent;
    std::size_t mPosition = 0;
};

class MemoryOutputFile final : public OutputFile {
public:
    MemoryOutputFile(MemoryFiles& files, std::string& content) : mFiles(files), mContent(content) {
        ++mFiles.mOpenCount;
    }
    MemoryOutputFile(const MemoryOutputFile&) = delete;
    MemoryOutputFile& operator=(const MemoryOutputFile&) = delete;
    ~MemoryOutputFile() override { --mFiles.mOpenCount; }

    void Write(std::string_view bytes) override {
        mFiles.Count(MemoryFiles::Call::Write);
        mContent.append(bytes);
    }

    void Close() override { mFiles.Count(MemoryFiles::Call::Close); }

private:
    MemoryFiles& mFiles;
    std::string& mContent;
};

std::unique_ptr<InputFile> MemoryFiles::OpenForInput(const std::string& path) {
    Count(Call::Open);
    const auto file = contents.find(path);
    if (file == contents.end()) {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    }
    return std::make_unique<MemoryInputFile>(*this, file->second);
}

std::unique_ptr<OutputFile> MemoryFiles::OpenForOutput(const std::string& path) {
    Count(Call::Open);
    std::string& content = contents[path];
    content.clear();
    return std::make_unique<MemoryOutputFile>(*this, content);
}

bool MemoryFiles::FileExists(const std::string& path) const {
    return contents.contains(path);
}

void MemoryFiles::FailAt(Call call, std::size_t number) {
    mFailing = call;
    mCallsLeft = number;
}

void MemoryFiles::Count(Call call) {
    if (call == mFailing && mCallsLeft > 0 && --mCallsLeft == 0) {
        throw std::system_error(std::make_error_code(std::errc::io_error));
    }
}

} // namespace tessaly
