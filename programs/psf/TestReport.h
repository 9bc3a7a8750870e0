// How the cases of psf test went, as TAP on standard output and as JUnit's XML.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly::psf {

struct CaseResult {
    enum class Outcome { Passed, Failed, NotRun };

    std::string block;  // the path of the PSF file
    std::string script; // and that of the script
    Outcome outcome = Outcome::Passed;
    std::string message;
    std::string place; // "Blink.events:3", say; "" for none
    std::string expected;
    std::string got;      // empty together with `expected` where nothing was compared
    std::string messages; // what the compiler said
    std::string output;
    std::string errors;
    double seconds = 0;
};

// `text` as UTF-8 that may stand in YAML and XML: what cannot be shown is "?", what is no UTF-8 U+FFFD.
std::string CleanText(std::string_view text);

// The same with what XML has for its own characters.
std::string XmlText(std::string_view text);

// The line of the case with this number; with a block of YAML under it when it failed.
std::string TapCase(std::size_t number, const CaseResult& result);

// `text` as lines that count for nothing.
std::string TapComment(std::string_view text);

class JUnitReport {
public:
    // Cases of one block come one after the other.
    void Add(const CaseResult& result);

    // The whole document.
    std::string Document();

private:
    void EndSuite();

    std::string mSuites;
    std::string mBlock;
    std::string mCases; // of the block
    std::size_t mTests = 0;
    std::size_t mFailures = 0;
    std::size_t mErrors = 0;
    double mSeconds = 0;
};

} // namespace tessaly::psf
