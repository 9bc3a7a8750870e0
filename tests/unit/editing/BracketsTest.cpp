#include "editing/Brackets.h"

#include "tests/unit/Each.h"
#include "tests/unit/editing/TextModel.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

// The text with the pair that is found marked: "‹" and "›" stand in front of the two, "!" in front of one alone.
std::string Marked(std::string_view written) {
    const TextModel text(written);
    const std::optional<BracketPair> pair = FindBracket(text, text.Selected().caret);
    if (!pair) {
        return "none";
    }
    const auto mark = [&text](Place place, std::string_view sign) {
        const Selection at = {place, place};
        TextModel marked = text;
        marked.Select(at);
        marked.Type(ToUtf16(sign));
        return marked.Text();
    };
    if (!pair->partner) {
        return mark(pair->bracket, "!");
    }
    TextModel marked(text);
    const Place first = std::min(pair->bracket, *pair->partner);
    const Place second = std::max(pair->bracket, *pair->partner);
    marked.Select({second, second});
    marked.Type(u"›");
    marked.Select({first, first});
    marked.Type(u"‹");
    return marked.Text();
}

TEST(BracketsTest, TheOneBehindTheCaretCountsFirst) {
    ExpectEach(Marked, {{"f▮(a)", "f‹(a›)"},
                        {"f(▮a)", "f‹(a›)"},
                        {"f(a▮)", "f‹(a›)"},
                        {"f(a)▮", "f‹(a›)"},
                        {"f()▮(a)", "f()‹(a›)"},
                        {"f(▮)(a)", "f‹(›)(a)"},
                        {"▮f(a)", "none"},
                        {"▮", "none"}});
}

TEST(BracketsTest, PartnersAreFoundOverLinesAndOthersBetween) {
    ExpectEach(Marked, {{"▮{\n(a[1])\n{}\n}", "‹{\n(a[1])\n{}\n›}"},
                        {"{\n(a[1])\n{}\n}▮", "‹{\n(a[1])\n{}\n›}"},
                        {"a[b[1▮]]", "a[b‹[1›]]"}});
}

TEST(BracketsTest, OneWithoutAPartnerIsTold) {
    ExpectEach(Marked, {{"▮(a", "!(a"}, {"a)▮", "a!)"}, {"▮(a]", "!(a]"}});
    EXPECT_EQ(Marked("{ (a }▮"), "{ (a !}") << "another one is open";
}

TEST(BracketsTest, CommentsAndLiteralsHaveNone) {
    ExpectEach(
        Marked,
        {{"▮{ \"}\" '}' /* } */ // }\n}", "‹{ \"}\" '}' /* } */ // }\n›}"}, {"\"▮(\"", "none"}, {"/*\n▮( */", "none"}});
}

TEST(BracketsTest, APreprocessorLineHasItsOwn) {
    ExpectEach(Marked, {{"#define F▮(a) {", "#define F‹(a›) {"},
                        {"#define F ▮{\n}", "#define F !{\n}"},
                        {"▮{\n#define F }\n}", "‹{\n#define F }\n›}"}});
}

TEST(BracketsTest, NobodyLooksFurtherThanAThousandLines) {
    const std::string close = "▮{" + std::string(1000, '\n') + "}";
    ExpectEach(Marked, {{close, "‹{" + std::string(1000, '\n') + "›}"},
                        {"▮{" + std::string(1001, '\n') + "}", "none"},
                        {"▮{" + std::string(900, '\n'), "!{" + std::string(900, '\n')}});
}

TEST(BracketsTest, TheOpenBraceIsTheOneThatTheNextOneWouldClose) {
    const auto open = [](std::string_view written) {
        const TextModel text(written);
        const std::optional<Place> brace = FindOpenBrace(text, text.Selected().caret);
        return brace ? std::to_string(brace->line) + ":" + std::to_string(brace->column) : "none";
    };
    EXPECT_EQ(open("{\n {\n {}\n▮"), "1:1");
    EXPECT_EQ(open("{}\n▮{"), "none");
    EXPECT_EQ(open("{ f(▮"), "none") << "a round one is open";
}

} // namespace
} // namespace tessaly
