// Folders are looked into with the standard library; a path in it is UTF-8 on every system.
#include "programs/psf/Paths.h"

#include "platform/text/Ascii.h"

#include <algorithm>
#include <filesystem>

namespace tessaly::psf {

namespace {

namespace fs = std::filesystem;

// A link that leads nowhere is kept, so that somebody hears of it.
bool IsFile(const fs::directory_entry& entry) {
    std::error_code ignored;
    const fs::file_type type = entry.status(ignored).type();
    return type == fs::file_type::regular || (type == fs::file_type::not_found && entry.is_symlink(ignored));
}

class Collector {
public:
    // Adds the PSF files in `folder` and below to those found. Paths are made by hand: on Windows, too, "/" separates.
    void Add(const std::string& folder) {
        std::error_code error;
        fs::directory_iterator entries(ToPath(folder), error);
        for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
            Add(folder, *entries);
        }
        if (error) {
            PrintError(folder + ": " + Reason(error));
            mFailed = true;
        }
    }

    std::vector<std::string> TakeSorted() {
        std::sort(mFiles.begin(), mFiles.end());
        return std::move(mFiles);
    }

    bool Failed() const { return mFailed; }

private:
    void Add(const std::string& folder, const fs::directory_entry& entry) {
        const std::string name = NameIn(entry);
        const std::string path =
            folder + (folder.ends_with('/') || folder.ends_with(fs::path::preferred_separator) ? "" : "/") + name;
        std::error_code ignored;
        if (entry.is_directory(ignored)) {
            if (!name.starts_with('.') && !entry.is_symlink(ignored)) {
                Add(path);
            }
        } else if (IsPsfName(name) && IsFile(entry)) {
            mFiles.push_back(path);
        }
    }

    std::vector<std::string> mFiles;
    bool mFailed = false;
};

// A list may hold any name, so "-" is a file there.
std::vector<std::string> SplitList(std::string_view list) {
    const char separator = list.find('\0') == std::string_view::npos ? '\n' : '\0';
    std::vector<std::string> paths;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(separator), list.size());
        std::string_view path = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (separator == '\n' && path.ends_with('\r')) {
            path.remove_suffix(1);
        }
        if (!path.empty()) {
            paths.emplace_back(path == StandardInput ? "./-" : path);
        }
    }
    return paths;
}

int UsePath(const std::string& path, const std::function<int(const std::string&)>& use) {
    std::error_code ignored;
    if (path == StandardInput || !fs::is_directory(ToPath(path), ignored)) {
        return use(path);
    }
    Collector collector;
    collector.Add(path);
    int worst = collector.Failed() ? ExitStatus(Status::LoadFailed) : Success;
    const std::vector<std::string> files = collector.TakeSorted();
    if (files.empty() && worst == Success) {
        PrintError(path + ": there is no PSF file in this folder");
    }
    for (const std::string& file : files) {
        worst = std::max(worst, use(file));
    }
    return worst;
}

} // namespace

fs::path ToPath(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

std::string NameIn(const fs::directory_entry& entry) {
    const std::u8string name = entry.path().filename().u8string();
    return {name.begin(), name.end()};
}

bool IsPsfName(std::string_view name) {
    return name.size() >= PsfExtension.size() &&
           EqualsIgnoringCase(name.substr(name.size() - PsfExtension.size()), PsfExtension);
}

int ForEachFile(Session& session, const std::vector<std::string>& paths, const std::optional<std::string>& filesFrom,
                const std::function<int(const std::string& file)>& use) {
    int worst = Success;
    for (const std::string& path : paths) {
        worst = std::max(worst, UsePath(path, use));
    }
    if (filesFrom) {
        std::string list;
        if (!ReadInput(session, *filesFrom, list)) {
            return ExitStatus(Status::LoadFailed);
        }
        for (const std::string& path : SplitList(list)) {
            worst = std::max(worst, UsePath(path, use));
        }
    }
    return worst;
}

} // namespace tessaly::psf
