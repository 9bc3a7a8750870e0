// What belongs together when it is undone.
#include "platform/desktop/TextHistory.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using By = TextHistory::By;

Step Typed(std::size_t start, const std::u16string& removed, const std::u16string& added) {
    const auto stretch = [](const std::u16string& text) {
        return Stretch{text, std::vector<LineBreak>(text == u"\n" ? 1 : 0, LineBreak::CrLf)};
    };
    const std::size_t end = start + added.size();
    return {{{start, 0, stretch(removed), stretch(added)}}, {start, start}, {end, end}};
}

// How many steps there are to undo.
int StepsOf(TextHistory& history) {
    int steps = 0;
    while (history.CanUndo()) {
        history.Undo();
        ++steps;
    }
    return steps;
}

int StepsOf(const std::vector<Step>& typed) {
    TextHistory history;
    for (const Step& step : typed) {
        history.Add(step, By::Typing);
    }
    return StepsOf(history);
}

TEST(TextHistoryTest, CharactersSideBySideAreOneStep) {
    TextHistory history;
    history.Add(Typed(3, u"", u"a"), By::Typing);
    history.Add(Typed(4, u"", u"b"), By::Typing);
    history.Add(Typed(5, u"", u"\U0001F600"), By::Typing);
    const Step& step = history.Undo();
    EXPECT_EQ(step.parts.front().start, 3U);
    EXPECT_EQ(step.parts.front().added.text, u"ab\U0001F600");
    EXPECT_EQ(step.before, (Ends{3, 3}));
    EXPECT_EQ(step.after, (Ends{7, 7}));
    EXPECT_FALSE(history.CanUndo());
}

TEST(TextHistoryTest, CharactersThatAreTakenAwayAreOneStepInBothDirections) {
    TextHistory history;
    history.Add(Typed(5, u"b", u""), By::Typing);
    history.Add(Typed(4, u"a", u""), By::Typing);
    history.Add(Typed(4, u"c", u""), By::Typing);
    const Step& step = history.Undo();
    EXPECT_EQ(step.parts.front().start, 4U);
    EXPECT_EQ(step.parts.front().removed.text, u"abc");
    EXPECT_FALSE(history.CanUndo());
}

TEST(TextHistoryTest, WhatIsElsewhereOrOfAnotherKindIsAStepOfItsOwn) {
    EXPECT_EQ(StepsOf({Typed(0, u"", u"a"), Typed(5, u"", u"b")}), 2);
    EXPECT_EQ(StepsOf({Typed(0, u"", u"a"), Typed(0, u"a", u"")}), 2);
    EXPECT_EQ(StepsOf({Typed(0, u"", u"a"), Typed(1, u"", u"pasted")}), 2);
    EXPECT_EQ(StepsOf({Typed(0, u"", u"a"), Typed(1, u"", u"\n"), Typed(2, u"", u"b")}), 3);
    EXPECT_EQ(StepsOf({Typed(2, u"\n", u""), Typed(1, u"a", u"")}), 2);
    EXPECT_EQ(StepsOf({Typed(0, u"ab", u"c"), Typed(1, u"", u"d")}), 2);
}

TEST(TextHistoryTest, ACommandIsAStepOfItsOwn) {
    TextHistory history;
    history.Add(Typed(0, u"", u"a"), By::Typing);
    history.Add(Typed(1, u"", u"b"), By::Command);
    history.Add(Typed(2, u"", u"c"), By::Typing);
    EXPECT_EQ(StepsOf(history), 3);
}

TEST(TextHistoryTest, TypingOnBehindAnUndoBeginsAStep) {
    TextHistory history;
    history.Add(Typed(0, u"", u"a"), By::Typing);
    history.Add(Typed(7, u"", u"b"), By::Typing);
    history.Undo();
    EXPECT_TRUE(history.CanRedo());
    history.Add(Typed(1, u"", u"c"), By::Typing);
    EXPECT_FALSE(history.CanRedo());
    EXPECT_EQ(StepsOf(history), 2);
}

TEST(TextHistoryTest, WhatWasUndoneIsDoneAgainInItsOrder) {
    TextHistory history;
    history.Add(Typed(0, u"", u"a"), By::Command);
    history.Add(Typed(1, u"", u"b"), By::Command);
    history.Undo();
    history.Undo();
    EXPECT_EQ(history.Redo().parts.front().added.text, u"a");
    EXPECT_EQ(history.Redo().parts.front().added.text, u"b");
    EXPECT_FALSE(history.CanRedo());
    history.Forget();
    EXPECT_FALSE(history.CanUndo());
}

} // namespace
} // namespace tessaly
