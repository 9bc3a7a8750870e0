// Folders are looked into with the standard library; a path in it is UTF-8 on every system.
#include "programs/psf/base/Paths.h"

#include "platform/text/Ascii.h"

#include <algorithm>
#include <cstring>
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

// The PSF files in a folder and below, in byte order of their paths. Only the names in one folder are held at a time:
// all paths of a fleet are more memory than a file.
class FolderWalk {
public:
    FolderWalk(const std::function<int(const std::string&)>& use, const TellUnread& tell) : mUse(use), mTell(tell) {}

    // Paths are made by hand: on Windows, too, "/" separates.
    void Enter(const std::string& folder) {
        const std::string list = NamesIn(folder);
        std::vector<const char*> names;
        names.reserve(static_cast<std::size_t>(std::count(list.begin(), list.end(), '\0')));
        for (const char* name = list.data(); name != list.data() + list.size(); name += std::strlen(name) + 1) {
            names.push_back(name);
        }
        std::sort(names.begin(), names.end(), [](const char* a, const char* b) { return std::strcmp(a, b) < 0; });
        const bool isSeparated = folder.ends_with('/') || folder.ends_with(fs::path::preferred_separator);
        const std::string front = isSeparated ? folder : folder + "/";
        for (const char* const name : names) {
            std::string path = front + name;
            if (path.ends_with('/')) {
                path.pop_back();
                Enter(path);
            } else {
                mFoundAny = true;
                mWorst = std::max(mWorst, mUse(path));
            }
        }
    }

    // Says so when there was no file.
    int End(const std::string& folder) const {
        if (!mFoundAny && mWorst == Success) {
            PrintError(folder + ": there is no PSF file in this folder");
        }
        return mWorst;
    }

private:
    // Of the files, and with "/" behind them of the folders, which stand among the others like their paths. Each has a
    // NUL behind it: two thousand strings are a third as much memory as a file.
    std::string NamesIn(const std::string& folder) {
        std::string names;
        std::error_code error;
        fs::directory_iterator entries(ToPath(folder), error);
        for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
            const std::string name = NameIn(*entries);
            std::error_code ignored;
            if (entries->is_directory(ignored)) {
                if (!name.starts_with('.') && !entries->is_symlink(ignored)) {
                    names.append(name).append("/").push_back('\0');
                }
            } else if (IsPsfName(name) && IsFile(*entries)) {
                names.append(name).push_back('\0');
            }
        }
        if (error) {
            mTell(folder, Reason(error));
            mWorst = std::max(mWorst, ExitStatus(Status::LoadFailed));
        }
        return names;
    }

    const std::function<int(const std::string&)>& mUse;
    const TellUnread& mTell;
    bool mFoundAny = false;
    int mWorst = Success;
};

// A list may hold any name, so "-" is a file there.
std::vector<std::string> SplitList(std::string_view list) {
    const char separator = list.find('\0') == std::string_view::npos ? '\n' : '\0';
    std::vector<std::string> paths;
    while (!list.empty()) {
        std::string_view path = TakeLine(list, separator);
        if (separator == '\n' && path.ends_with('\r')) {
            path.remove_suffix(1);
        }
        if (!path.empty()) {
            paths.emplace_back(path == StandardInput ? "./-" : path);
        }
    }
    return paths;
}

int UsePath(const std::string& path, const std::function<int(const std::string&)>& use, const TellUnread& tell) {
    std::error_code ignored;
    if (path == StandardInput || !fs::is_directory(ToPath(path), ignored)) {
        return use(path);
    }
    FolderWalk walk(use, tell);
    walk.Enter(path);
    return walk.End(path);
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
                const std::function<int(const std::string& file)>& use, const TellUnread& tell) {
    int worst = Success;
    for (const std::string& path : paths) {
        worst = std::max(worst, UsePath(path, use, tell));
    }
    if (filesFrom) {
        std::string list;
        if (!ReadInput(session, *filesFrom, list, tell)) {
            return ExitStatus(Status::LoadFailed);
        }
        for (const std::string& path : SplitList(list)) {
            worst = std::max(worst, UsePath(path, use, tell));
        }
    }
    return worst;
}

} // namespace tessaly::psf
