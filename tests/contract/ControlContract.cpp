// What all controls of the main window have in common, and labels.
#include "tests/contract/DesktopContract.h"

#include <stdexcept>

namespace tessaly {
namespace {

std::vector<Control*> ControlsOf(Desktop& desktop) {
    return {&desktop.CodeTree(), &desktop.LblcodeTreeViewer(), &desktop.FuncLabel(),
            &desktop.FuncBody(), &desktop.VornToolBar(),       &desktop.StatusBar1()};
}

TEST_P(DesktopContract, AnExtentComesBackExactlyAsItWasSet) {
    for (Control* control : ControlsOf(TheDesktop())) {
        for (const Extent& extent : {Extent{1.1F, 12345.67F, 0.3F, 7.0001F}, Extent{-3.3F, 0, 1440.01F, 16777215}}) {
            control->SetExtent(extent);
            EXPECT_EQ(control->GetExtent(), extent);
        }
    }
}

TEST_P(DesktopContract, ExtentsStayWhenTheWindowIsShownAndResized) {
    const std::vector<Control*> controls = ControlsOf(TheDesktop());
    float step = 0.1F;
    for (Control* control : controls) {
        control->SetExtent({step, step * 3, step * 1000, step * 7000});
        step += 0.1F;
    }
    MainWindow().Show();
    user->Resize(6000, 4500);
    step = 0.1F;
    for (const Control* control : controls) {
        EXPECT_EQ(control->GetExtent(), (Extent{step, step * 3, step * 1000, step * 7000}));
        step += 0.1F;
    }
}

TEST_P(DesktopContract, AControlIsShownNoFurtherDownThanTheFooterBegins) {
    TheDesktop().AddMenu(nullptr, "mnuFile");
    MainWindow().Show();
    user->Resize(9000, 6000);
    const float client = MainWindow().ClientHeight();
    const Extent low = {0, 900, 3000, client - 900};
    const Extent high = {3300, 900, 3000, 1500};
    Tree().SetExtent(low);
    Pane().SetExtent(high);
    MainWindow().SetFooter(600);
    EXPECT_EQ(user->Shown(Tree()), (Extent{0, 900, 3000, client - 1500}));
    EXPECT_EQ(user->Shown(Pane()), high);
    user->Resize(9000, 7500);
    EXPECT_EQ(user->Shown(Tree()), low);
    user->Resize(9000, 6000);
    EXPECT_EQ(user->Shown(Tree()), (Extent{0, 900, 3000, client - 1500}));
    Pane().SetExtent(low);
    EXPECT_EQ(user->Shown(Pane()), (Extent{0, 900, 3000, client - 1500}));
    EXPECT_EQ(Tree().GetExtent(), low);
    EXPECT_EQ(Pane().GetExtent(), low);
}

TEST_P(DesktopContract, ExtentsOfDifferentControlsAreDifferent) {
    Tree().SetExtent({1, 2, 3, 4});
    Pane().SetExtent({5, 6, 7, 8});
    EXPECT_EQ(Tree().GetExtent(), (Extent{1, 2, 3, 4}));
}

TEST_P(DesktopContract, ALabelHasNoTabStop) {
    EXPECT_FALSE(TheDesktop().FuncLabel().HasTabStop());
    EXPECT_FALSE(TheDesktop().LblcodeTreeViewer().HasTabStop());
    EXPECT_THROW(TheDesktop().FuncLabel().SetTabStop(false), std::logic_error);
    EXPECT_THROW(TheDesktop().LblcodeTreeViewer().SetTabStop(true), std::logic_error);
}

TEST_P(DesktopContract, AStatusBarHasNoTabStop) {
    EXPECT_FALSE(TheDesktop().StatusBar1().HasTabStop());
    EXPECT_THROW(TheDesktop().StatusBar1().SetTabStop(false), std::logic_error);
}

TEST_P(DesktopContract, AControlThatTakesKeysHasATabStop) {
    EXPECT_TRUE(Tree().HasTabStop());
    EXPECT_TRUE(Pane().HasTabStop());
    EXPECT_TRUE(TheDesktop().VornToolBar().HasTabStop());
}

TEST_P(DesktopContract, TheTabKeyStopsWhereItWasToldTo) {
    MainWindow().Show();
    TheDesktop().VornToolBar().SetTabStop(false);
    Tree().SetTabStop(false);
    Pane().SetTabStop(true);
    Tree().SetFocus();
    Record();
    user->PressKey(KeyTab, 0);
    EXPECT_EQ(events, Strings{"got focus"});
}

TEST_P(DesktopContract, TheTabKeyStopsNowhereElse) {
    MainWindow().Show();
    TheDesktop().VornToolBar().SetTabStop(false);
    Tree().SetTabStop(false);
    Pane().SetTabStop(false);
    Tree().SetFocus();
    Record();
    user->PressKey(KeyTab, 0);
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, ALabelRefusesTheFocusWhichStaysWhereItIs) {
    MainWindow().Show();
    Pane().SetFocus();
    Record();
    EXPECT_THROW(TheDesktop().FuncLabel().SetFocus(), std::runtime_error);
    user->Type("a");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, ALabelShowsItsCaption) {
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "");
    TheDesktop().FuncLabel().SetCaption("Events & more: \xC3\xA4");
    TheDesktop().LblcodeTreeViewer().SetCaption("Tree");
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "Events & more: \xC3\xA4");
    EXPECT_EQ(user->LabelText(TheDesktop().LblcodeTreeViewer()), "Tree");
    TheDesktop().FuncLabel().SetCaption("");
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "");
    EXPECT_GE(TheDesktop().FuncLabel().PreferredHeight(), 150);
    EXPECT_LE(TheDesktop().FuncLabel().PreferredHeight(), 450);
}

} // namespace
} // namespace tessaly
