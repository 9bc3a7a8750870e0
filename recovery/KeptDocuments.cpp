// The name is for people; what the program needs stands in the origin.
#include "recovery/KeptDocuments.h"

#include "platform/text/Utf8.h"

#include <algorithm>
#include <map>

namespace tessaly {

namespace {

// With date, reason and ending a name stays below the 255 bytes that file systems take.
constexpr std::size_t LongestName = 100;

// The name of the document's file without folder and ending, as every system takes it.
std::string DocumentName(const std::string& path) {
    std::string name = path.substr(path.find_last_of("/\\") + 1);
    name = name.substr(0, name.find_last_of('.'));
    std::size_t end = std::min(name.size(), LongestName);
    while (end < name.size() && end > 0 && IsContinuation(name[end])) {
        --end;
    }
    name.resize(end);
    for (char& character : name) {
        constexpr std::string_view forbidden = "\"*:<>?|\x7f";
        if (static_cast<unsigned char>(character) < ' ' || forbidden.find(character) != std::string_view::npos) {
            character = '_';
        }
    }
    return name.empty() ? "untitled" : name;
}

// One document in the folder: its files have one name up to the ending.
struct Kept {
    std::string name;
    std::vector<std::string> files;
    std::uint64_t size = 0;
    std::int64_t time = 0;
};

std::vector<Kept> NewestFirst(const std::vector<FolderEntry>& entries) {
    std::map<std::string, Kept> byName;
    for (const FolderEntry& entry : entries) {
        Kept& kept = byName[entry.name.substr(0, entry.name.find_last_of('.'))];
        kept.files.push_back(entry.name);
        kept.size += entry.size;
        kept.time = std::max(kept.time, entry.time);
    }
    std::vector<Kept> documents;
    for (auto& [name, kept] : byName) {
        documents.push_back(std::move(kept));
        documents.back().name = name;
    }
    std::stable_sort(documents.begin(), documents.end(), [](const Kept& a, const Kept& b) { return a.time > b.time; });
    return documents;
}

void RemoveOldest(PrivateFiles& own, const std::string& folder, const std::string& newest) {
    std::vector<FolderEntry> entries;
    if (own.List(folder, entries)) {
        return; // the next one that is kept tries again
    }
    std::size_t count = 0;
    std::uint64_t size = 0;
    for (const Kept& kept : NewestFirst(entries)) {
        ++count;
        size += kept.size;
        if ((count > MostKept || size > MostKeptBytes) && kept.name != newest) {
            for (const std::string& file : kept.files) {
                own.Remove(std::string(folder).append("/").append(file));
            }
        }
    }
}

} // namespace

std::string KeptFolder(const std::string& folder) {
    return folder + "/kept";
}

std::error_code KeepDocument(PrivateFiles& own, const std::string& folder, std::string_view bytes,
                             const Origin& origin) {
    const std::string keptFolder = KeptFolder(folder);
    std::error_code error = own.MakeFolder(folder);
    if (!error) {
        error = own.MakeFolder(keptFolder);
    }
    std::vector<FolderEntry> entries;
    if (!error) {
        error = own.List(keptFolder, entries);
    }
    if (error) {
        return error;
    }
    const std::string name = DocumentName(origin.path) + " " + TimeText(origin.time, "%Y-%m-%d %H-%M-%S", Zone::Local) +
                             " " + std::string(ReasonName(origin.reason));
    const auto isTaken = [&entries](const std::string& stem) {
        return std::any_of(entries.begin(), entries.end(),
                           [&stem](const FolderEntry& entry) { return entry.name.starts_with(stem + "."); });
    };
    std::string stem = name;
    for (int number = 2; isTaken(stem); ++number) {
        stem = name + " " + std::to_string(number);
    }
    error = WriteCopy(own, keptFolder, stem, bytes, origin, Flushing::Now);
    if (!error) {
        RemoveOldest(own, keptFolder, stem);
    }
    return error;
}

} // namespace tessaly
