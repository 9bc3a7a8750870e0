// A document with markers, the C file made of it, and what compilers say about it.
#pragma once

#include "diagnostics/Diagnostics.h"
#include "diagnostics/RewriteMessages.h"
#include "document/Members.h"
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/SingleByteCodePage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tessaly {

inline std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The number of the line that `position` is in, when LF and CR LF end lines and a lone CR may.
inline std::size_t LineAt(std::string_view text, std::size_t position, bool loneCrEndsLine) {
    std::size_t line = 1;
    for (std::size_t i = 0; i < position; ++i) {
        const bool loneCr = text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n');
        line += text[i] == '\n' || (loneCr && loneCrEndsLine) ? 1 : 0;
    }
    return line;
}

// A document, the C file made of it, and a folder for both.
class DiagnosticMapTest : public testing::Test {
protected:
    DiagnosticMapTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("diagnostics" + std::to_string(::getpid()))) {
        std::filesystem::remove_all(mFolder);
        std::filesystem::create_directories(mFolder);
        Write("vexlib.h", "typedef unsigned char uchar;\ntypedef struct { int id; } DataFrame;\n");
        Write("tornem.h", "void initialize(int argc, char *argv[]);\nvoid EventLoop(void);\n");
    }
    ~DiagnosticMapTest() override { std::filesystem::remove_all(mFolder); }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream file(mFolder / name, std::ios::binary);
        file << text;
    }

    void AddFunction(const std::string& name, const std::string& code) {
        ASSERT_EQ(mDocument.AddFunction(name, "", code), Status::Done);
    }

    // Functions with a brace on a line of its own, each of which puts a lone CR into the C file.
    void AddFillers(int from, int to) {
        for (int i = from; i <= to; ++i) {
            const std::string name = "Filler" + std::to_string(100 + i);
            AddFunction(name, "void " + name + "(int n)\r\n{\r\n    n++;\r\n}\r\n");
        }
    }

    std::string CFile() const { return (mFolder / "gen.c").string(); }

    BuildMap Map() const { return {mDocument, CFile()}; }

    std::string Rewrite(const std::string& output) const { return RewriteMessages(Map(), "Blink.PSF", output); }

    // The C file as it would be written.
    std::string Generate() {
        EXPECT_EQ(mDocument.BuildCCodeFile(CFile()), Status::Done);
        std::ifstream file(CFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    // Where the C file has `marker` first.
    std::size_t LineOf(const std::string& marker, bool loneCrEndsLine = true) {
        const std::string text = Generate();
        EXPECT_NE(text.find(marker), std::string::npos);
        return LineAt(text, text.find(marker), loneCrEndsLine);
    }

    // "gen.c:LINE" of a marker.
    std::string PositionOf(const std::string& marker) { return CFile() + ":" + std::to_string(LineOf(marker)); }

    // "Blink.PSF:member:line" for every marker "UND_..." in the document.
    std::vector<std::pair<std::string, std::string>> Markers() const {
        std::vector<std::pair<std::string, std::string>> markers;
        for (const CCodeOrigin& member : AllMembers(mDocument)) {
            const std::string_view text = MemberText(mDocument, member);
            for (std::size_t at = text.find("UND_"); at != text.npos; at = text.find("UND_", at + 1)) {
                const std::size_t end = std::min(text.find_first_of(" ;,)(", at), text.size());
                markers.emplace_back(text.substr(at, end - at), "Blink.PSF:" + MemberName(mDocument, member) + ":" +
                                                                    std::to_string(LineAt(text, at, true)) + ": ");
            }
        }
        return markers;
    }

    // Every message about a marker must begin with the place of the marker, and there must be one; every other
    // line must be the compiler's. Returns the rewritten output.
    std::string Check(const std::string& output) {
        const std::string rewritten = Rewrite(output);
        const std::vector<std::string> before = SplitLines(output);
        const std::vector<std::string> after = SplitLines(rewritten);
        EXPECT_EQ(before.size(), after.size());
        for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
            EXPECT_TRUE(before[i] == after[i] || after[i].find("Blink.PSF:") != std::string::npos) << after[i];
        }
        const std::vector<Diagnostic> diagnostics = ReadDiagnostics(Map(), output);
        for (const auto& [marker, place] : Markers()) {
            for (const Diagnostic& each : diagnostics) {
                if (each.text.find(marker + "'") != std::string::npos) {
                    EXPECT_EQ("Blink.PSF:" + each.member + ":" + std::to_string(each.line) + ": ", place) << output;
                }
            }
            int count = 0;
            for (const std::string& line : after) {
                const std::size_t message = line.find(marker + "'");
                if (message != std::string::npos) {
                    ++count;
                    EXPECT_TRUE(line.starts_with(place)) << line << "\nis not at " << place;
                }
            }
            EXPECT_GT(count, 0) << marker << " in\n" << rewritten;
        }
        return rewritten;
    }

    std::filesystem::path mFolder;
    SystemFiles mFiles;
    SingleByteCodePage mCodePage{Windows1252HighHalf()};
    VornSrcObj mDocument{mFiles, mCodePage};
};

} // namespace tessaly
