// What a program has printed may be anything, and endless: it is cleaned, and cut to its end.
#include "programs/psf/TestReport.h"

#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"
#include "programs/psf/base/Json.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/Printable.h"

#include <algorithm>
#include <cstdio>

namespace tessaly::psf {

namespace {

// How much of a program's output a report has.
constexpr std::size_t MostInTap = 4000;
constexpr std::size_t MostInXml = 100000;

// The end of `text`, from the front of a line on where there is one soon.
std::string Tail(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return std::string(text);
    }
    text.remove_prefix(text.size() - most);
    const std::size_t lineEnd = text.substr(0, 1000).find('\n');
    text.remove_prefix(lineEnd == std::string_view::npos ? 0 : lineEnd + 1);
    return "[...]\n" + std::string(text);
}

// The beginning of `text`, up to the end of a line where it has one.
std::string Head(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return std::string(text);
    }
    const std::string_view head = text.substr(0, most);
    return std::string(head.substr(0, head.rfind('\n'))) + "\n[...]\n";
}

// JSON's strings are those of YAML.
std::string YamlString(std::string_view text) {
    return ToText(CleanText(text));
}

std::string WithFront(std::string_view front, const std::string& lines) {
    std::string text;
    for (std::string_view rest = lines; !rest.empty();) {
        text.append(front).append(TakeLine(rest)).append("\n");
    }
    return text;
}

// A field of the block under a failed case. Several lines stand below each other, as they are.
std::string Field(std::string_view name, std::string_view text) {
    while (text.ends_with('\n') || text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    std::string field = "  " + std::string(name) + ":";
    if (text.find('\n') == std::string_view::npos) {
        return field.append(name == "got" ? 6 : 1, ' ') + YamlString(text) + "\n"; // beside "expected: "
    }
    return field + " |2\n" + WithFront("    ", CleanText(text));
}

std::string FieldUnlessEmpty(std::string_view name, std::string_view text) {
    return text.empty() ? "" : Field(name, text);
}

// At most three digits behind the point: readers take no more.
std::string Seconds(double seconds) {
    char text[40];
    std::snprintf(text, sizeof text, "%.3f", seconds);
    return text;
}

std::string Attribute(std::string_view name, std::string_view value) {
    return " " + std::string(name) + "=\"" + XmlText(value) + "\"";
}

// The path of a block as the name of a class, whose parts readers show by themselves.
std::string ClassName(std::string_view block) {
    block.remove_prefix(block.starts_with("./") ? 2 : 0);
    block.remove_suffix(IsPsfName(block) ? PsfExtension.size() : 0);
    std::string name(block);
    std::replace(name.begin(), name.end(), '/', '.');
    return name;
}

// All about a failed case, as a person reads it.
std::string Explanation(const CaseResult& result) {
    std::string text = result.place.empty() ? "" : result.place + ": ";
    text += result.message + "\n";
    if (!result.expected.empty() || !result.got.empty()) {
        text += "expected: " + result.expected + "\ngot:      " + result.got + "\n";
    }
    return text + result.messages;
}

std::string XmlElement(std::string_view name, std::string_view text) {
    return "      <" + std::string(name) + ">" + XmlText(Tail(text, MostInXml)) + "</" + std::string(name) + ">\n";
}

} // namespace

std::string CleanText(std::string_view text) {
    std::string clean;
    for (std::size_t position = 0; position < text.size();) {
        const std::string_view rest = text.substr(position);
        if (rest.starts_with("\r\n")) {
            ++position;
        } else if (rest.starts_with('\n') || rest.starts_with('\t')) {
            clean += text[position++];
        } else {
            std::size_t next = position;
            const char32_t character = ReadUtf8OrReplacement(text, next);
            const bool isNone = character == ReplacementCharacter || character == 0xFFFE || character == 0xFFFF;
            const std::string_view shown = NextPrintable(text, position);
            clean += isNone ? std::string_view("\xEF\xBF\xBD") : shown;
        }
    }
    return clean;
}

std::string XmlText(std::string_view text) {
    std::string escaped;
    for (const char c : CleanText(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string TapCase(std::size_t number, const CaseResult& result) {
    const bool passed = result.outcome == CaseResult::Outcome::Passed;
    std::string text = (passed ? "ok " : "not ok ") + std::to_string(number) + " - ";
    for (const char c : CleanText(result.script)) {
        text += c == '#' || c == '\\' ? std::string("\\") + c : c == '\n' ? "?" : std::string(1, c);
    }
    text += "\n";
    if (passed) {
        return text;
    }
    text += "  ---\n" + Field("message", result.message) + FieldUnlessEmpty("at", result.place);
    if (!result.expected.empty() || !result.got.empty()) {
        text += Field("expected", result.expected) + Field("got", result.got);
    }
    return text + FieldUnlessEmpty("build", Head(result.messages, MostInTap)) +
           FieldUnlessEmpty("stderr", Tail(result.errors, MostInTap)) +
           FieldUnlessEmpty("stdout", Tail(result.output, MostInTap)) + "  ...\n";
}

std::string TapComment(std::string_view text) {
    return WithFront("# ", CleanText(text));
}

void JUnitReport::Add(const CaseResult& result) {
    if (result.block != mBlock) {
        EndSuite();
        mBlock = result.block;
    }
    ++mTests;
    mSeconds += result.seconds;
    const std::u8string name = ToPath(result.script).filename().u8string();
    mCases += "    <testcase" + Attribute("name", {reinterpret_cast<const char*>(name.data()), name.size()}) +
              Attribute("classname", ClassName(result.block)) + Attribute("time", Seconds(result.seconds));
    if (result.outcome == CaseResult::Outcome::Passed) {
        mCases += "/>\n";
        return;
    }
    const bool failed = result.outcome == CaseResult::Outcome::Failed;
    ++(failed ? mFailures : mErrors);
    const std::string element = failed ? "failure" : "error";
    mCases += ">\n      <" + element + Attribute("message", result.message) +
              Attribute("type", failed ? "failed" : "not run") + ">" + XmlText(Tail(Explanation(result), MostInXml)) +
              "</" + element + ">\n" + XmlElement("system-out", result.output) +
              XmlElement("system-err", result.errors) + "    </testcase>\n";
}

std::string JUnitReport::Document() {
    EndSuite();
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"psf test\">\n" + mSuites + "</testsuites>\n";
}

void JUnitReport::EndSuite() {
    if (mTests > 0) {
        mSuites += "  <testsuite" + Attribute("name", mBlock) + Attribute("tests", std::to_string(mTests)) +
                   Attribute("failures", std::to_string(mFailures)) + Attribute("errors", std::to_string(mErrors)) +
                   Attribute("skipped", "0") + Attribute("time", Seconds(mSeconds)) + ">\n" + mCases +
                   "  </testsuite>\n";
    }
    mCases.clear();
    mTests = mFailures = mErrors = 0;
    mSeconds = 0;
}

} // namespace tessaly::psf
