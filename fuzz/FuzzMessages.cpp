// Any output of a compiler, for a program block with uneven line ends. A line without a position in the C file stays as
// it is; one that is led back keeps its old position, and names a line that the C file has there.
#include "diagnostics/Diagnostics.h"
#include "diagnostics/RewriteMessages.h"
#include "document/CCodeGenerator.h"
#include "document/Members.h"
#include "document/VornSrcObj.h"
#include "fuzz/Check.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/SequentialFiles.h"

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
        const std::string result = RewriteMessages(mMap, "a.PSF", output);
        const std::vector<std::string> before = Split(output, false);
        const std::vector<std::string> after = Split(result, false);
        CHECK(before.size() == after.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (before[i] != after[i]) {
                CHECK(before[i].find("a.c") != std::string::npos);
                CHECK(after[i].size() > before[i].size());
                CheckPlace(before[i], after[i]);
            }
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
        const std::size_t at = after.find(Psf);
        CHECK(at != std::string::npos);
        LineAt(std::string_view(after).substr(at));
        const bool front = after.starts_with(Psf) && !before.starts_with(Psf);
        if (front && after.ends_with(')')) {
            const std::size_t open = after.rfind(" (");
            CHECK(open != std::string::npos);
            CHECK(before.starts_with(after.substr(open + 2, after.size() - open - 3)));
        }
    }

    memory::SequentialFiles mFiles;
    SingleByteCodePage mCodePage{Windows1252HighHalf()};
    VornSrcObj mDocument{mFiles, mCodePage};
    BuildMap mMap;
    std::vector<std::string> mCLines;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Block block;
    block.Check({reinterpret_cast<const char*>(data), size});
    if (size > 0) {
        block.CheckLine(data[0]);
    }
    return 0;
}
