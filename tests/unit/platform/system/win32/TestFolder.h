// A folder of its own for a test, with blanks and umlauts in its path, and what a test needs around it. Files are
// looked at by the standard library, not by what is tested.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tessaly {

class TestFolder {
public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    // The path of `name` in the folder, in UTF-8.
    std::string Path(const std::string& name) const;

    void Write(const std::string& name, const std::string& bytes) const;
    std::string Read(const std::string& name) const;

    // Whether there is such a file and nobody keeps it to himself, as one that is just being renamed.
    bool Has(const std::string& name) const;

    // The names in the folder, sorted.
    std::vector<std::string> Names() const;

private:
    std::filesystem::path mPath;
};

// Asks again and again until `condition` holds, for half a minute at most, and returns whether it did.
bool WaitUntil(const std::function<bool()>& condition);

// The path of a program beside this one.
std::string ProgramBeside(const std::string& name);

} // namespace tessaly
