// psf test: runs program blocks with the scripts beside them, and compares.
#pragma once

#include "programs/psf/base/Session.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::psf {

inline constexpr int CaseFailed = 1;

// As the command line has an option without a value.
inline constexpr std::string_view NoFile = "true";

struct TestOptions {
    std::size_t jobs = 1;                // how many compilers and programs may run at a time
    double timeout = 10;                 // seconds for each case
    std::optional<std::string> junit;    // the file for JUnit's XML
    std::vector<std::string> channels;   // NAME=N, for the programs
    std::optional<std::string> coverage; // tells which lines ran, and in this file as Cobertura's XML
};

// Builds each of `files` that has scripts beside it as Build does of several files, runs each script strictly, and
// prints TAP 14 in the order of the files and cases. Returns Success, CaseFailed, the status NotFound when there is no
// case at all, CompilerMissing when the lines that ran are not known, or what Replace returns when the report cannot be
// written.
int Test(Session& session, const std::vector<std::string>& files, const TestOptions& options);

} // namespace tessaly::psf
