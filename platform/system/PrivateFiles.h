// Files of the user's own, in folders that nobody else may look into, and the running programs that they belong to.
// Paths are UTF-8.
#pragma once

#include "platform/system/Environment.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tessaly {

// Whether a new file is on the disk when the call returns, or gets there when the system has the time.
enum class Flushing { Now, Later };

struct FolderEntry {
    std::string name;
    std::uint64_t size = 0; // in bytes
    std::int64_t time = 0;  // of the last change; a later one is greater
};

// Each call tells the error that stopped it, or none.
class PrivateFiles {
public:
    virtual ~PrivateFiles() = default;

    // Makes `folder` for the user alone, with those above it, which are made as usual. One that is there is closed to
    // others. errc::operation_not_permitted, and nothing changed, when it is a link, no folder or somebody else's.
    virtual std::error_code MakeFolder(const std::string& folder) = 0;

    // `entries` = the files in `folder`, in no order; folders and links are left out. No error for a folder that is
    // not there: it has no files. errc::operation_not_permitted for one that MakeFolder would refuse, on Unix also
    // for one into which others may write.
    virtual std::error_code List(const std::string& folder, std::vector<FolderEntry>& entries) const = 0;

    // Writes a new file that the user alone may read beside `path` and gives it that name, in place of what is there:
    // at every moment that is the old file or the new one, whole. After an error it is the old one. Windows: it is
    // tried a while when another program, such as a virus scanner, holds one of the two. A name with a dot
    // in front is hidden.
    virtual std::error_code Write(const std::string& path, std::string_view bytes, Flushing flushing) = 0;

    // As Write, but in the place of what is there, which costs a tenth of it: meanwhile, and after an error, the file
    // is neither the old one nor the new one. It stays open for the next time until Remove, and on Windows other
    // programs can read it only. For folders that MakeFolder made: anybody could know the name before.
    virtual std::error_code Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) = 0;

    // Returns when what was written to the file is on the disk.
    virtual std::error_code Flush(const std::string& path) = 0;

    // The path by which a file is found wherever the program goes; `path` itself where the system cannot tell.
    virtual std::string FullPath(const std::string& path) const = 0;

    // Removes a file. No error when there is none.
    virtual std::error_code Remove(const std::string& path) = 0;

    // What tells the running process `id` from every earlier and later one of that number; "" where the system has no
    // such thing. No value when no such process runs.
    virtual std::optional<std::string> ProcessStart(std::uint64_t id) const = 0;
};

// Those of this machine.
class SystemPrivateFiles final : public PrivateFiles {
public:
    SystemPrivateFiles();
    SystemPrivateFiles(const SystemPrivateFiles&) = delete;
    SystemPrivateFiles& operator=(const SystemPrivateFiles&) = delete;
    ~SystemPrivateFiles() override;
    std::error_code MakeFolder(const std::string& folder) override;
    std::error_code List(const std::string& folder, std::vector<FolderEntry>& entries) const override;
    std::error_code Write(const std::string& path, std::string_view bytes, Flushing flushing) override;
    std::error_code Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) override;
    std::error_code Flush(const std::string& path) override;
    std::string FullPath(const std::string& path) const override { return tessaly::FullPath(path); }
    std::error_code Remove(const std::string& path) override;
    std::optional<std::string> ProcessStart(std::uint64_t id) const override;

private:
    struct OpenFiles;
    std::unique_ptr<OpenFiles> mOpen; // by Rewrite
};

// The number of this process.
std::uint64_t OwnProcess();

// Where copies of what is not saved belong, the first place first. Unix: recovery/ in the folder for the user's state,
// and one with the user's number in the folder for temporary files. Windows: Ostrel\Tessaly\Recovery in %LOCALAPPDATA%
// and in the folder for temporary files. The folders need not exist.
std::vector<std::string> RecoveryFolders(const Environment& environment);

} // namespace tessaly
