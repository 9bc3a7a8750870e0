// What the mouse does in the pane with Ctrl held, and how large its text is shown.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

// How far a character of the pane is from the beginning of its line, in twips.
float Across(DesktopDriver& user, std::size_t position) {
    const std::size_t begin = user.PaneShown().substr(0, position).rfind('\n') + 1;
    return user.LeftOf(position) - user.LeftOf(begin);
}

TEST_P(DesktopContract, AClickWithCtrlIsToldWhenTheCaretIsThere) {
    Edit("one two", 0);
    Pane().onCtrlClick = [this] { events.push_back("at " + std::to_string(Pane().Selected().caret.column)); };
    user->CtrlClickPane(5);
    EXPECT_EQ(events, Strings{"at 5"});
    EXPECT_TRUE(Pane().Selected().IsEmpty());
    user->ClickPane();
    EXPECT_EQ(events.size(), 1U);
}

TEST_P(DesktopContract, AClickWithCtrlMayLeadToAnotherText) {
    Edit("one two", 0);
    Pane().onCtrlClick = [this] { Pane().SetText("other"); };
    user->CtrlClickPane(5);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "aother");
    EXPECT_TRUE(Pane().Selected().IsEmpty());
}

TEST_P(DesktopContract, AnUnavailablePaneIsNotClickedWithCtrl) {
    Edit("one two", 0);
    Pane().onCtrlClick = [this] { events.emplace_back("click"); };
    Pane().SetFuncBodyAvailable(false);
    user->CtrlClickPane(0);
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheWheelWithCtrlIsToldInSteps) {
    BeginInPane();
    std::vector<int> steps;
    Pane().onCtrlWheel = [&steps](int count) { steps.push_back(count); };
    for (const int delta : {120, -240, 60, 60, -30}) {
        user->TurnCtrlWheel(delta);
    }
    EXPECT_EQ(steps, (std::vector<int>{1, -2, 1}));
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheTextAndItsTabStopsAreZoomed) {
    Edit("0123456789\n\tx", 0);
    user->Settle();
    Pane().SetTabStops({0, 1200, 2400});
    Record();
    const float width = Pane().CharacterWidth();
    const float text = Across(*user, 10);
    const float tab = Across(*user, 12);
    EXPECT_NEAR(tab, 1200, 30);
    Pane().SetZoom(200);
    EXPECT_EQ(Pane().Zoom(), 200);
    EXPECT_NEAR(Across(*user, 10), 2 * text, text / 5);
    EXPECT_NEAR(Across(*user, 12), 2 * tab, 60);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2"}));
    EXPECT_EQ(Pane().CharacterWidth(), width);
    Pane().SetTabStops({0, 600, 1200});
    EXPECT_NEAR(Across(*user, 12), 1200, 60);
    Pane().SetTabStops({0, 1200, 2400});
    Pane().SetZoom(100);
    EXPECT_EQ(Across(*user, 10), text);
    EXPECT_EQ(Across(*user, 12), tab);
    EXPECT_EQ(events, Strings{}) << "it is no change of the text";
}

TEST_P(DesktopContract, ThereIsALeastAndAMostZoom) {
    BeginInPane();
    Pane().SetZoom(1);
    EXPECT_EQ(Pane().Zoom(), RichTextBox::LeastZoom);
    Pane().SetZoom(100000);
    EXPECT_EQ(Pane().Zoom(), RichTextBox::MostZoom);
}

TEST_P(DesktopContract, AZoomStaysWhenThePaneGetsAnotherText) {
    Edit("0123456789", 0);
    Pane().SetZoom(200);
    const float zoomed = Across(*user, 10);
    Pane().SetText("9876543210");
    EXPECT_EQ(Across(*user, 10), zoomed);
    Pane().SetFuncBodyAvailable(false);
    Pane().SetFuncBodyAvailable(true);
    EXPECT_EQ(Across(*user, 10), zoomed);
    EXPECT_EQ(user->MarginShown(), Strings{"1"});
}

} // namespace
} // namespace tessaly
