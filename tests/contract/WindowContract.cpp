// The main window as a frame, and the running program.
#include "tests/contract/DesktopContract.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace tessaly {
namespace {

TEST_P(DesktopContract, LoadIsRaisedOnceBeforeTheWindowIsShown) {
    int loads = 0;
    bool wasShown = true;
    MainWindow().onLoad = [&] {
        ++loads;
        wasShown = user->IsShown();
    };
    EXPECT_EQ(loads, 0);
    MainWindow().Show();
    EXPECT_EQ(loads, 1);
    EXPECT_FALSE(wasShown);
    EXPECT_TRUE(user->IsShown());
    MainWindow().Show();
    EXPECT_EQ(loads, 1);
}

TEST_P(DesktopContract, ResizeIsRaisedAfterTheSizeHasChanged) {
    MainWindow().Show();
    user->Resize(9000, 6000);
    std::vector<float> seen;
    MainWindow().onResize = [&] { seen = {MainWindow().Width(), MainWindow().Height()}; };
    user->Resize(7500, 5250);
    EXPECT_EQ(seen, (std::vector<float>{7500, 5250}));
    EXPECT_EQ(MainWindow().Width(), 7500);
    EXPECT_EQ(MainWindow().Height(), 5250);
}

TEST_P(DesktopContract, AWindowTakesMostOfTheScreenButNoMoreThanIsOfUse) {
    const Size usual = FirstSize({15000, 12000});
    EXPECT_FLOAT_EQ(usual.width, 15000 * 0.85F);
    EXPECT_FLOAT_EQ(usual.height, 12000 * 0.85F);
    const Size large = FirstSize({60000, 40000});
    EXPECT_EQ(large.width, 1400 * 15);
    EXPECT_EQ(large.height, 900 * 15);
}

TEST_P(DesktopContract, TheClientAreaIsWhatTheControlsHaveBelowTheMenus) {
    TheDesktop().AddMenu(nullptr, "mnuFile");
    const float width = MainWindow().ClientWidth();
    const float height = MainWindow().ClientHeight();
    EXPECT_LE(width, MainWindow().Width());
    EXPECT_LT(height, MainWindow().Height());
    Tree().SetExtent({0, 0, width, height + 3000});
    MainWindow().Show();
    user->Settle();
    EXPECT_EQ(user->Shown(Tree()), (Extent{0, 0, width, height}));
    EXPECT_EQ(MainWindow().ClientWidth(), width);
    EXPECT_EQ(MainWindow().ClientHeight(), height);
}

TEST_P(DesktopContract, TheUserCannotMakeTheWindowSmallerThanItsMinimum) {
    MainWindow().Show();
    user->Resize(9000, 6000);
    MainWindow().SetMinimumSize(7500, 5250);
    user->Resize(3000, 3000);
    EXPECT_EQ(MainWindow().Width(), 7500);
    EXPECT_EQ(MainWindow().Height(), 5250);
    user->Resize(7800, 5700);
    EXPECT_EQ(MainWindow().Width(), 7800);
    EXPECT_EQ(MainWindow().Height(), 5700);
}

TEST_P(DesktopContract, AKeyIsToldBeforeItReachesTheControl) {
    Edit("", 0);
    Record();
    MainWindow().onKeyDown = [this](int keyCode, int shift) {
        events.push_back(std::to_string(keyCode) + "/" + std::to_string(shift) + ":" + Pane().Text());
    };
    user->PressKey('A', 0);
    EXPECT_EQ(events, (Strings{"65/0:", "change"}));
    EXPECT_EQ(Pane().Text(), "a");
}

TEST_P(DesktopContract, FunctionKeysAreToldAndChangeNoText) {
    Edit("ab", 1);
    for (const int key : {KeyF2, KeyF3, KeyF4, KeyF5}) {
        std::vector<int> seen;
        MainWindow().onKeyDown = [&](int keyCode, int shift) { seen = {keyCode, shift}; };
        user->PressKey(key, 0);
        EXPECT_EQ(seen, (std::vector<int>{key, 0}));
        user->PressKey(key, 3);
        EXPECT_EQ(seen, (std::vector<int>{key, 3}));
    }
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AKeyReachesTheControlThatHasTheFocusAfterTheEvent) {
    MainWindow().Show();
    Tree().SetFocus();
    MainWindow().onKeyDown = [this](int, int) { Pane().SetFocus(); };
    user->PressKey('B', 0);
    EXPECT_EQ(Pane().Text(), "b");
}

TEST_P(DesktopContract, AKeyOfTheWindowsOwnReachesNoControl) {
    Edit("b", 0);
    std::vector<int> asked;
    MainWindow().onOwnKey = [&asked](int keyCode, int) {
        asked.push_back(keyCode);
        return keyCode == KeyEnter;
    };
    bool isInPane = false;
    Pane().onKey = [&isInPane](const PaneKey& key) {
        isInPane = isInPane || key.keyCode == KeyEnter;
        return false;
    };
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Pane().Text(), "b");
    EXPECT_FALSE(isInPane);
    EXPECT_EQ(asked, std::vector<int>{KeyEnter});
    user->PressKey(KeyF2, 0);
    EXPECT_EQ(asked.back(), KeyF2);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AKeyWithTheFocusElsewhereDoesNotReachThePane) {
    Edit("", 0);
    Tree().SetFocus();
    user->PressKey('B', 0);
    EXPECT_EQ(Pane().Text(), "");
}

