// What psf check finds, in the form that the user's other tools read.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tessaly::psf {

struct Problem {
    std::string file;
    std::size_t line = 1;
    std::string member; // "" for the file as a whole
    std::string rule;
    bool isError = false; // the file cannot be read, or does not load
    std::string message;
};

class Report {
public:
    virtual ~Report() = default;
    virtual void Tell(const Problem& problem) = 0;

    // Called once, behind all problems.
    virtual void End() {}
};

// The names of the formats, for the help.
inline constexpr const char* ReportFormats[] = {"text", "gcc", "json", "sarif", "github"};

// The report of that format on standard output. In text a rule is told only `withRules` and only for what a text shows;
// errors are left out, since they go to standard error in any case.
std::unique_ptr<Report> MakeReport(std::string_view format, bool withRules);

} // namespace tessaly::psf
