// Sequential files as plain bytes: opened, read or written from front to back, closed.
// Line ends and code pages are the caller's business.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// A file open for reading. Destroying it closes it, too, but hides the failure that Close would report.
class InputFile {
public:
    virtual ~InputFile() = default;

    // Puts the next bytes of the file, at most `size`, into `buffer` and returns how many there were.
    // 0 means the end of the file; fewer than asked for does not. Throws std::system_error when the data
    // cannot be read (a folder can be opened but not read).
    virtual std::size_t Read(char* buffer, std::size_t size) = 0;

    // How many bytes the whole file has; 0 where that is not known before they are read.
    virtual std::uint64_t Size() const { return 0; }

    // All its bytes, where they stand in memory anyway; no value else.
    virtual std::optional<std::string_view> Whole() const { return std::nullopt; }

    // Closes the file. Called at most once, and nothing else after it. Throws std::system_error.
    virtual void Close() = 0;
};

// A file open for writing. Destroying it without Close keeps what was written and hides the failure.
class OutputFile {
public:
    virtual ~OutputFile() = default;

    // Writes all of `bytes` at the end. Throws std::system_error; how much of `bytes` then stands in the
    // file is not promised.
    virtual void Write(std::string_view bytes) = 0;

    // Closes the file. Called at most once, and nothing else after it. Throws std::system_error.
    virtual void Close() = 0;
};

// The way to the files of a machine. Paths are UTF-8 and otherwise as the system writes them.
class SequentialFiles {
public:
    virtual ~SequentialFiles() = default;

    // Opens an existing file. Throws std::system_error when there is none or it may not be read.
    virtual std::unique_ptr<InputFile> OpenForInput(const std::string& path) = 0;

    // Creates the file, or empties the one that is there. Throws std::system_error.
    virtual std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) = 0;

    // Whether there is a file (not a folder) of that name.
    virtual bool FileExists(const std::string& path) const = 0;
};

// The files of this machine, written on each system in its own way. Errors of Windows are in the system category, but
// for a folder, which is errc::is_a_directory. On Windows others may write, rename and delete a file while it is read
// here, but only read it while it is written.
class SystemFiles final : public SequentialFiles {
public:
    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;
};

// The bytes of a file, in place of what is in `bytes`, whose room is used if it is enough. Throws std::system_error
// when it cannot be read, or has more than `largest` bytes.
void ReadWhole(SequentialFiles& files, const std::string& path, std::string& bytes,
               std::size_t largest = std::string::npos);
std::string ReadWhole(SequentialFiles& files, const std::string& path, std::size_t largest = std::string::npos);

} // namespace tessaly
