// Any output of a compiler, for a program block with uneven line ends. A line that is led back keeps its old position,
// and names a line that the C file has there. Messages are plain text, and their places are in the document.
#include "diagnostics/Diagnostics.h"
#include "diagnostics/NearestLines.h"
#include "diagnostics/RewriteMessages.h"
#include "document/CCodeGenerator.h"
#include "document/Members.h"
#include "document/VornSrcObj.h"
#include "fuzz/Check.h"
#include "platform/text/SingleByteCodePage.h"
#include "platform/text/Utf8.h"
#include "tests/desktop/SequentialFiles.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace tessaly;

constexpr std::string_view Psf = "a.PSF:";

std::vector<std::string> Split(std::string_view text, bool loneCr) {
    std::vector<std::string> lines = {""};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool cr = text[i] == '\r' && loneCr && (i + 1 == text.size() || text[i + 1] != '\n');
        if (text[i] == '\n' || cr) {
            lines.emplace_back();
        } else {
            lines.back() += text[i];
        }
    }
    return lines;
}

class Text final : public CCodeSink {
public:
    void Write(std::string_view piece, CCodeOrigin) override { text += piece; }
    std::string text;
};

class Block {
public:
    Block() {
        mDocument.UpdateVarCode("int a;\r\n\r\nint b;\n");
        mDocument.AddFunction("Main", "", "void Main(\r\n    int n)\r{\r\r  n = 1;\n}\r\n");
        mDocument.AddFunction("Other", "", "int Other()\n{ return 0; }");
        mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c)\n{\n\n}");
        Text text;
        mDocument.BuildCCode(text);
        mCLines = Split(text.text, true);
        mMap = BuildMap(mDocument, "/tmp/a.c");
    }

    void Check(const std::string& output) {
        CheckLines(output, RewriteMessages(mMap, "a.PSF", output));
        MessageRewriter anywhere(mMap, "a.PSF", MessageRewriter::Inside::Anywhere);
        std::string result;
        for (const std::string& line : Split(output, false)) {
            anywhere.Rewrite(line, result);
            result += '\n';
        }
        result.pop_back();
        CheckLines(output, result);
        const std::vector<Diagnostic> diagnostics = ReadDiagnostics(mMap, output);
        CHECK(diagnostics.size() <= Split(output, false).size());
        for (const Diagnostic& diagnostic : diagnostics) {
            CheckDiagnostic(diagnostic);
        }
    }

    // The message of a compiler that gives columns, for any line of the C file.
    void CheckLine(std::size_t line) {
        const std::string old = "/tmp/a.c:" + std::to_string(line) + ":1";
        const std::string message = old + ": error: x";
        const std::string result = RewriteMessages(mMap, "a.PSF", message);
        if (result == message) {
            return;
        }
        CHECK(result.starts_with(Psf) && result.ends_with(": error: x (" + old + ")"));
        const std::string text = LineAt(result);
        const std::string& cLine = mCLines.at(line - 1);
        const bool same =
            cLine.find(text) != std::string::npos || (!cLine.empty() && text.starts_with(cLine.substr(0, 3)));
        CHECK(same);
    }

private:
    void CheckLines(const std::string& output, const std::string& result) const {
        const std::vector<std::string> before = Split(output, false);
        const std::vector<std::string> after = Split(result, false);
        CHECK(before.size() == after.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (before[i] != after[i]) {
                CheckPlace(before[i], after[i]);
            }
        }
    }

    void CheckDiagnostic(const Diagnostic& diagnostic) const {
        for (const std::string* text : {&diagnostic.text, &diagnostic.file}) {
            CHECK(IsUtf8(*text));
            for (const char character : *text) {
                CHECK(static_cast<unsigned char>(character) >= ' ' && character != '\x7F');
            }
        }
        CHECK(diagnostic.member.empty() == (diagnostic.line == 0));
        CHECK(diagnostic.member.empty() || diagnostic.file.empty());
        CHECK(diagnostic.line > 0 || diagnostic.column == 0);
        if (diagnostic.line > 0) {
            const std::string line =
                LineAt(std::string(Psf) + diagnostic.member + ":" + std::to_string(diagnostic.line));
            CHECK(diagnostic.column <= line.size() + 1); // all in the block is ASCII
        }
    }

    // The line of a member that a position names, which must be there.
    std::string LineAt(std::string_view position) const {
        position.remove_prefix(Psf.size());
        for (const CCodeOrigin& member : AllMembers(mDocument)) {
            const std::string name = MemberName(mDocument, member) + ":";
            if (position.starts_with(name)) {
                const std::vector<std::string> lines = Split(MemberText(mDocument, member), true);
                const auto number =
                    static_cast<std::size_t>(std::atol(std::string(position.substr(name.size())).c_str()));
                CHECK(number >= 1 && number <= lines.size());
                std::string line = lines[number - 1];
                line.erase(line.find_last_not_of('\r') + 1);
                return line;
            }
        }
        CHECK(false);
        return "";
    }

    // A line that begins with a position can be put back to what it was.
    void CheckPlace(const std::string& before, const std::string& after) const {
        if (before.find(Psf) != std::string::npos) {
            return;
        }
        const std::size_t at = after.find(Psf);
        CHECK(at != std::string::npos);
        LineAt(std::string_view(after).substr(at));
        // Inside a line the old position stands right behind the new one.
        const std::size_t behind = after.find(" (", at) + 2;
        bool isReversible = at > 0 || !after.ends_with(')') || before.starts_with(after.substr(behind, 4));
        for (std::size_t open = after.find(" ("); open != std::string::npos; open = after.find(" (", open + 1)) {
            isReversible = isReversible || before.starts_with(after.substr(open + 2, after.size() - open - 3));
        }
        CHECK(isReversible);
    }

    memory::SequentialFiles mFiles;
    SingleByteCodePage mCodePage{Windows1252HighHalf()};
    VornSrcObj mDocument{mFiles, mCodePage};
    BuildMap mMap;
    std::vector<std::string> mCLines;
};

// Two texts with a NUL between them.
void CheckNearest(std::string_view input) {
    const std::string_view before = input.substr(0, input.find('\0'));
    const std::string_view now = input.substr(std::min(before.size() + 1, input.size()));
    const std::size_t count = SplitEditorLines(now).size();
    const NearestLines moved(before, now);
    const NearestLines same(before, before);
    for (std::size_t line = 1; line <= SplitEditorLines(before).size(); ++line) {
        const std::size_t nearest = moved.Find(line);
        CHECK(nearest >= 1 && nearest <= count);
        CHECK(moved.Find(TextPosition{line, 7}).line == nearest);
        CHECK(same.Find(line) == line);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Block block;
    block.Check({reinterpret_cast<const char*>(data), size});
    CheckNearest({reinterpret_cast<const char*>(data), size});
    if (size > 0) {
        block.CheckLine(data[0]);
    }
    return 0;
}
