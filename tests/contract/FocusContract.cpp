// The lost and gained events of controls follow the keyboard, wherever it goes and whatever comes in between.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

TEST_P(DesktopContract, MovingTheFocusRaisesLostAndGained) {
    MainWindow().Show();
    Tree().SetFocus();
    Record();
    Pane().SetFocus();
    EXPECT_EQ(events, Strings{"got focus"});
    Tree().SetFocus();
    EXPECT_EQ(events, (Strings{"got focus", "lost focus"}));
    Pane().SetFocus();
    EXPECT_EQ(events, (Strings{"got focus", "lost focus", "got focus"}));
}

TEST_P(DesktopContract, TheFocusOnTheControlThatHasItRaisesNothing) {
    MainWindow().Show();
    Pane().SetFocus();
    Record();
    Pane().SetFocus();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AControlThatLosesTheFocusCanTakeItBack) {
    BeginInPane();
    Pane().onLostFocus = [this] {
        events.emplace_back("lost focus");
        Pane().onLostFocus = nullptr;
        Pane().SetFocus();
    };
    Tree().SetFocus();
    user->Settle();
    EXPECT_EQ(events, (Strings{"lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AMessageBoxTakesTheKeyboardUntilItIsGone) {
    BeginInPane();
    ShowBox();
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AFileDialogTakesTheKeyboardUntilItIsGone) {
    BeginInPane();
    user->WillCancelFileDialog();
    FileDialogSettings settings;
    settings.filter = "All|*";
    TheDesktop().CommonDialog1().ShowOpen(settings);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
}

TEST_P(DesktopContract, TheNameWindowTakesTheKeyboardUntilItIsGone) {
    BeginInPane();
    const std::unique_ptr<NameWindow> name = TheDesktop().NewNameWindow();
    name->onOk = [this, &name] {
        events.emplace_back("OK");
        ShowBox();
        name->Hide();
    };
    user->WillUseName([](NameWindowUser& nameUser) { nameUser.PressOk(); });
    name->ShowModal();
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "OK", "got focus"}));
}

TEST_P(DesktopContract, TheSplashWindowTakesTheKeyboardUntilItIsGone) {
    BeginInPane();
    const std::unique_ptr<SplashWindow> splash = TheDesktop().NewSplashWindow();
    splash->onKeyPress = [&splash] { splash->Hide(); };
    user->WillUseSplash([](SplashWindowUser& splashUser) { splashUser.PressKey('A'); });
    splash->ShowModal();
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
}

TEST_P(DesktopContract, AKeyAloneTakesNothing) {
    BeginInPane();
    MainWindow().onKeyDown = [this](int, int) { events.emplace_back("key"); };
    user->PressKey(KeyF5, 0);
    EXPECT_EQ(events, Strings{"key"});
}

TEST_P(DesktopContract, AKeyThatShowsBoxesHasTheKeyboardUntilItsCommandHasEnded) {
    BeginInPane();
    MainWindow().onKeyDown = [this](int, int) {
        ShowBox();
        ShowBox();
        user->Settle();
        Pane().SetText("by the program");
        events.emplace_back("end");
    };
    user->PressKey(KeyF5, 0);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "change", "end", "got focus"}));
}

TEST_P(DesktopContract, AKeyThatMovesTheFocusIsToldAtOnce) {
    BeginInPane();
    MainWindow().onKeyDown = [this](int keyCode, int) {
        keyCode == KeyF2 ? Tree().SetFocus() : Pane().SetFocus();
        events.emplace_back("end");
    };
    user->PressKey(KeyF2, 0);
    user->PressKey(KeyF3, 0);
    EXPECT_EQ(events, (Strings{"lost focus", "end", "got focus", "end"}));
}

