// gcov prints each line of a source with how often it ran in front: "5:", "-:" for no code, "#####:" for never.
#include "programs/psf/Coverage.h"

#include "document/Members.h"
#include "platform/system/Environment.h"
#include "platform/system/MemoryFile.h"
#include "platform/text/Ascii.h"
#include "programs/psf/base/LineCounter.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/PsfWarnings.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace tessaly::psf {

namespace {

struct CountedLine {
    std::size_t number = 0;
    std::uint64_t hits = 0;
};

// A line of gcov's: "COUNT:NUMBER:TEXT", with blanks in front of both. No value for one without code.
std::optional<CountedLine> ReadCount(std::string_view line) {
    const std::size_t first = line.find(':');
    const std::size_t second = line.find(':', first + 1);
    if (first == std::string_view::npos || second == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view count = Trim(line.substr(0, first));
    const std::string_view number = Trim(line.substr(first + 1, second - first - 1));
    CountedLine counted;
    std::from_chars(number.data(), number.data() + number.size(), counted.number);
    if (!count.starts_with('#') && !count.starts_with('=') &&
        std::from_chars(count.data(), count.data() + count.size(), counted.hits).ec != std::errc()) {
        return std::nullopt;
    }
    return counted.number > 0 ? std::optional(counted) : std::nullopt;
}

std::size_t Covered(const MemberCoverage& member) {
    return static_cast<std::size_t>(
        std::count_if(member.lines.begin(), member.lines.end(), [](const auto& line) { return line.second > 0; }));
}

// "3 of 5 lines ran"
std::string Ran(std::size_t covered, std::size_t lines) {
    return std::to_string(covered) + " of " + std::to_string(lines) + (lines == 1 ? " line ran" : " lines ran");
}

// The numbers of the lines that did not run, as in "4, 6-8". Lines without code do not part others.
std::string Missed(const MemberCoverage& member) {
    std::string text;
    for (auto line = member.lines.begin(); line != member.lines.end();) {
        const auto end = std::find_if(line, member.lines.end(), [](const auto& each) { return each.second > 0; });
        if (end == line) {
            ++line;
            continue;
        }
        const std::size_t last = std::prev(end)->first;
        text += (text.empty() ? "" : ", ") + std::to_string(line->first) +
                (last > line->first ? "-" + std::to_string(last) : "");
        line = end;
    }
    return text;
}

std::string Rate(std::size_t covered, std::size_t lines) {
    char text[40];
    std::snprintf(text, sizeof text, "%.4f",
                  lines == 0 ? 1.0 : static_cast<double>(covered) / static_cast<double>(lines));
    return text;
}

// The attributes that all elements of Cobertura's have; branches are not looked at.
std::string Rates(std::size_t covered, std::size_t lines) {
    return " line-rate=\"" + Rate(covered, lines) + "\" branch-rate=\"0\" complexity=\"0\"";
}

std::string Name(std::string_view attribute, std::string_view value) {
    return " " + std::string(attribute) + "=\"" + XmlText(value) + "\"";
}

std::string CurrentFolder() {
    std::error_code ignored;
    const std::u8string path = std::filesystem::current_path(ignored).u8string();
    return {path.begin(), path.end()};
}

// The lines of a file that hold members' texts, by what the reader met.
class PlacesInFile {
public:
    PlacesInFile(Session& session, const std::string& file)
        : mBytes(ReadWhole(session.files, file)),
          mSource(mBytes),
          mDocument(mSource, *session.codePage) {
        mDocument.LoadFile(file, &mObserver);
        mObserver.Finish(mDocument, mBytes, *session.codePage);
    }

    // The lines of `member` by their numbers in the file.
    std::map<std::size_t, std::uint64_t> LinesOf(const MemberCoverage& member) const {
        std::map<std::size_t, std::uint64_t> lines;
        const std::optional<CCodeOrigin> origin = FindMember(mDocument, member.member);
        LineCounter counter(mBytes);
        for (auto line = member.lines.begin(); origin && line != member.lines.end(); ++line) {
            lines[counter.LineAt(mObserver.OffsetOf(*origin, line->first, mBytes))] = line->second;
        }
        return lines;
    }

private:
    std::string mBytes;
    MemoryFile mSource;
    VornSrcObj mDocument;
    PsfWarnings mObserver{false};
};

std::string NameOfFile(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

// What reads notes like these. gcc's and clang's begin alike, but for the version.
std::string GcovCommand(const std::string& notes) {
    const std::string chosen = ProcessEnvironment("GCOV").value_or("");
    constexpr std::string_view versionOfClang = "*804";
    return !chosen.empty() ? chosen : notes.substr(4, 4) == versionOfClang ? "llvm-cov gcov" : "gcov";
}

} // namespace

void CoverageReport::Add(const std::string& file, const std::vector<MemberCoverage>& members) {
    const PlacesInFile places(mSession, file);
    const std::string shown = file.substr(file.starts_with("./") ? 2 : 0); // readers put it behind the current folder
    std::string classes;
    std::size_t allLines = 0;
    std::size_t allCovered = 0;
    for (const MemberCoverage& member : members) {
        const std::size_t covered = Covered(member);
        classes += "        <class" + Name("name", member.member) + Name("filename", shown) +
                   Rates(covered, member.lines.size()) + ">\n          <methods/>\n          <lines>\n";
        for (const auto& [number, hits] : places.LinesOf(member)) {
            classes +=
                "            <line number=\"" + std::to_string(number) + "\" hits=\"" + std::to_string(hits) + "\"/>\n";
        }
        classes += "          </lines>\n        </class>\n";
        allLines += member.lines.size();
        allCovered += covered;
    }
    mPackages += "    <package" + Name("name", shown) + Rates(allCovered, allLines) + ">\n      <classes>\n" + classes +
                 "      </classes>\n    </package>\n";
    mLines += allLines;
    mCovered += allCovered;
}

std::string CoverageReport::Document() const {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<coverage" + Rates(mCovered, mLines) + " lines-covered=\"" +
           std::to_string(mCovered) + "\" lines-valid=\"" + std::to_string(mLines) +
           "\" branches-covered=\"0\" branches-valid=\"0\" version=\"psf " TESSALY_VERSION "\" timestamp=\"" +
           std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()) +
           "\">\n  <sources>\n    <source>" + XmlText(CurrentFolder()) + "</source>\n  </sources>\n  <packages>\n" +
           mPackages + "  </packages>\n</coverage>\n";
}

bool CoverageJob::Start(bool /*mayWait*/) {
    if (!mBlock.isBuilt || mBlock.left > 1) {
        return false;
    }
    if (mBlock.build.ExitStatus() != Success) {
        mBlock.Ended();
        return true;
    }
    const std::string notes = CoverageNotes(mBlock.build.CFile()) + ".gcno";
    std::string content;
    try {
        content = ReadWhole(mReport.Files(), notes);
    } catch (const std::system_error&) {
        mProblem = "the compile batch file has not noted which lines run";
    }
    if (mProblem.empty() && content.size() < 8) {
        mProblem = notes + ": has no notes";
    }
    if (!mProblem.empty()) {
        mBlock.Ended();
        return true;
    }
    mGcov = std::make_unique<RunningProcess>(
        GcovCommand(content) + " -t \"" + notes + "\"", [this](std::string_view piece) { mPrinted += piece; },
        [this](std::string_view piece) { mErrors += piece; });
    return true;
}

bool CoverageJob::HasEnded() {
    if (!mGcov || !mGcov->HasEnded()) {
        return !mGcov;
    }
    const ProcessResult result = mGcov->Result();
    mGcov.reset();
    if (!result.Started()) {
        mProblem = "gcov cannot be started: " + Reason(result.startError);
    } else {
        Read();
        mProblem = mMembers.empty() ? "gcov tells nothing: " + mErrors : "";
    }
    mBlock.Ended();
    return true;
}

// gcov prints one source after the other; headers may have code, too.
void CoverageJob::Read() {
    const BuildMap& map = mBlock.build.Map();
    const std::string name = NameOfFile(mBlock.build.CFile());
    std::map<std::string_view, MemberCoverage> found;
    bool isCFile = false;
    for (std::string_view rest = mPrinted; !rest.empty();) {
        std::string_view line = TakeLine(rest);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0); // on Windows
        if (const std::size_t source = line.find(":Source:"); source != std::string_view::npos && !ReadCount(line)) {
            isCFile = NameOfFile(std::string(line.substr(source + 8))) == name;
        }
        const std::optional<CountedLine> counted = isCFile ? ReadCount(line) : std::nullopt;
        const std::optional<MemberPlace> place =
            counted ? map.Find(counted->number, LineCounting::LoneCrEndsLine) : std::nullopt;
        if (place) {
            std::uint64_t& hits = found[place->member].lines[place->line];
            hits = std::max(hits, counted->hits);
        }
    }
    for (const std::string& member : map.Members()) {
        if (const auto entry = found.find(member); entry != found.end()) {
            mMembers.push_back({member, std::move(entry->second.lines)});
        }
    }
}

int CoverageJob::Tell() {
    if (!mProblem.empty()) {
        PrintError(mBlock.build.File() + ": no coverage: " + mProblem);
        return CompilerMissing;
    }
    for (const MemberCoverage& member : mMembers) {
        const std::string missed = Missed(member);
        Print(TapComment(mBlock.build.File() + ":" + member.member + ": " + Ran(Covered(member), member.lines.size()) +
                         (missed.empty() ? "" : ", not " + missed)));
    }
    if (!mMembers.empty()) {
        mReport.Add(mBlock.build.File(), mMembers);
    }
    return Success;
}

} // namespace tessaly::psf
