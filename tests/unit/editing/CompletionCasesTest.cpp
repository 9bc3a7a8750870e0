// The golden cases of tests/cases/completion: what is offered at the caret, beside the kit's own headers.
#include "editing/Completion.h"
#include "editing/ParameterHint.h"
#include "tests/unit/Checkout.h"
#include "tests/unit/editing/Cases.h"
#include "tests/unit/editing/TextModel.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace tessaly {
namespace {

std::vector<CName> NamesOfKit() {
    std::ostringstream text;
    for (const char* const header : {"vexlib.h", "tornem.h"}) {
        text << std::ifstream(InCheckout("kit/include/") + header).rdbuf();
    }
    return DeclaredNames(text.str());
}

// One name a line, and dots for those behind the first ones.
std::string Listed(const Completion& completion) {
    constexpr std::size_t most = 8;
    std::string listed;
    for (std::size_t i = 0; i < std::min(completion.names.size(), most); ++i) {
        listed += (i == 0 ? "" : "\n") + completion.names[i]->name;
    }
    return listed + (completion.names.size() > most ? "\n..." : "");
}

std::string Marked(const ParameterHint& hint) {
    std::string text = hint.declaration;
    if (hint.begin < hint.end) {
        text.insert(hint.end, "»").insert(hint.begin, "«");
    }
    return text;
}

std::string Answer(TextModel& text, const std::string& asked, const std::vector<CName>& kit) {
    const Place caret = text.Selected().caret;
    const Word word = WordBeside(text.Line(caret.line), caret.column);
    const bool isTip = asked == "tip";
    const std::vector<CName> own = NamesInFrontOf(text, {caret.line, isTip ? word.end : word.begin});
    const KnownNames names = {own, kit, KeywordNames()};
    if (isTip) {
        const std::optional<NamedPlace> found = NameAt(text, caret, names);
        return found ? found->name->declaration : "";
    }
    if (asked == "hint") {
        const std::optional<ParameterHint> hint = ParameterHintAt(text, caret, names);
        return hint ? Marked(*hint) : "";
    }
    const std::optional<Completion> completion = CompletionAt(text, caret, names);
    if (asked == "list") {
        return completion ? Listed(*completion) : "";
    }
    const std::u16string name = ToUtf16(asked.substr(asked.find(' ') + 1));
    const Place after = {caret.line, completion->begin.column + name.size()};
    text.Do({{{completion->begin, completion->end, name}}, {after, after}});
    return text.Written();
}

TEST(CompletionCasesTest, EachOffersWhatIsWritten) {
    const std::vector<CName> kit = NamesOfKit();
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(InCheckout("tests/cases/completion"))) {
        for (const Case& each : ReadCases(entry.path())) {
            TextModel text(each.before);
            EXPECT_EQ(Answer(text, each.keys, kit), each.after) << entry.path().filename() << ": " << each.name;
            ++count;
        }
    }
    EXPECT_GT(count, 50U);
}

TEST(CompletionCasesTest, AListComesByItselfBehindTheThirdLetterAtTheEndOfAWord) {
    for (const char* const yes : {"abc▮", "x = abc▮ + 1", "a.bcd▮", "_a1▮"}) {
        const TextModel text(yes);
        EXPECT_TRUE(IsThirdLetter(text, text.Selected().caret)) << yes;
    }
    for (const char* const no : {"ab▮", "abcd▮", "abc▮d", "ab▮c", "123▮", "// abc▮", "\"abc▮", "#include <abc▮", "▮"}) {
        const TextModel text(no);
        EXPECT_FALSE(IsThirdLetter(text, text.Selected().caret)) << no;
    }
}

TEST(CompletionCasesTest, OfALongTextOnlyTheNeighbourhoodIsRead) {
    std::string written = "int far;\n";
    for (int i = 0; i < 3000; ++i) {
        written += "/* */\n";
    }
    const TextModel text(written + "int near;\n▮");
    const std::vector<CName> names = NamesInFrontOf(text, text.Selected().caret);
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].name, "near");
}

TEST(CompletionCasesTest, AChainOfAnyLengthIsTaken) {
    std::string written = "a";
    for (int i = 0; i < 100'000; ++i) {
        written += ".a";
    }
    const TextModel text(written + "▮");
    EXPECT_FALSE(CompletionAt(text, text.Selected().caret, {KeywordNames()}));
}

} // namespace
} // namespace tessaly
