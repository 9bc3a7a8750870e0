// Findings about a document. What each rule finds is in tests/cases/lint/.
#include "diagnostics/Lint.h"

#include "document/Members.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/SingleByteCodePage.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

class LintTest : public testing::Test {
protected:
    // "member:line rule" of every finding, with a "!" where a compiler does not show it.
    std::string Found() const {
        std::string all;
        for (const Finding& finding : Lint(mDocument)) {
            all += (all.empty() ? "" : ", ") + MemberName(mDocument, finding.member) + ":" +
                   std::to_string(finding.line) + " " + std::string(finding.rule) +
                   (finding.isHiddenFromCompilers ? "!" : "");
        }
        return all;
    }

    SystemFiles mFiles;
    SingleByteCodePage mCodePage{Windows1252HighHalf()};
    VornSrcObj mDocument{mFiles, mCodePage};
};

TEST_F(LintTest, ANewDocumentHasNoFindings) {
    EXPECT_EQ(Found(), "");
}

TEST_F(LintTest, FindingsComeInDocumentOrder) {
    mDocument.UpdateVarCode("int a;\n/* open");
    mDocument.AddFunction("Foo", "", "void Foo(void){\n    \"\n");
    mDocument.UpdateEventCodeByIndex(8, "");
    EXPECT_EQ(Found(), "references:2 open-comment!, functions/Foo:1 prototype-cut!, functions/Foo:2 open-string, "
                       "events/OnMsg:1 handler-missing!");
}

TEST_F(LintTest, AMacroWithABraceEndsTheCountingInAllMembers) {
    mDocument.AddFunction("Foo", "", "void Foo(void)\nBEGIN }");
    EXPECT_EQ(Found(), "functions/Foo:2 stray-brace!");
    mDocument.UpdateVarCode("#define BEGIN {\n");
    EXPECT_EQ(Found(), "");
}

TEST_F(LintTest, ALineCommentThatOnlySomeCompilersEndIsNotHidden) {
    mDocument.AddFunction("Foo", "", "void Foo(void) // x\n{}");
    mDocument.AddFunction("Bar", "", "void Bar(void) // x\r\n{}");
    EXPECT_EQ(Found(), "functions/Foo:1 prototype-comment!, functions/Bar:1 prototype-comment");
}

TEST_F(LintTest, ALongPrototypeIsQuotedByItsEnd) {
    mDocument.AddFunction("Foo", "", "/* " + std::string(500, 'x') + " */\nvoid Foo(int a){}");
    const std::string message = Lint(mDocument).at(0).message;
    EXPECT_LT(message.size(), 250U);
    EXPECT_NE(message.find("xxx */ void Foo(int a;\""), std::string::npos) << message;
}

TEST_F(LintTest, TenOpenEndsOfATextAreEnough) {
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "{\n";
    }
    mDocument.UpdateVarCode(text);
    EXPECT_EQ(Lint(mDocument).size(), 10U);
}

TEST_F(LintTest, ALineIsNamedOnceForEachRule) {
    mDocument.UpdateVarCode("} } {{\n{");
    EXPECT_EQ(Found(), "references:1 stray-brace!, references:1 open-brace!, references:2 open-brace!");
}

TEST_F(LintTest, AFunctionThatGenerationRefusesIsLeftToIt) {
    mDocument.AddFunction("Foo", "", "{}");
    mDocument.AddFunction("Bar", "", "");
    EXPECT_EQ(Found(), "");
}

} // namespace
} // namespace tessaly
