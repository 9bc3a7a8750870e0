// Line by line: what a line belongs to is told by the last mark.
#include "tests/unit/editing/Cases.h"

#include <fstream>

namespace tessaly {

std::vector<Case> ReadCases(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::vector<Case> cases;
    std::string* text = nullptr;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("= ")) {
            cases.push_back({line.substr(2), "", "", ""});
            text = &cases.back().before;
        } else if (line.starts_with("- ")) {
            cases.back().keys = line.substr(2);
            text = &cases.back().after;
        } else if (text != nullptr) {
            *text += line + "\n";
        }
    }
    for (Case& each : cases) {
        each.before.pop_back();
        each.after.erase(each.after.find_last_not_of('\n') + 1);
    }
    return cases;
}

} // namespace tessaly