TEST_P(DesktopContract, AMenuItemThatAKeyChoosesHasTheKeyboardUntilItsCommandHasEnded) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    TheDesktop().AddMenu(&file, "mnuSave").onClick = [this] {
        ShowBox();
        events.emplace_back("saved");
    };
    BeginInPane();
    MainWindow().onKeyDown = [this](int keyCode, int) {
        if (keyCode == 'S') {
            TheDesktop().ChooseMenu("mnuSave");
        }
    };
    user->PressKey('S', 2);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "saved", "got focus"}));
}

TEST_P(DesktopContract, AMenuThatIsLeftGivesTheKeyboardBack) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    TheDesktop().AddMenu(&file, "mnuSave");
    BeginInPane();
    user->OpenMenuAndLeave(file);
    EXPECT_EQ(events, (Strings{"lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AMenuItemHasTheKeyboardUntilItsCommandHasEnded) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& save = TheDesktop().AddMenu(&file, "mnuSave");
    BeginInPane();
    save.onClick = [this] { events.emplace_back("saved"); };
    user->ChooseMenu(save);
    EXPECT_EQ(events, (Strings{"lost focus", "saved", "got focus"}));
    events.clear();
    save.onClick = [this] {
        ShowBox();
        user->Settle();
        events.emplace_back("saved");
    };
    user->ChooseMenu(save);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "saved", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AButtonHasTheKeyboardUntilItsCommandHasEnded) {
    BeginInPane();
    TheDesktop().VornToolBar().AddButton(1, "Add");
    TheDesktop().VornToolBar().onButtonClick = [this](std::int32_t) { events.emplace_back("pressed"); };
    user->PressButton(1);
    EXPECT_EQ(events, (Strings{"lost focus", "pressed", "got focus"}));
    TheDesktop().VornToolBar().onButtonClick = [this](std::int32_t) { ShowBox(); };
    events.clear();
    user->PressButton(1);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, ADroppedFileHasTheKeyboardUntilItsCommandHasEnded) {
    BeginInPane();
    const std::string path = user->FilePath("a.PSF");
    TheDesktop().Files().OpenForOutput(path)->Close();
    MainWindow().onFileDropped = [this](const std::string&) { events.emplace_back("dropped"); };
    user->DropFile(path);
    EXPECT_EQ(events, (Strings{"lost focus", "dropped", "got focus"}));
}

TEST_P(DesktopContract, AnotherWindowTakesTheKeyboardUntilItIsLeft) {
    BeginInPane();
    user->GoToAnotherWindow();
    ASSERT_EQ(events, Strings{"lost focus"});
    user->ComeBack();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AControlThatHasNotTheFocusIsToldNothing) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& save = TheDesktop().AddMenu(&file, "mnuSave");
    BeginInPane();
    Tree().SetFocus();
    events.clear();
    save.onClick = [this] { ShowBox(); };
    user->ChooseMenu(save);
    user->GoToAnotherWindow();
    user->ComeBack();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AnUnavailablePaneKeepsTheFocusWhateverComesInFront) {
    BeginInPane();
    MainWindow().onKeyDown = [this](int, int) {
        ShowBox();
        Pane().SetFuncBodyAvailable(false);
    };
    user->PressKey(KeyF4, 0);
    user->Settle();
    MainWindow().onKeyDown = nullptr;
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"lost focus", "got focus"}));
    Pane().SetFuncBodyAvailable(true);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AWindowThatClosesTellsNothing) {
    BeginInPane();
    MainWindow().onUnload = [this] { ShowBox(); };
    user->CloseByUser();
    EXPECT_TRUE(user->HasEnded());
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AWindowCanCloseWhileItsCommandShowsABox) {
    MenuItem& file = TheDesktop().AddMenu(nullptr, "mnuFile");
    MenuItem& save = TheDesktop().AddMenu(&file, "mnuSave");
    BeginInPane();
    save.onClick = [this] {
        ShowBox();
        MainWindow().Unload();
        events.emplace_back("end");
    };
    user->ChooseMenu(save);
    EXPECT_TRUE(user->HasEnded());
    EXPECT_EQ(events, (Strings{"lost focus", "end"}));
}

} // namespace
} // namespace tessaly
