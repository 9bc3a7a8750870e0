// All is found by names alone.
#include "programs/psf/TestCases.h"

#include "programs/psf/base/Paths.h"

#include <algorithm>
#include <string_view>

namespace tessaly::psf {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ScriptExtension = ".events";
constexpr std::string_view ExpectedExtension = ".expected";

std::string_view Without(std::string_view name, std::string_view end) {
    return name.substr(0, name.size() - end.size());
}

bool Has(const std::vector<std::string>& sorted, std::string_view name) {
    return std::binary_search(sorted.begin(), sorted.end(), name);
}

// Whether the script called `stem` belongs to the block `name`, and to none of `blocks` with a longer name.
bool BelongsTo(std::string_view stem, std::string_view name, const std::vector<std::string>& blocks) {
    if (!stem.starts_with(name) || (stem.size() > name.size() && stem[name.size()] != '.')) {
        return false;
    }
    for (std::size_t end = stem.size(); end > name.size(); end = stem.rfind('.', end - 1)) {
        if (Has(blocks, stem.substr(0, end))) {
            return false;
        }
    }
    return true;
}

} // namespace

std::vector<TestCase> TestCases::Of(const std::string& file) {
    const std::string separators = std::string("/") + static_cast<char>(fs::path::preferred_separator);
    const std::size_t front = file.find_last_of(separators) + 1;
    const std::string folder = file.substr(0, front);
    const std::string_view fileName = std::string_view(file).substr(front);
    const std::string_view name = IsPsfName(fileName) ? Without(fileName, PsfExtension) : fileName;
    const Folder& found = Look(folder);
    std::vector<TestCase> cases;
    for (const std::string& script : found.scripts) {
        const std::string_view stem = Without(script, ScriptExtension);
        if (BelongsTo(stem, name, found.blocks)) {
            const std::string expected = std::string(stem) + std::string(ExpectedExtension);
            cases.push_back({folder + script, Has(found.expected, expected) ? folder + expected : ""});
        }
    }
    // ".events" would stand between ".a.events" and ".f.events".
    std::stable_partition(cases.begin(), cases.end(), [&](const TestCase& each) {
        return each.script.size() == front + name.size() + ScriptExtension.size();
    });
    return cases;
}

const TestCases::Folder& TestCases::Look(const std::string& folder) {
    const auto [entry, isNew] = mFolders.try_emplace(folder);
    Folder& found = entry->second;
    if (!isNew) {
        return found;
    }
    std::error_code error;
    fs::directory_iterator entries(ToPath(folder.empty() ? "." : folder), error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        const std::string name = NameIn(*entries);
        if (name.ends_with(ScriptExtension)) {
            found.scripts.push_back(name);
        } else if (name.ends_with(ExpectedExtension)) {
            found.expected.push_back(name);
        } else if (IsPsfName(name)) {
            found.blocks.emplace_back(Without(name, PsfExtension));
        }
    }
    for (std::vector<std::string>* names : {&found.scripts, &found.expected, &found.blocks}) {
        std::sort(names->begin(), names->end());
    }
    return found;
}

} // namespace tessaly::psf