TEST_P(DesktopContract, TheTabKeyInThePaneIsText) {
    Edit("", 0);
    Record();
    user->PressKey(9, 0);
    EXPECT_EQ(Pane().Text(), "\t");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, UnloadIsRaisedOnceAndEndsTheProgram) {
    int unloads = 0;
    MainWindow().Show();
    MainWindow().onUnload = [&] {
        ++unloads;
        MainWindow().Unload();
    };
    EXPECT_FALSE(user->HasEnded());
    MainWindow().Unload();
    EXPECT_EQ(unloads, 1);
    EXPECT_TRUE(user->HasEnded());
    EXPECT_FALSE(user->IsShown());
}

TEST_P(DesktopContract, TheUserClosesTheWindowLikeTheProgram) {
    int unloads = 0;
    MainWindow().Show();
    MainWindow().onUnload = [&] { ++unloads; };
    user->CloseByUser();
    EXPECT_EQ(unloads, 1);
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, AWindowThatIsDestroyedFromOutsideIsUnloadedAndEndsTheProgram) {
    MainWindow().Show();
    Pane().SetText("a\nb");
    Strings seen;
    MainWindow().onUnload = [&] { seen.push_back(Pane().Text()); };
    user->DestroyFromOutside();
    EXPECT_EQ(seen, Strings{"a\nb"});
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, AQuestionCanStillBeAskedWhenTheWindowIsDestroyedFromOutside) {
    MainWindow().Show();
    MsgResult answer = MsgResult::Ok;
    MainWindow().onUnload = [&] {
        answer = TheDesktop().MessageBoxes().Show("text", "caption", MsgButtons::YesNoCancel, MsgIcon::Question);
    };
    user->WillPress(MsgResult::Yes);
    user->DestroyFromOutside();
    EXPECT_EQ(answer, MsgResult::Yes);
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, TheEndOfTheSessionAsksAndEndsTheProgram) {
    MainWindow().Show();
    std::vector<MsgResult> answers;
    MainWindow().onUnload = [&] {
        answers.push_back(
            TheDesktop().MessageBoxes().Show("text", "caption", MsgButtons::YesNoCancel, MsgIcon::Question));
    };
    user->WillPress(MsgResult::Yes);
    user->EndSession(true);
    EXPECT_EQ(answers, std::vector<MsgResult>{MsgResult::Yes});
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, NobodyIsAskedAfterTheEndOfTheSession) {
    MainWindow().Show();
    std::vector<MsgResult> answers;
    MainWindow().onUnload = [&] {
        for (const MsgButtons buttons : {MsgButtons::YesNoCancel, MsgButtons::YesNo, MsgButtons::Ok}) {
            answers.push_back(TheDesktop().MessageBoxes().Show("text", "caption", buttons, MsgIcon::Question));
        }
    };
    user->EndSession(false);
    EXPECT_EQ(answers, (std::vector<MsgResult>{MsgResult::Cancel, MsgResult::No, MsgResult::Ok}));
    EXPECT_EQ(user->MessageBoxes().size(), 0U);
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, TheWindowGoesEvenIfTheUnloadHandlerFails) {
    MainWindow().Show();
    MainWindow().onUnload = [] { throw std::runtime_error("unload"); };
    try {
        MainWindow().Unload();
    } catch (const std::runtime_error&) { // whether it comes out is not promised
    }
    EXPECT_TRUE(user->HasEnded());
}

TEST_P(DesktopContract, TheControlsCanStillBeReadWhenTheWindowIsAboutToGo) {
    MainWindow().Show();
    Pane().SetText("a\nb");
    std::string seen;
    MainWindow().onUnload = [&] { seen = Pane().Text(); };
    user->CloseByUser();
    EXPECT_EQ(seen, "a\nb");
}

TEST_P(DesktopContract, TheWindowIsIdleWhenWhatTheUserTypedIsDone) {
    BeginInPane();
    MainWindow().onIdle = [&] { events.emplace_back("idle"); };
    user->Type("xy");
    user->Settle();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back(), "idle");
    EXPECT_EQ(std::count(events.begin(), events.end(), "change"), 2);
}

TEST_P(DesktopContract, TheWindowIsSuspendedWhenTheUserGoesToAnotherProgram) {
    MainWindow().Show();
    user->Settle();
    int suspended = 0;
    MainWindow().onSuspend = [&] { ++suspended; };
    user->GoToAnotherProgram();
    EXPECT_EQ(suspended, 1);
}

