// The bar over the pane: its lines of text and its buttons, and the room that the pane makes for it.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

// The window with some controls of the bar shown in places of their own.
class BarUser {
public:
    explicit BarUser(Desktop& desktop) : bar(desktop.Bar()) {
        desktop.MainWindow().Show();
        float top = 1200;
        for (Control* const control : {static_cast<Control*>(&bar.wanted), static_cast<Control*>(&bar.replacement),
                                       static_cast<Control*>(&bar.next), static_cast<Control*>(&bar.matchCase)}) {
            control->SetExtent({4500, top, 2400, 450});
            control->SetVisible(true);
            top += 600;
        }
    }

    const BarControls& bar;
};

TEST_P(DesktopContract, TheBarIsNotThereAtFirst) {
    MainWindow().Show();
    for (Control* const control : TheDesktop().Bar().All()) {
        EXPECT_FALSE(control->IsVisible());
        EXPECT_FALSE(control->CanHaveFocus());
        EXPECT_FALSE(user->IsSeen(*control));
    }
}

TEST_P(DesktopContract, AControlOfTheBarComesAndGoes) {
    const BarUser shown(TheDesktop());
    EXPECT_TRUE(user->IsSeen(shown.bar.wanted));
    shown.bar.wanted.SetVisible(false);
    EXPECT_FALSE(user->IsSeen(shown.bar.wanted));
    EXPECT_THROW(shown.bar.wanted.SetFocus(), std::runtime_error);
}

TEST_P(DesktopContract, ALineOfTextTellsWhatTheUserTypes) {
    const BarUser shown(TheDesktop());
    TextBox& line = shown.bar.wanted;
    int told = 0;
    line.onChange = [&told] { ++told; };
    user->Click(line);
    line.SetText("a & \xC3\xA4\r\nsecond");
    EXPECT_EQ(line.Text(), "a & \xC3\xA4");
    EXPECT_EQ(user->WordsOn(line), "a & \xC3\xA4");
    EXPECT_EQ(told, 0);
    user->Type("x");
    EXPECT_EQ(line.Text(), "x");
    EXPECT_EQ(told, 1);
    user->Type("y");
    EXPECT_EQ(line.Text(), "xy");
    EXPECT_EQ(told, 2);
}

TEST_P(DesktopContract, WhatIsTypedInALineOfTextIsNotForThePane) {
    BeginInPane();
    const BarUser shown(TheDesktop());
    user->Click(shown.bar.wanted);
    EXPECT_EQ(events, Strings{"lost focus"});
    EXPECT_TRUE(shown.bar.wanted.HasKeyboard());
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "b");
    Pane().SetFocus();
    EXPECT_FALSE(shown.bar.wanted.HasKeyboard());
    EXPECT_EQ(events.back(), "got focus");
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, TheProgramCanGiveTheKeyboardToALineOfText) {
    BeginInPane();
    const BarUser shown(TheDesktop());
    shown.bar.wanted.SetFocus();
    EXPECT_EQ(events, Strings{"lost focus"});
    user->Type("a");
    EXPECT_EQ(shown.bar.wanted.Text(), "a");
}

TEST_P(DesktopContract, AButtonTellsThatItIsPressed) {
    const BarUser shown(TheDesktop());
    int told = 0;
    shown.bar.next.onClick = [&told] { ++told; };
    user->Click(shown.bar.next);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(shown.bar.next.IsChecked());
}

TEST_P(DesktopContract, AButtonMayHideItself) {
    const BarUser shown(TheDesktop());
    shown.bar.next.onClick = [&shown] { shown.bar.next.SetVisible(false); };
    user->Click(shown.bar.next);
    EXPECT_FALSE(user->IsSeen(shown.bar.next));
}

TEST_P(DesktopContract, ACheckBoxIsCheckedWhenItTells) {
    const BarUser shown(TheDesktop());
    std::vector<bool> told;
    shown.bar.matchCase.onClick = [&] { told.push_back(shown.bar.matchCase.IsChecked()); };
    user->Click(shown.bar.matchCase);
    user->Click(shown.bar.matchCase);
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_P(DesktopContract, TheCaptionOfAButtonStandsAsItIsAndFits) {
    const BarUser shown(TheDesktop());
    for (Button* const button : {&shown.bar.next, &shown.bar.matchCase}) {
        button->SetCaption("a & b");
        EXPECT_EQ(user->WordsOn(*button), "a & b");
        const float before = button->PreferredSize().width;
        button->SetCaption("a & b, and much more than that");
        EXPECT_GT(button->PreferredSize().width, before);
        EXPECT_GT(button->PreferredSize().height, 0);
    }
    EXPECT_GT(shown.bar.wanted.PreferredHeight(), 0);
}

TEST_P(DesktopContract, TabGoesRoundInTheBar) {
    constexpr int tab = 9;
    const BarUser shown(TheDesktop());
    for (Control* const control : {static_cast<Control*>(&Tree()), static_cast<Control*>(&Pane()),
                                   static_cast<Control*>(&TheDesktop().VornToolBar())}) {
        control->SetTabStop(false);
    }
    user->Click(shown.bar.wanted);
    for (Control* const next :
         {static_cast<Control*>(&shown.bar.matchCase), static_cast<Control*>(&shown.bar.next),
          static_cast<Control*>(&shown.bar.replacement), static_cast<Control*>(&shown.bar.wanted)}) {
        user->PressKey(tab, 0);
        EXPECT_TRUE(next->HasKeyboard());
    }
}

TEST_P(DesktopContract, ThePaneMakesRoomAboveItsText) {
    MainWindow().Show();
    user->Settle();
    const Extent set = {4500, 900, 4500, 3000};
    Pane().SetExtent(set);
    const Extent whole = user->Shown(Pane());
    Pane().SetRoomAbove(600);
    EXPECT_EQ(Pane().GetExtent(), set);
    EXPECT_NEAR(user->Shown(Pane()).top, whole.top + 600, 15);
    EXPECT_NEAR(user->Shown(Pane()).height, whole.height - 600, 15);
    EXPECT_EQ(user->Shown(Pane()).left, whole.left);
    Pane().SetExtent(set);
    EXPECT_NEAR(user->Shown(Pane()).height, whole.height - 600, 15);
    Pane().SetRoomAbove(0);
    EXPECT_EQ(user->Shown(Pane()), whole);
}

} // namespace
} // namespace tessaly
