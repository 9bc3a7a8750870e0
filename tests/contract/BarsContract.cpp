// Status bar, tool bar, image list and menus.
#include "tests/contract/DesktopContract.h"

#include <stdexcept>

namespace tessaly {
namespace {

TEST_P(DesktopContract, AStatusBarBeginsWithoutAPanel) {
    StatusBar& bar = TheDesktop().StatusBar1();
    EXPECT_THROW(bar.SetPanelText(1, "text"), std::out_of_range);
    EXPECT_THROW(bar.SetPanelSpring(1), std::out_of_range);
}

TEST_P(DesktopContract, APanelIsAddedAtTheEndWithoutText) {
    StatusBar& bar = TheDesktop().StatusBar1();
    bar.AddPanel();
    EXPECT_EQ(user->PanelToolTip(1), "");
    bar.SetPanelText(1, "first");
    bar.AddPanel();
    EXPECT_THROW(bar.SetPanelText(3, "third"), std::out_of_range);
    EXPECT_EQ(user->PanelToolTip(1), "first");
    EXPECT_EQ(user->PanelToolTip(2), "");
}

TEST_P(DesktopContract, EveryPanelHasItsOwnText) {
    StatusBar& bar = TheDesktop().StatusBar1();
    for (int i = 0; i < 3; ++i) {
        bar.AddPanel();
    }
    bar.SetPanelText(2, "two \xC3\xA4 & \t");
    bar.SetPanelText(3, "three");
    bar.SetPanelSpring(2);
    EXPECT_EQ(user->PanelToolTip(1), "");
    EXPECT_EQ(user->PanelToolTip(2), "two \xC3\xA4 & \t");
    EXPECT_EQ(user->PanelToolTip(3), "three");
}

TEST_P(DesktopContract, APanelThatIsNotThereHasNothing) {
    StatusBar& bar = TheDesktop().StatusBar1();
    bar.AddPanel();
    for (const std::int32_t number : {-1, 0, 2}) {
        EXPECT_THROW(bar.SetPanelText(number, "text"), std::out_of_range);
        EXPECT_THROW(bar.SetPanelSpring(number), std::out_of_range);
    }
    EXPECT_EQ(user->PanelToolTip(1), "");
}

TEST_P(DesktopContract, SpringingPanelsShareTheWidthThatTheOthersLeave) {
    MainWindow().Show();
    StatusBar& bar = TheDesktop().StatusBar1();
    for (int i = 0; i < 3; ++i) {
        bar.AddPanel();
    }
    bar.SetExtent({0, 6000, 9000, 300});
    const float fixedWidth = user->PanelWidth(3);
    bar.SetPanelSpring(1);
    bar.SetPanelSpring(2);
    constexpr float Pixels = 150; // what a real bar needs for frames and rounding
    EXPECT_NEAR(user->PanelWidth(3), fixedWidth, Pixels);
    EXPECT_NEAR(user->PanelWidth(1), user->PanelWidth(2), Pixels);
    EXPECT_NEAR(user->PanelWidth(1) * 2 + fixedWidth, 9000, 3 * Pixels);
}

TEST_P(DesktopContract, TheToolTipOfAPanelIsItsWholeText) {
    MainWindow().Show();
    StatusBar& bar = TheDesktop().StatusBar1();
    bar.AddPanel();
    bar.AddPanel();
    const std::string path = "File=/" + std::string(300, 'x') + "/a  <b>&amp; \xC3\xA4.PSF";
    bar.SetPanelText(1, path);
    EXPECT_EQ(user->PanelToolTip(1), path);
    bar.SetPanelText(1, "short");
    bar.SetPanelText(2, "other");
    EXPECT_EQ(user->PanelToolTip(1), "short");
    EXPECT_EQ(user->PanelToolTip(2), "other");
}

TEST_P(DesktopContract, TheBarsStandAtTheEdgesAndAreAsHighAsTheySay) {
    const float toolBarHeight = TheDesktop().VornToolBar().PreferredHeight();
    const float statusHeight = TheDesktop().StatusBar1().PreferredHeight();
    TheDesktop().AddMenu(nullptr, "mnuFile");
    TheDesktop().VornToolBar().AddButton(1, "Add");
    TheDesktop().StatusBar1().AddPanel();
    MainWindow().Show();
    user->Settle();
    const Extent toolBar = user->Shown(TheDesktop().VornToolBar());
    const Extent status = user->Shown(TheDesktop().StatusBar1());
    EXPECT_EQ(toolBar.top, 0);
    EXPECT_EQ(toolBar.height, toolBarHeight);
    EXPECT_EQ(status.height, statusHeight);
    EXPECT_EQ(status.top + status.height, MainWindow().ClientHeight());
    EXPECT_EQ(status.width, MainWindow().ClientWidth());
    TheDesktop().VornToolBar().Clear();
    EXPECT_EQ(user->Shown(TheDesktop().VornToolBar()).height, toolBarHeight);
}

TEST_P(DesktopContract, TheImagesHaveTheirTags) {
    EXPECT_EQ(TheDesktop().QuorvaneImages().Tag(1), "Add");
    EXPECT_EQ(TheDesktop().QuorvaneImages().Tag(2), "Delete");
    EXPECT_THROW(TheDesktop().QuorvaneImages().Tag(0), std::out_of_range);
    EXPECT_THROW(TheDesktop().QuorvaneImages().Tag(3), std::out_of_range);
}

TEST_P(DesktopContract, AToolBarIsEmptyAtFirst) {
    EXPECT_EQ(TheDesktop().VornToolBar().ButtonCount(), 0);
    EXPECT_THROW(TheDesktop().VornToolBar().ButtonTag(1), std::out_of_range);
}

TEST_P(DesktopContract, ButtonsCountFrom1InTheOrderOfAdding) {
    ToolBar& bar = TheDesktop().VornToolBar();
    bar.AddButton(2, "second image");
    bar.AddButton(1, "");
    bar.AddButton(2, "second image");
    EXPECT_EQ(bar.ButtonCount(), 3);
    EXPECT_EQ(bar.ButtonTag(1), "second image");
    EXPECT_EQ(bar.ButtonTag(2), "");
    EXPECT_EQ(bar.ButtonTag(3), "second image");
    EXPECT_THROW(bar.ButtonTag(0), std::out_of_range);
    EXPECT_THROW(bar.ButtonTag(4), std::out_of_range);
}

TEST_P(DesktopContract, TheTipOfAButtonIsItsTagUntilAnotherIsSet) {
    ToolBar& bar = TheDesktop().VornToolBar();
    bar.AddButton(1, "Add");
    bar.AddButton(2, "Delete");
    EXPECT_EQ(user->ButtonTip(1), "Add");
    bar.SetButtonTip(2, "L\xC3\xB6schen");
    bar.SetButtonTip(1, "Funktion hinzuf\xC3\xBCgen");
    EXPECT_EQ(user->ButtonTip(1), "Funktion hinzuf\xC3\xBCgen");
    EXPECT_EQ(user->ButtonTip(2), "L\xC3\xB6schen");
    EXPECT_EQ(bar.ButtonTag(1), "Add");
    EXPECT_THROW(bar.SetButtonTip(0, "tip"), std::out_of_range);
    EXPECT_THROW(bar.SetButtonTip(3, "tip"), std::out_of_range);
}

TEST_P(DesktopContract, AButtonNeedsAnImageThatIsThere) {
    ToolBar& bar = TheDesktop().VornToolBar();
    EXPECT_THROW(bar.AddButton(0, "tag"), std::out_of_range);
    EXPECT_THROW(bar.AddButton(-1, "tag"), std::out_of_range);
    EXPECT_THROW(bar.AddButton(3, "tag"), std::out_of_range);
    EXPECT_EQ(bar.ButtonCount(), 0);
}

TEST_P(DesktopContract, ClearRemovesAllButtons) {
    ToolBar& bar = TheDesktop().VornToolBar();
    bar.AddButton(1, "old");
    bar.Clear();
    EXPECT_EQ(bar.ButtonCount(), 0);
    bar.Clear();
    bar.AddButton(2, "new");
    EXPECT_EQ(bar.ButtonTag(1), "new");
}

TEST_P(DesktopContract, APressTellsTheNumberOfTheButton) {
    ToolBar& bar = TheDesktop().VornToolBar();
    bar.AddButton(1, "one");
    bar.AddButton(2, "two");
    std::vector<std::int32_t> pressed;
    bar.onButtonClick = [&](std::int32_t number) { pressed.push_back(number); };
    MainWindow().Show();
    user->PressButton(2);
    EXPECT_EQ(pressed, std::vector<std::int32_t>{2});
    user->PressButton(1);
    EXPECT_EQ(pressed, (std::vector<std::int32_t>{2, 1}));
}

TEST_P(DesktopContract, TheButtonHandlerMayRebuildTheBar) {
    ToolBar& bar = TheDesktop().VornToolBar();
    bar.AddButton(1, "one");
    bar.onButtonClick = [&](std::int32_t) {
        bar.Clear();
        bar.AddButton(2, "other");
    };
    MainWindow().Show();
    user->PressButton(1);
    EXPECT_EQ(bar.ButtonTag(1), "other");
}

TEST_P(DesktopContract, AMenuBeginsWithItsNameAsCaptionAndUnchecked) {
    MenuItem& item = TheDesktop().AddMenu(nullptr, "mnuFile");
    EXPECT_EQ(item.Name(), "mnuFile");
    EXPECT_EQ(user->MenuCaption(item), "mnuFile");
    EXPECT_FALSE(user->IsChecked(item));
}

TEST_P(DesktopContract, CaptionAndCheckMarkOfAMenuItemCanBeChanged) {
    MenuItem& menu = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& item = TheDesktop().AddMenu(&menu, "mnuOpen");
    MenuItem& other = TheDesktop().AddMenu(&menu, "mnuSave");
    item.SetCaption("&\xC3\x96"
                    "ffnen");
    item.SetChecked(true);
    EXPECT_EQ(user->MenuCaption(item), "&\xC3\x96"
                                       "ffnen");
    EXPECT_EQ(item.Name(), "mnuOpen");
    EXPECT_TRUE(user->IsChecked(item));
    EXPECT_FALSE(user->IsChecked(other));
    item.SetChecked(false);
    EXPECT_FALSE(user->IsChecked(item));
}

TEST_P(DesktopContract, MenusStandInTheOrderOfAdding) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& help = TheDesktop().AddMenu(nullptr, "mnuHelp");
    TheDesktop().AddMenu(&file, "mnuOpen");
    TheDesktop().AddMenu(&help, "mnuAbout");
    TheDesktop().AddMenuSeparator(file);
    TheDesktop().AddMenu(&file, "mnuExit");
    EXPECT_EQ(user->MenusIn(nullptr), (Strings{"mnuFile", "mnuHelp"}));
    EXPECT_EQ(user->MenusIn(&file), (Strings{"mnuOpen", "-", "mnuExit"}));
    EXPECT_EQ(user->MenusIn(&help), Strings{"mnuAbout"});
}

TEST_P(DesktopContract, MenuNamesAreUniqueOverAllMenus) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    TheDesktop().AddMenu(&file, "mnuOpen");
    EXPECT_THROW(TheDesktop().AddMenu(nullptr, "mnuOpen"), std::invalid_argument);
    EXPECT_THROW(TheDesktop().AddMenu(&file, "mnuFile"), std::invalid_argument);
    EXPECT_EQ(user->MenusIn(nullptr), Strings{"mnuFile"});
    EXPECT_EQ(user->MenusIn(&file), Strings{"mnuOpen"});
}

TEST_P(DesktopContract, AMenuItemRaisesItsClickWhenItIsChosen) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& open = TheDesktop().AddMenu(&file, "mnuOpen");
    MenuItem& save = TheDesktop().AddMenu(&file, "mnuSave");
    file.onClick = [this] { events.emplace_back("file"); };
    open.onClick = [this] { events.emplace_back("open"); };
    save.onClick = [this] { events.emplace_back("save"); };
    MainWindow().Show();
    user->ChooseMenu(save);
    EXPECT_EQ(events, Strings{"save"});
    user->ChooseMenu(open);
    EXPECT_EQ(events, (Strings{"save", "open"}));
    EXPECT_FALSE(user->IsChecked(open));
}

} // namespace
} // namespace tessaly
