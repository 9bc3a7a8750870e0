// Whole files are put into the map of the other files at once: here a write is done or it is not.
#include "tests/desktop/PrivateFiles.h"

namespace tessaly::memory {

namespace {

std::error_code Counted(Faults& faults) {
    try {
        faults.Count();
        return {};
    } catch (const std::system_error& error) {
        return error.code();
    }
}

} // namespace

std::error_code PrivateFiles::MakeFolder(const std::string& folder) {
    const std::error_code error = Counted(mFaults);
    return !error && refused.contains(folder) ? std::make_error_code(std::errc::operation_not_permitted) : error;
}

std::error_code PrivateFiles::List(const std::string& folder, std::vector<FolderEntry>& entries) const {
    entries.clear();
    if (const std::error_code error = Counted(mFaults)) {
        return error;
    }
    for (const auto& [path, bytes] : mFiles.contents) {
        const std::size_t end = path.find_last_of('/');
        if (end != std::string::npos && path.substr(0, end) == folder) {
            const auto time = mTimes.find(path);
            entries.push_back({path.substr(end + 1), bytes.size(), time != mTimes.end() ? time->second : 0});
        }
    }
    return {};
}

std::error_code PrivateFiles::Write(const std::string& path, std::string_view bytes, Flushing) {
    if (const std::error_code error = Counted(mFaults)) {
        return error;
    }
    if (readOnly.contains(path.substr(0, path.find_last_of('/')))) {
        return std::make_error_code(std::errc::permission_denied);
    }
    mFiles.contents[path] = bytes;
    mTimes[path] = static_cast<std::int64_t>(mFaults.Calls());
    return {};
}

std::error_code PrivateFiles::Rewrite(const std::string& path, std::string_view bytes, Flushing flushing) {
    mFiles.contents.erase(path);
    return Write(path, bytes, flushing);
}

std::error_code PrivateFiles::Flush(const std::string&) {
    return Counted(mFaults);
}

std::error_code PrivateFiles::Remove(const std::string& path) {
    const std::error_code error = Counted(mFaults);
    if (!error) {
        mFiles.contents.erase(path);
    }
    return error;
}

std::optional<std::string> PrivateFiles::ProcessStart(std::uint64_t id) const {
    const auto process = processes.find(id);
    return process != processes.end() ? std::optional(process->second) : std::nullopt;
}

} // namespace tessaly::memory
