// The scripts beside a program source file that test it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tessaly::psf {

struct TestCase {
    std::string script;   // its path
    std::string expected; // the path of what it should print; "" where there is none
};

class TestCases {
public:
    // The cases of the PSF file at `file`: NAME.events and then each NAME.CASE.events, in byte order. A script belongs
    // to the PSF file with the longest NAME that fits. None where the folder cannot be read.
    std::vector<TestCase> Of(const std::string& file);

private:
    // The names in a folder.
    struct Folder {
        std::vector<std::string> scripts;  // sorted
        std::vector<std::string> expected; // sorted
        std::vector<std::string> blocks;   // sorted; without ".psf"
    };
    const Folder& Look(const std::string& folder);

    std::map<std::string, Folder> mFolders; // each is read once
};

} // namespace tessaly::psf
