// The user's own files in memory, beside the others there. Each call counts and can be made to fail.
#pragma once

#include "platform/system/PrivateFiles.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/SequentialFiles.h"

#include <map>
#include <set>

namespace tessaly::memory {

class PrivateFiles final : public tessaly::PrivateFiles {
public:
    PrivateFiles(Faults& faults, SequentialFiles& files) : mFaults(faults), mFiles(files) {}

    // Processes that run, by number.
    std::map<std::uint64_t, std::string> processes;

    // Folders that cannot be made.
    std::set<std::string> refused;

    // Folders that take no file.
    std::set<std::string> readOnly;

    std::error_code MakeFolder(const std::string& folder) override;
    std::error_code List(const std::string& folder, std::vector<FolderEntry>& entries) const override;
    std::error_code Write(const std::string& path, std::string_view bytes, Flushing flushing) override;
    std::error_code Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) override;
    std::error_code Flush(const std::string& path) override;
    std::string FullPath(const std::string& path) const override { return path; }
    std::error_code Remove(const std::string& path) override;
    std::optional<std::string> ProcessStart(std::uint64_t id) const override;

private:
    Faults& mFaults;
    SequentialFiles& mFiles;
    std::map<std::string, std::int64_t> mTimes;
};

} // namespace tessaly::memory
