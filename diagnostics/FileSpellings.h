// The spellings of one file's path that a tool may print, and how they are found in a line of text. Paths are compared
// as text: the file need not exist, and links are not followed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class FileSpellings {
public:
    // A relative `path` is one of the current folder. A path of Windows begins with a drive letter, ":" and a slash or
    // backslash, or with two backslashes. In it both separate. An empty path is spelled in no way.
    explicit FileSpellings(const std::string& path);

    // What all spellings end with.
    const std::string& BaseName() const { return mBaseName; }

    // Where the longest spelling begins that ends at `end` in `line`; no value when there is none. A spelling is the
    // path as given, its normal form, a relative end of that, or a path with one of these as its normal form; in front
    // of it stands the line's beginning, a blank, a colon, "=", a quote, an opening bracket or a sequence of a
    // terminal.
    std::optional<std::size_t> FindBegin(std::string_view line, std::size_t end) const;

private:
    bool IsSpelling(std::string_view path) const;

    bool mIsWindows = false;
    std::string mBaseName;
    std::vector<std::string> mSpellings; // the longest first
};

} // namespace tessaly