TEST_P(DesktopContract, HandlersThatFailWhenTheWindowIsIdleOrSuspendedAreNoEnd) {
    MainWindow().Show();
    int raised = 0;
    MainWindow().onIdle = MainWindow().onSuspend = [&] {
        ++raised;
        throw std::runtime_error("no room");
    };
    user->Settle();
    user->GoToAnotherProgram();
    EXPECT_GE(raised, 2);
    EXPECT_TRUE(user->IsShown());
}

TEST_P(DesktopContract, ADroppedFileIsToldByItsPath) {
    MainWindow().Show();
    Strings dropped;
    MainWindow().onFileDropped = [&](const std::string& path) { dropped.push_back(path); };
    const Strings paths = {user->FilePath("a b.PSF"), user->FilePath("\xC3\xA4.PSF")};
    for (const std::string& path : paths) {
        TheDesktop().Files().OpenForOutput(path)->Close();
        user->DropFile(path);
    }
    EXPECT_EQ(dropped, paths);
}

TEST_P(DesktopContract, TheWindowShowsItsCaption) {
    MainWindow().SetCaption("Tessaly \xC3\xA4 & more");
    EXPECT_EQ(user->Caption(), "Tessaly \xC3\xA4 & more");
}

TEST_P(DesktopContract, AnIconThatCannotBeLoadedLeavesTheOldOne) {
    const std::string first = user->Icon();
    MainWindow().SetIcon(user->PicturePath());
    const std::string second = user->Icon();
    EXPECT_NE(second, first);
    EXPECT_THROW(MainWindow().SetIcon(user->FilePath("no such picture")), std::runtime_error);
    EXPECT_THROW(MainWindow().SetIcon(""), std::runtime_error);
    EXPECT_EQ(user->Icon(), second);
}

TEST_P(DesktopContract, TheCommandLineIsGivenAsItStands) {
    EXPECT_EQ(TheDesktop().App().commandLine, "");
    for (const std::string line : {"\"a  b.PSF\"  c", "C:\\x y.PSF", "\xC3\xA4.PSF"}) {
        Start({line});
        EXPECT_EQ(TheDesktop().App().commandLine, line);
    }
}

TEST_P(DesktopContract, TheProgramHasAVersionAndATitle) {
    EXPECT_GE(TheDesktop().App().majorVersion, 0);
    EXPECT_GE(TheDesktop().App().minorVersion, 0);
    EXPECT_GE(TheDesktop().App().revision, 0);
    EXPECT_NE(TheDesktop().App().title, "");
}

TEST_P(DesktopContract, F1DoesNothingWithoutAHelpFile) {
    MainWindow().Show();
    user->PressKey(KeyF1, 0);
    EXPECT_EQ(user->HelpOpened(0), Strings{});
}

TEST_P(DesktopContract, F1OpensTheHelpFileThatWasSetLast) {
    MainWindow().Show();
    TheDesktop().App().helpFile = user->FilePath("first.chm");
    TheDesktop().App().helpFile = user->FilePath("second.chm");
    EXPECT_EQ(user->HelpOpened(0), Strings{});
    user->PressKey(KeyF1, 0);
    EXPECT_EQ(user->HelpOpened(1), Strings{user->FilePath("second.chm")});
}

TEST_P(DesktopContract, SentF1ArrivesLaterLikeAPressedOne) {
    MainWindow().Show();
    TheDesktop().App().helpFile = user->FilePath("help.chm");
    MainWindow().onKeyDown = [this](int keyCode, int shift) {
        events.push_back(std::to_string(keyCode) + "/" + std::to_string(shift));
    };
    TheDesktop().App().SendF1();
    EXPECT_EQ(events, Strings{});
    user->Settle();
    EXPECT_EQ(events, Strings{"112/0"});
    EXPECT_EQ(user->HelpOpened(1), Strings{user->FilePath("help.chm")});
}

TEST_P(DesktopContract, AFileExistsOnceItWasMadeButAFolderIsNoFile) {
    const std::string path = user->FilePath("new");
    EXPECT_FALSE(TheDesktop().Files().FileExists(path));
    TheDesktop().Files().OpenForOutput(path)->Close();
    EXPECT_TRUE(TheDesktop().Files().FileExists(path));
    EXPECT_FALSE(TheDesktop().Files().FileExists(user->FolderPath()));
    EXPECT_FALSE(TheDesktop().Files().FileExists(""));
}

TEST_P(DesktopContract, AProcessIsStartedWithItsCommandLineAndStyle) {
    TheDesktop().App().StartProcess(user->StartableCommand(), MaximizedWithFocus);
    EXPECT_TRUE(user->HasStarted(user->StartableCommand(), 3));
}

TEST_P(DesktopContract, AProcessThatCannotBeStartedIsAnError) {
    EXPECT_THROW(TheDesktop().App().StartProcess(user->UnstartableCommand(), MaximizedWithFocus), std::system_error);
    EXPECT_TRUE(user->HasStartedNothing());
}

} // namespace
} // namespace tessaly
