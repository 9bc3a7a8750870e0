// A text that stays the same is not taken apart again.
#include "ui/Headers.h"

#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <deque>
#include <system_error>
#include <utility>

namespace tessaly {

namespace {

// Of all headers together, in bytes: more than any C library needs, and read in a moment.
constexpr std::size_t MostText = 4'000'000;

// With the separator behind it; "" where there is none.
std::string FolderOf(std::string_view path) {
    return std::string(path.substr(0, path.find_last_of("/\\") + 1));
}

bool IsFullPath(std::string_view path) {
    return path.starts_with('/') || path.starts_with('\\') || path.substr(1, 1) == ":";
}

// The first word of a command line.
std::string ProgramIn(const std::string& commandLine) {
    return commandLine.starts_with('"') ? commandLine.substr(1, commandLine.find('"', 1) - 1) : commandLine;
}

} // namespace

std::span<const CName> Headers::Names(const std::vector<std::string>& included, const Places& places) {
    if (!mIsCurrent || included != mIncluded || places != mPlaces) {
        mNames.clear();
        Search search = {FoldersOf(places), {}, MostText};
        Add(included, FolderOf(places.cFile), search);
        std::erase_if(mHeaders, [&search](const auto& header) { return !search.seen.contains(header.first); });
        mIncluded = included;
        mPlaces = places;
        mIsCurrent = true;
    }
    return mNames;
}

std::vector<std::string> Headers::FoldersOf(const Places& places) {
    const std::string batchFile = ProgramIn(places.compBat);
    std::vector<std::string> folders;
    std::string list;
    try {
        list = ReadWhole(mFiles, batchFile + ".includes", MostText);
    } catch (const std::system_error&) {
        list = ""; // it has none
    }
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find_first_of("\r\n", begin), list.size());
        const std::string_view line = Trim(std::string_view(list).substr(begin, end - begin));
        if (!line.empty() && !line.starts_with('#')) {
            folders.push_back((IsFullPath(line) ? "" : FolderOf(batchFile)) + std::string(line) + "/");
        }
        begin = end + 1;
    }
    if (!places.document.empty()) {
        folders.push_back(FolderOf(places.document));
    }
    return folders;
}

// The path of what is included, with its brackets or quotes, by a file in the folder `beside`; "" where there is none.
std::string Headers::Find(const std::string& included, const std::string& beside, const Search& search) const {
    const std::string name = included.substr(1, included.size() - 2);
    if (IsFullPath(name)) {
        return mFiles.FileExists(name) ? name : "";
    }
    if (included.front() == '"' && mFiles.FileExists(beside + name)) {
        return beside + name;
    }
    for (const std::string& folder : search.folders) {
        if (mFiles.FileExists(folder + name)) {
            return folder + name;
        }
    }
    return "";
}

const Headers::Header& Headers::Read(const std::string& path, std::size_t room) {
    std::string text;
    try {
        const std::string bytes = ReadWhole(mFiles, path, room);
        if (IsUtf8(bytes)) {
            text = bytes;
        } else {
            mCodePage.AppendDecoded(bytes, text);
        }
    } catch (const std::system_error&) {
        text = "";
    }
    Header& header = mHeaders[path];
    if (header.text != text) {
        header = {text, DeclaredNames(text), IncludedNames(text)};
    }
    return header;
}

// Files wait their turn in a list: each may include others.
void Headers::Add(const std::vector<std::string>& included, const std::string& beside, Search& search) {
    std::deque<std::pair<std::string, std::string>> waiting;
    const auto wait = [&waiting](const std::vector<std::string>& names, const std::string& folder) {
        for (const std::string& name : names) {
            waiting.emplace_back(name, folder);
        }
    };
    wait(included, beside);
    for (; !waiting.empty(); waiting.pop_front()) {
        const std::string path = Find(waiting.front().first, waiting.front().second, search);
        if (path.empty() || !search.seen.insert(path).second) {
            continue;
        }
        const Header& header = Read(path, search.room);
        search.room -= std::min(search.room, header.text.size());
        mNames.insert(mNames.end(), header.names.begin(), header.names.end());
        wait(header.included, FolderOf(path));
    }
}

} // namespace tessaly
