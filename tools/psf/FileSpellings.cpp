// Most spellings are known beforehand; those with "." and ".." in them are made normal first.
#include "tools/psf/FileSpellings.h"

#include <algorithm>
#include <filesystem>

namespace tessaly::psf {

namespace {

constexpr std::string_view WindowsSeparators = "/\\";

// A longer text in front of a base name is not looked at as a path.
constexpr std::size_t LongestPath = 4096;

bool IsWindowsPath(std::string_view path) {
    return path.size() > 2 && path[1] == ':' && WindowsSeparators.find(path[2]) != std::string_view::npos;
}

std::string NormalPath(std::string path) {
    return std::filesystem::path(std::move(path)).lexically_normal().string();
}

// `path` and every relative path that it ends with.
void AddEndings(const std::string& path, std::string_view separators, std::vector<std::string>& spellings) {
    spellings.push_back(path);
    std::size_t separator = path.find_first_of(separators);
    while (separator != std::string::npos) {
        spellings.push_back(path.substr(separator + 1));
        separator = path.find_first_of(separators, separator + 1);
    }
}

} // namespace

FileSpellings::FileSpellings(const std::string& path) {
    if (path.empty()) {
        return;
    }
    const bool windows = IsWindowsPath(path);
    const std::string_view separators = windows ? WindowsSeparators : "/";
    mBaseName = path.substr(path.find_last_of(separators) + 1);
    if (windows) {
        std::string slashes = path;
        std::replace(slashes.begin(), slashes.end(), '\\', '/');
        AddEndings(NormalPath(slashes), separators, mSpellings);
        AddEndings(path, separators, mSpellings);
    } else {
        AddEndings(NormalPath(std::filesystem::absolute(path).string()), separators, mSpellings);
        mSpellings.push_back(path);
    }
    std::stable_sort(mSpellings.begin(), mSpellings.end(),
                     [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

std::optional<std::size_t> FileSpellings::FindBegin(std::string_view line, std::size_t end) const {
    constexpr std::string_view boundaries = " \t:(";
    const std::string_view text = line.substr(0, end);
    for (const std::string& spelling : mSpellings) {
        const std::size_t begin = end - std::min(end, spelling.size());
        const bool free = begin == 0 || boundaries.find(text[begin - 1]) != std::string_view::npos;
        if (free && text.ends_with(spelling)) {
            return begin;
        }
    }
    if (end <= LongestPath && IsSpelling(text)) {
        return 0;
    }
    const std::size_t begin = text.find_last_of(boundaries) + 1;
    return end - begin <= LongestPath && IsSpelling(text.substr(begin)) ? std::optional(begin) : std::nullopt;
}

bool FileSpellings::IsSpelling(std::string_view path) const {
    return std::find(mSpellings.begin(), mSpellings.end(), NormalPath(std::string(path))) != mSpellings.end();
}

} // namespace tessaly::psf
