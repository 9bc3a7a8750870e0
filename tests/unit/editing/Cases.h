// Golden cases of texts in one file: "= NAME", a text, "- KEYS", and what comes of it. A blank line in front of "="
// belongs to no text.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaly {

struct Case {
    std::string name;
    std::string before;
    std::string keys;
    std::string after;
};

std::vector<Case> ReadCases(const std::filesystem::path& path);

} // namespace tessaly
