// Files in memory with injected failures.
#include "tests/desktop/SequentialFiles.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tessaly::memory {

class InputFile final : public tessaly::InputFile {
public:
    InputFile(SequentialFiles& files, std::string content) : mFiles(files), mContent(std::move(content)) {
        ++mFiles.mOpenCount;
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() override { --mFiles.mOpenCount; }

    std::size_t Read(char* buffer, std::size_t size) override {
        mFiles.Count(SequentialFiles::Call::Read);
        const std::size_t count = mContent.copy(buffer, std::min(size, mFiles.readSize), mPosition);
        mPosition += count;
        return count;
    }

    void Close() override { mFiles.Count(SequentialFiles::Call::Close); }

private:
    SequentialFiles& mFiles;
    std::string mContent;
    std::size_t mPosition = 0;
};

class OutputFile final : public tessaly::OutputFile {
public:
    OutputFile(SequentialFiles& files, std::string& content) : mFiles(files), mContent(content) { ++mFiles.mOpenCount; }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() override { --mFiles.mOpenCount; }

    void Write(std::string_view bytes) override {
        mFiles.Count(SequentialFiles::Call::Write);
        mContent.append(bytes);
    }

    void Close() override { mFiles.Count(SequentialFiles::Call::Close); }

private:
    SequentialFiles& mFiles;
    std::string& mContent;
};

std::unique_ptr<tessaly::InputFile> SequentialFiles::OpenForInput(const std::string& path) {
    Count(Call::Open);
    const auto file = contents.find(path);
    if (file == contents.end()) {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    }
    return std::make_unique<InputFile>(*this, file->second);
}

std::unique_ptr<tessaly::OutputFile> SequentialFiles::OpenForOutput(const std::string& path) {
    Count(Call::Open);
    std::string& content = contents[path];
    content.clear();
    return std::make_unique<OutputFile>(*this, content);
}

bool SequentialFiles::FileExists(const std::string& path) const {
    return contents.contains(path);
}

void SequentialFiles::FailAt(Call call, std::size_t number) {
    mFailing = call;
    mCallsLeft = number;
}

void SequentialFiles::Count(Call call) {
    if (call == mFailing && mCallsLeft > 0 && --mCallsLeft == 0) {
        throw std::system_error(std::make_error_code(std::errc::io_error));
    }
}

} // namespace tessaly::memory
