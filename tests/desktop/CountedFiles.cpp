// Counts and passes on.
#include "tests/desktop/CountedFiles.h"

#include <utility>

namespace tessaly::memory {

namespace {

class CountedInputFile final : public tessaly::InputFile {
public:
    CountedInputFile(Faults& faults, std::unique_ptr<tessaly::InputFile> file)
        : mFaults(faults),
          mFile(std::move(file)) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        mFaults.Count();
        return mFile->Read(buffer, size);
    }

    void Close() override {
        mFaults.Count();
        mFile->Close();
    }

private:
    Faults& mFaults;
    std::unique_ptr<tessaly::InputFile> mFile;
};

class CountedOutputFile final : public tessaly::OutputFile {
public:
    CountedOutputFile(Faults& faults, std::unique_ptr<tessaly::OutputFile> file)
        : mFaults(faults),
          mFile(std::move(file)) {}

    void Write(std::string_view bytes) override {
        mFaults.Count();
        mFile->Write(bytes);
    }

    void Close() override {
        mFaults.Count();
        mFile->Close();
    }

private:
    Faults& mFaults;
    std::unique_ptr<tessaly::OutputFile> mFile;
};

} // namespace

std::unique_ptr<tessaly::InputFile> CountedFiles::OpenForInput(const std::string& path) {
    mFaults.Count();
    return std::make_unique<CountedInputFile>(mFaults, mFiles.OpenForInput(path));
}

std::unique_ptr<tessaly::OutputFile> CountedFiles::OpenForOutput(const std::string& path) {
    mFaults.Count();
    return std::make_unique<CountedOutputFile>(mFaults, mFiles.OpenForOutput(path));
}

bool CountedFiles::FileExists(const std::string& path) const {
    mFaults.Count();
    return mFiles.FileExists(path);
}

} // namespace tessaly::memory
