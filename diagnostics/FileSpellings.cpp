// Most spellings are known beforehand; those with "." and ".." in them are made normal first.
#include "diagnostics/FileSpellings.h"

#include "platform/system/Environment.h"
#include "platform/text/Ascii.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr std::string_view WindowsSeparators = "/\\";

// What may stand in front of a path.
constexpr std::string_view Boundaries = " \t:([<='\"`";

// The longest sequence of a terminal that is looked for there.
constexpr std::size_t LongestSequence = 24;

// A longer text in front of a base name is not looked at as a path.
constexpr std::size_t LongestPath = 4096;

bool IsWindowsPath(std::string_view path) {
    const bool hasDrive =
        path.size() > 2 && path[1] == ':' && WindowsSeparators.find(path[2]) != std::string_view::npos;
    return hasDrive || path.starts_with("\\\\");
}

// `path` without needless ".", ".." and slashes. The standard library's own way takes no text that is not UTF-8 on
// Windows, and a compiler may write anything.
std::string NormalPath(std::string_view path) {
    std::vector<std::string_view> parts;
    const bool absolute = path.starts_with('/');
    while (!path.empty()) {
        const std::string_view part = TakeLine(path, '/');
        const bool up = part == "..";
        if (up && !parts.empty() && parts.back() != "..") {
            parts.pop_back();
        } else if (!part.empty() && part != "." && !(up && absolute)) {
            parts.push_back(part);
        }
    }
    std::string normal;
    for (const std::string_view part : parts) {
        normal.append(absolute || !normal.empty() ? "/" : "").append(part);
    }
    return normal;
}

std::string WithSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
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

// Whether a path may begin behind `front`: also behind a sequence that colours it.
bool IsBoundary(std::string_view front) {
    if (front.empty() || Boundaries.find(front.back()) != std::string_view::npos) {
        return true;
    }
    front.remove_prefix(front.size() - std::min(front.size(), LongestSequence));
    const std::size_t escape = front.rfind("\x1B[");
    const std::string_view sequence = escape == std::string_view::npos ? "" : front.substr(escape + 2);
    return !sequence.empty() && IsLetter(sequence.back()) &&
           sequence.find_first_not_of("0123456789;") == sequence.size() - 1;
}

} // namespace

FileSpellings::FileSpellings(const std::string& path) {
    if (path.empty()) {
        return;
    }
    const std::string full = IsWindowsPath(path) ? path : FullPath(path);
    mIsWindows = IsWindowsPath(full);
    const std::string_view separators = mIsWindows ? WindowsSeparators : "/";
    mBaseName = path.substr(path.find_last_of(separators) + 1);
    if (mIsWindows) {
        AddEndings(NormalPath(WithSlashes(full)), separators, mSpellings);
        AddEndings(full, separators, mSpellings);
    } else {
        AddEndings(NormalPath(full), separators, mSpellings);
    }
    mSpellings.push_back(path);
    std::stable_sort(mSpellings.begin(), mSpellings.end(),
                     [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

std::optional<std::size_t> FileSpellings::FindBegin(std::string_view line, std::size_t end) const {
    const std::string_view text = line.substr(0, end);
    for (const std::string& spelling : mSpellings) {
        const std::size_t begin = end - std::min(end, spelling.size());
        if (text.ends_with(spelling) && IsBoundary(text.substr(0, begin))) {
            return begin;
        }
    }
    if (end <= LongestPath && IsSpelling(text)) {
        return 0;
    }
    const std::size_t begin = text.find_last_of(Boundaries) + 1;
    return end - begin <= LongestPath && IsSpelling(text.substr(begin)) ? std::optional(begin) : std::nullopt;
}

bool FileSpellings::IsSpelling(std::string_view path) const {
    const std::string normal = mIsWindows ? NormalPath(WithSlashes(std::string(path))) : NormalPath(path);
    return std::find(mSpellings.begin(), mSpellings.end(), normal) != mSpellings.end();
}

} // namespace tessaly
