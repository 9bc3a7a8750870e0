// What comes up beside the caret: names and parameters, and that the pane keeps the keyboard.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

std::vector<SuggestedName> Many() {
    std::vector<SuggestedName> names;
    for (int i = 10; i < 40; ++i) {
        names.push_back({"Name" + std::to_string(i), "int Name" + std::to_string(i) + "(void)"});
    }
    return names;
}

TEST_P(DesktopContract, NamesComeUpWithTheFirstOneSelected) {
    BeginInPane();
    Suggestions& suggestions = TheDesktop().NameSuggestions();
    EXPECT_FALSE(suggestions.IsListShown());
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    suggestions.ShowList({{"SendFrame", "int SendFrame(const DataFrame* frame)"}, {"gr\xC3\xB6\xC3\x9F\x65", ""}},
                         {0, 0});
    EXPECT_TRUE(suggestions.IsListShown());
    EXPECT_EQ(user->NamesSuggested(),
              (Strings{"SendFrame|int SendFrame(const DataFrame* frame)*", "gr\xC3\xB6\xC3\x9F\x65|"}));
    suggestions.ShowList({{"other", "int other"}}, {0, 1});
    EXPECT_EQ(user->NamesSuggested(), Strings{"other|int other*"});
    suggestions.HideList();
    EXPECT_FALSE(suggestions.IsListShown());
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, ASelectedNameComesIntoView) {
    BeginInPane();
    Suggestions& suggestions = TheDesktop().NameSuggestions();
    suggestions.ShowList(Many(), {0, 0});
    suggestions.Select(25);
    EXPECT_EQ(suggestions.Selected(), 25U);
    EXPECT_EQ(user->NamesSuggested().at(25), "Name35|int Name35(void)*");
    EXPECT_TRUE(user->IsSuggestionInView(25));
    EXPECT_FALSE(user->IsSuggestionInView(0));
    suggestions.Select(99);
    EXPECT_EQ(suggestions.Selected(), 29U) << "the last one there is";
    EXPECT_TRUE(user->IsSuggestionInView(29));
}

TEST_P(DesktopContract, ThePaneKeepsTheKeyboardWhileNamesAreThere) {
    BeginInPane();
    TheDesktop().NameSuggestions().ShowList(Many(), {0, 0});
    TheDesktop().NameSuggestions().ShowHint({"int f(int a)", 6, 11}, {0, 0});
    user->Settle();
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
    EXPECT_EQ(events, Strings{"change"});
    EXPECT_EQ(user->NamesSuggested().size(), 30U);
}

TEST_P(DesktopContract, AClickOnANameIsToldAndThePaneKeepsTheKeyboard) {
    BeginInPane();
    Suggestions& suggestions = TheDesktop().NameSuggestions();
    std::vector<std::size_t> picked;
    suggestions.onPick = [&](std::size_t row) {
        picked.push_back(row);
        suggestions.HideList();
    };
    suggestions.ShowList({{"one", ""}, {"two", ""}, {"three", ""}}, {0, 0});
    user->ClickSuggestion(1);
    EXPECT_EQ(picked, std::vector<std::size_t>{1});
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, NamesAndParametersGoWithAClickElsewhere) {
    BeginInPane();
    Suggestions& suggestions = TheDesktop().NameSuggestions();
    suggestions.ShowList(Many(), {0, 0});
    suggestions.ShowHint({"int f(void)", 0, 0}, {0, 0});
    user->ClickPane();
    EXPECT_FALSE(suggestions.IsListShown());
    EXPECT_FALSE(suggestions.IsHintShown());
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_EQ(user->HintShown(), "");
}

TEST_P(DesktopContract, ParametersAreShownAsTheyStand) {
    BeginInPane();
    Suggestions& suggestions = TheDesktop().NameSuggestions();
    suggestions.ShowHint({"int f(T<b> & gr\xC3\xB6\xC3\x9F\x65, int b)", 6, 20}, {0, 0});
    EXPECT_EQ(user->HintShown(), "int f(T<b> & gr\xC3\xB6\xC3\x9F\x65, int b)");
    suggestions.ShowHint({"int g(void)", 0, 0}, {0, 0});
    EXPECT_EQ(user->HintShown(), "int g(void)");
    suggestions.HideHint();
    EXPECT_EQ(user->HintShown(), "");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, WhereTheMouseRestsATipSaysWhatIsAsked) {
    BeginInPane();
    Pane().SetText("first\nsecond");
    events.clear();
    TheDesktop().NameSuggestions().onTip = [](std::size_t line, std::optional<std::size_t> column) {
        return line == 0 ? "" : "T<b> &\n" + std::to_string(line) + ":" + (column ? std::to_string(*column) : "margin");
    };
    EXPECT_EQ(user->TipShown({0, 2}), "");
    EXPECT_EQ(user->MarginTipShown(0), "");
    EXPECT_EQ(user->TipShown({1, 3}), "T<b> &\n1:3");
    EXPECT_EQ(user->MarginTipShown(1), "T<b> &\n1:margin");
    user->Type("a");
    EXPECT_EQ(events, Strings{"change"}) << "the pane keeps the keyboard";
}

} // namespace
} // namespace tessaly
