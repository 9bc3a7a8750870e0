// Each format is one class. A path may be any bytes; what needs UTF-8 gets replacement characters.
#include "programs/psf/base/Report.h"

#include "platform/text/Ascii.h"
#include "programs/psf/base/Findings.h"
#include "programs/psf/base/Json.h"
#include "programs/psf/base/Printable.h"
#include "programs/psf/base/Session.h"

#include <algorithm>
#include <cstdio>

namespace tessaly::psf {

namespace {

using Json = nlohmann::ordered_json;

std::string_view Severity(const Problem& problem) {
    return problem.isError ? "error" : "warning";
}

std::string WithMember(const Problem& problem) {
    return problem.member.empty() ? problem.message : problem.member + ": " + problem.message;
}

void PrintLine(std::string_view line) {
    Print(Printable(line) + "\n");
}

class TextReport final : public Report {
public:
    explicit TextReport(bool withRules) : mWithRules(withRules) {}

    void Tell(const Problem& problem) override {
        if (problem.isError) {
            return;
        }
        const bool told = mWithRules && !problem.rule.starts_with(rule::FilePrefix);
        PrintLine(problem.file + ":" + std::to_string(problem.line) + ": warning: " + WithMember(problem) +
                  (told ? " [" + problem.rule + "]" : ""));
    }

private:
    bool mWithRules;
};

class GccReport final : public Report {
public:
    void Tell(const Problem& problem) override {
        PrintLine(problem.file + ":" + std::to_string(problem.line) + ":1: " + std::string(Severity(problem)) + ": " +
                  WithMember(problem) + " [" + problem.rule + "]");
    }
};

class JsonReport final : public Report {
public:
    void Tell(const Problem& problem) override {
        const Json json = {{"file", problem.file}, {"line", problem.line},          {"member", problem.member},
                           {"rule", problem.rule}, {"severity", Severity(problem)}, {"message", problem.message}};
        Print(ToText(json) + "\n");
    }
};

// `text` as a URI has a path.
std::string ToUri(std::string_view path) {
    constexpr std::string_view plain = "-._~/!$&'()*+,;=@";
    std::string uri;
    for (const char c : path) {
        if (IsLetter(c) || IsDigit(c) || plain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            uri += escape;
        }
    }
    return path.starts_with('/') ? "file://" + uri : uri;
}

class SarifReport final : public Report {
public:
    void Tell(const Problem& problem) override {
        Json result = {{"ruleId", problem.rule},
                       {"level", Severity(problem)},
                       {"message", {{"text", WithMember(problem)}}},
                       {"locations", Json::array({Location(problem)})}};
        mResults.push_back(std::move(result));
        const bool known =
            std::any_of(mRules.begin(), mRules.end(), [&](const Json& each) { return each["id"] == problem.rule; });
        if (!known) {
            mRules.push_back({{"id", problem.rule}});
        }
    }

    void End() override {
        const Json driver = {{"name", "psf"}, {"version", TESSALY_VERSION}, {"rules", mRules}};
        const Json run = {{"tool", {{"driver", driver}}}, {"results", mResults}};
        const Json document = {{"version", "2.1.0"}, {"runs", Json::array({run})}};
        Print(ToText(document) + "\n");
    }

private:
    static Json Location(const Problem& problem) {
        Json location = {
            {"physicalLocation",
             {{"artifactLocation", {{"uri", ToUri(problem.file)}}}, {"region", {{"startLine", problem.line}}}}}};
        if (!problem.member.empty()) {
            location["logicalLocations"] = Json::array({Json({{"fullyQualifiedName", problem.member}})});
        }
        return location;
    }

    Json mResults = Json::array();
    Json mRules = Json::array();
};

// A line that the runner of workflows takes for a command to itself.
class GithubReport final : public Report {
public:
    void Tell(const Problem& problem) override {
        PrintLine("::" + std::string(Severity(problem)) + " file=" + Escaped(problem.file, "%\r\n:,") +
                  ",line=" + std::to_string(problem.line) + ",title=" + Escaped(problem.rule, "%\r\n:,") +
                  "::" + Escaped(WithMember(problem), "%\r\n"));
    }

private:
    static std::string Escaped(std::string_view text, std::string_view special) {
        std::string escaped;
        for (const char c : text) {
            char code[4] = {c};
            if (special.find(c) != std::string_view::npos) {
                std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            }
            escaped += code;
        }
        return escaped;
    }
};

} // namespace

std::unique_ptr<Report> MakeReport(std::string_view format, bool withRules) {
    if (format == "gcc") {
        return std::make_unique<GccReport>();
    }
    if (format == "json") {
        return std::make_unique<JsonReport>();
    }
    if (format == "sarif") {
        return std::make_unique<SarifReport>();
    }
    if (format == "github") {
        return std::make_unique<GithubReport>();
    }
    return std::make_unique<TextReport>(withRules);
}

} // namespace tessaly::psf
