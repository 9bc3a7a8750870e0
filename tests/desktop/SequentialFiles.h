// Files that live in memory, for tests: any single open, read, write or close can be made to fail.
#pragma once

#include "platform/system/SequentialFiles.h"

#include <cstddef>
#include <map>
#include <string>

namespace tessaly::memory {

class SequentialFiles final : public tessaly::SequentialFiles {
public:
    enum class Call { Open, Read, Write, Close };

    std::unique_ptr<tessaly::InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<tessaly::OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;

    // The content of every file, by path. A file that is being written shows what was written so far.
    std::map<std::string, std::string> contents;

    // The most bytes that one Read gives.
    std::size_t readSize = 4096;

    // Makes the call number `number` (counted from 1) of kind `call` from now on fail, once.
    void FailAt(Call call, std::size_t number);

    // How many files are open.
    std::size_t OpenCount() const { return mOpenCount; }

private:
    friend class InputFile;
    friend class OutputFile;

    void Count(Call call);

    Call mFailing = Call::Open;
    std::size_t mCallsLeft = 0;
    std::size_t mOpenCount = 0;
};

} // namespace tessaly::memory
