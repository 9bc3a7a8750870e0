// Message boxes, file dialogs and the two modal windows.
#include "tests/contract/DesktopContract.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {
namespace {

FileDialogSettings SomeSettings() {
    FileDialogSettings settings;
    settings.fileName = "name.PSF";
    settings.filter = "Programs (*.PSF)|*.PSF|All|*.*";
    return settings;
}

TEST_P(DesktopContract, AMessageBoxReturnsTheButtonThatWasPressed) {
    MsgBox& box = TheDesktop().MessageBoxes();
    user->WillPress(MsgResult::Ok);
    EXPECT_EQ(box.Show("text", "caption", MsgButtons::Ok, MsgIcon::Stop), MsgResult::Ok);
    for (const MsgResult button : {MsgResult::Yes, MsgResult::No}) {
        user->WillPress(button);
        EXPECT_EQ(box.Show("text", "caption", MsgButtons::YesNo, MsgIcon::Question), button);
    }
    for (const MsgResult button : {MsgResult::Yes, MsgResult::No, MsgResult::Cancel}) {
        user->WillPress(button);
        EXPECT_EQ(box.Show("text", "caption", MsgButtons::YesNoCancel, MsgIcon::None), button);
    }
}

TEST_P(DesktopContract, AMessageBoxShowsWhatItWasGiven) {
    user->WillPress(MsgResult::Ok);
    user->WillPress(MsgResult::No);
    TheDesktop().MessageBoxes().Show("two\nlines \xC3\xA4", "", MsgButtons::Ok, MsgIcon::Information);
    TheDesktop().MessageBoxes().Show("", "A & B", MsgButtons::YesNo, MsgIcon::Exclamation);
    EXPECT_EQ(user->MessageBoxes(),
              (std::vector<SeenMessageBox>{{"two\nlines \xC3\xA4", "", MsgButtons::Ok, MsgIcon::Information},
                                           {"", "A & B", MsgButtons::YesNo, MsgIcon::Exclamation}}));
}

TEST_P(DesktopContract, ClosingAMessageBoxCountsAsItsWayOut) {
    MsgBox& box = TheDesktop().MessageBoxes();
    user->WillCloseMessageBox();
    EXPECT_EQ(box.Show("text", "caption", MsgButtons::Ok, MsgIcon::None), MsgResult::Ok);
    user->WillCloseMessageBox();
    EXPECT_EQ(box.Show("text", "caption", MsgButtons::YesNoCancel, MsgIcon::None), MsgResult::Cancel);
}

TEST_P(DesktopContract, AYesNoBoxCannotBeClosedWithoutAnAnswer) {
    user->WillCloseMessageBox();
    user->WillPress(MsgResult::No);
    EXPECT_EQ(TheDesktop().MessageBoxes().Show("text", "caption", MsgButtons::YesNo, MsgIcon::None), MsgResult::No);
    EXPECT_EQ(user->MessageBoxes().size(), 1U);
}

TEST_P(DesktopContract, AFileDialogReturnsThePathAsItWasChosen) {
    const std::string path = user->FilePath("without extension");
    user->WillChooseFile(path);
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowOpen(SomeSettings()), path);
    user->WillChooseFile(path);
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowSave(SomeSettings()), path);
}

TEST_P(DesktopContract, NoFileDialogAsksAboutAFileThatExists) {
    const std::string path = user->FilePath("there.PSF");
    TheDesktop().Files().OpenForOutput(path)->Close();
    user->WillChooseFile(path);
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowSave(SomeSettings()), path);
    EXPECT_TRUE(user->MessageBoxes().empty());
}

TEST_P(DesktopContract, AFileDialogHasTheTitleThatItIsGiven) {
    FileDialogSettings settings;
    settings.filter = "All|*.*";
    settings.title = "Programmquelldatei \xC3\xB6"
                     "ffnen";
    user->WillCancelFileDialog();
    TheDesktop().CommonDialog1().ShowOpen(settings);
    settings.title = "Save it";
    user->WillCancelFileDialog();
    TheDesktop().CommonDialog1().ShowSave(settings);
    ASSERT_EQ(user->FileDialogs().size(), 2U);
    EXPECT_EQ(user->FileDialogs()[0].title, "Programmquelldatei \xC3\xB6"
                                            "ffnen");
    EXPECT_EQ(user->FileDialogs()[1].title, "Save it");
}

TEST_P(DesktopContract, ACancelledFileDialogGivesNothing) {
    user->WillCancelFileDialog();
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowOpen(SomeSettings()), "");
    user->WillCancelFileDialog();
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowSave(SomeSettings()), "");
}

TEST_P(DesktopContract, ACancelledFileDialogIsAnErrorWhereThatIsWanted) {
    FileDialogSettings settings = SomeSettings();
    settings.cancelIsError = true;
    user->WillCancelFileDialog();
    EXPECT_THROW(TheDesktop().CommonDialog1().ShowOpen(settings), DialogCancelled);
    user->WillCancelFileDialog();
    EXPECT_THROW(TheDesktop().CommonDialog1().ShowSave(settings), DialogCancelled);
    user->WillChooseFile(user->FilePath("name"));
    EXPECT_EQ(TheDesktop().CommonDialog1().ShowOpen(settings), user->FilePath("name"));
}

TEST_P(DesktopContract, AFileDialogShowsWhatItWasGiven) {
    user->WillCancelFileDialog();
    user->WillCancelFileDialog();
    FileDialogSettings settings = SomeSettings();
    TheDesktop().CommonDialog1().ShowOpen(settings);
    settings.filterIndex = 2;
    settings.flags = 4;
    TheDesktop().CommonDialog1().ShowSave(settings);
    const std::vector<SeenFileDialog> seen = user->FileDialogs();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_FALSE(seen[0].isSave);
    EXPECT_EQ(seen[0].fileName, "name.PSF");
    EXPECT_EQ(seen[0].filters, (Strings{"Programs (*.PSF)", "All"}));
    EXPECT_EQ(seen[0].pattern, "*.PSF");
    EXPECT_TRUE(seen[1].isSave);
    EXPECT_EQ(seen[1].pattern, "*.*");
    EXPECT_FALSE(seen[1].hasReadOnlyBox);
}

TEST_P(DesktopContract, AFilterBeyondTheLastStandsForTheLast) {
    FileDialogSettings settings = SomeSettings();
    settings.filterIndex = 3;
    user->WillCancelFileDialog();
    TheDesktop().CommonDialog1().ShowOpen(settings);
    EXPECT_EQ(user->FileDialogs().back().pattern, "*.*");
}

TEST_P(DesktopContract, TheNameWindowGivesTheTypedTextWhileItIsShownAndAfterwards) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    EXPECT_EQ(window->FuncVarName(), "");
    std::string seen;
    window->onOk = [&] {
        seen = window->FuncVarName();
        window->Hide();
    };
    user->WillUseName([](NameWindowUser& nameUser) {
        nameUser.Type("Gr\xC3\xB6\xC3\x9F"
                      "e 1");
        nameUser.PressOk();
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(seen, "Gr\xC3\xB6\xC3\x9F"
                    "e 1");
    EXPECT_EQ(window->FuncVarName(), seen);
}

TEST_P(DesktopContract, TheNameWindowStaysUntilItIsHidden) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    window->onOk = [&] {
        if (window->FuncVarName() == "ab") {
            window->Hide();
        }
    };
    bool isShownBetween = false;
    user->WillUseName([&](NameWindowUser& nameUser) {
        nameUser.Type("a");
        nameUser.PressOk();
        isShownBetween = nameUser.IsShown();
        nameUser.Type("b");
        nameUser.PressOk();
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_TRUE(isShownBetween);
    EXPECT_EQ(window->FuncVarName(), "ab");
}

TEST_P(DesktopContract, EnterIsOkAndEscapeIsCancel) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    window->onOk = [this] { events.emplace_back("ok"); };
    window->onCancel = [this, &window] {
        events.emplace_back("cancel");
        window->Hide();
    };
    user->WillUseName([](NameWindowUser& nameUser) {
        nameUser.PressEnter();
        nameUser.PressOk();
        nameUser.PressEscape();
    });
    user->WillUseName([](NameWindowUser& nameUser) { nameUser.PressCancel(); });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, (Strings{"ok", "ok", "cancel"}));
    window->ShowModal();
    EXPECT_EQ(events.size(), 4U);
    EXPECT_EQ(events.back(), "cancel");
}

TEST_P(DesktopContract, TheFrameOfTheNameWindowCancelsAndHides) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    window->onCancel = [this] { events.emplace_back("cancel"); };
    user->WillUseName([](NameWindowUser& nameUser) { nameUser.CloseByFrame(); });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, Strings{"cancel"});
}

TEST_P(DesktopContract, TheNameWindowShowsItsCaptionAndLabel) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    window->SetTexts({"Add \xC3\xA4", "Type a name.", ""});
    std::string seen;
    user->WillUseName([&](NameWindowUser& nameUser) {
        seen = nameUser.Caption();
        EXPECT_EQ(nameUser.Label(), "Type a name.");
        nameUser.CloseByFrame();
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(seen, "Add \xC3\xA4");
}

TEST_P(DesktopContract, F1OpensTheHelpAlsoInTheNameWindowAndInTheSplashWindow) {
    TheDesktop().App().helpFile = user->FilePath("help.chm");
    const std::unique_ptr<NameWindow> name = TheDesktop().NewNameWindow();
    const std::unique_ptr<SplashWindow> splash = TheDesktop().NewSplashWindow();
    splash->onKeyPress = [&] { splash->Hide(); };
    user->WillUseName([](NameWindowUser& nameUser) {
        nameUser.PressF1();
        EXPECT_TRUE(nameUser.IsShown());
        nameUser.CloseByFrame();
    });
    user->WillUseSplash([](SplashWindowUser& splashUser) { splashUser.PressKey(KeyF1); });
    MainWindow().Show();
    name->ShowModal();
    EXPECT_EQ(user->HelpOpened(1), Strings{user->FilePath("help.chm")});
    splash->ShowModal();
    EXPECT_EQ(user->HelpOpened(2).size(), 2U);
}

TEST_P(DesktopContract, AModalWindowBlocksTheMainWindowWhileItIsShown) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    bool takesInput = true;
    user->WillUseName([&](NameWindowUser& nameUser) {
        takesInput = user->TakesInput();
        nameUser.CloseByFrame();
    });
    MainWindow().Show();
    EXPECT_TRUE(user->TakesInput());
    window->ShowModal();
    EXPECT_FALSE(takesInput);
    EXPECT_TRUE(user->TakesInput());
}

TEST_P(DesktopContract, AMessageBoxCanComeUpOverAModalWindow) {
    const std::unique_ptr<NameWindow> window = TheDesktop().NewNameWindow();
    window->onOk = [this, &window] {
        TheDesktop().MessageBoxes().Show("bad name", "Error", MsgButtons::Ok, MsgIcon::Stop);
        window->Hide();
    };
    user->WillPress(MsgResult::Ok);
    user->WillUseName([](NameWindowUser& nameUser) { nameUser.PressOk(); });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(user->MessageBoxes().size(), 1U);
}

TEST_P(DesktopContract, NewNameWindowsKnowNothingOfEachOther) {
    MainWindow().Show();
    const std::unique_ptr<NameWindow> first = TheDesktop().NewNameWindow();
    first->onOk = [&] { first->Hide(); };
    user->WillUseName([](NameWindowUser& nameUser) {
        nameUser.Type("first");
        nameUser.PressOk();
    });
    first->ShowModal();
    const std::unique_ptr<NameWindow> second = TheDesktop().NewNameWindow();
    EXPECT_EQ(second->FuncVarName(), "");
    EXPECT_EQ(first->FuncVarName(), "first");
}

TEST_P(DesktopContract, TheSplashWindowTellsOfKeysAndClicks) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    window->onKeyPress = [this] { events.emplace_back("key"); };
    window->onFrameClick = [this, &window] {
        events.emplace_back("click");
        window->Hide();
    };
    user->WillUseSplash([](SplashWindowUser& splashUser) {
        splashUser.PressKey('A');
        splashUser.ClickFrame();
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, (Strings{"key", "click"}));
}

TEST_P(DesktopContract, TheSplashWindowTellsOfEveryKeyThatTypesOrActs) {
    constexpr int keys[] = {'A', '1', 8, 9, 13, 27, 32, 33, 36, 38, 40, 45, 46, KeyF1, KeyF2, KeyF10};
    MainWindow().Show();
    for (const int key : keys) {
        const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
        window->onKeyPress = [&] { window->Hide(); };
        user->WillUseSplash([key](SplashWindowUser& splashUser) {
            splashUser.PressKey(key);
            if (splashUser.IsShown()) {
                ADD_FAILURE() << "not told of key " << key;
                splashUser.CloseByFrame();
            }
        });
        window->ShowModal();
    }
}

TEST_P(DesktopContract, AModifierAloneIsNoKeyInTheSplashWindowAndNeitherIsOneHeldDownFromBefore) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    window->onKeyPress = [&] {
        events.emplace_back("key");
        window->Hide();
    };
    user->WillUseSplash([](SplashWindowUser& splashUser) {
        for (const int key : {16, 17, 18, 20, 91, 144, 145}) {
            splashUser.PressKey(key);
            EXPECT_TRUE(splashUser.IsShown()) << key;
        }
        splashUser.RepeatKey(13);
        EXPECT_TRUE(splashUser.IsShown());
        splashUser.PressKey(13);
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, Strings{"key"});
}

TEST_P(DesktopContract, AClickOnALabelOfTheSplashWindowIsOneOnItsFrameButTheRightButtonIsNone) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    SplashLabels labels;
    labels.LblVersion = "Version 1.0.0";
    window->SetLabels(labels);
    window->onFrameClick = [&] {
        events.emplace_back("click");
        window->Hide();
    };
    user->WillUseSplash([](SplashWindowUser& splashUser) {
        splashUser.ClickFrameWithTheRightButton();
        EXPECT_TRUE(splashUser.IsShown());
        splashUser.ClickLabel();
    });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, Strings{"click"});
}

TEST_P(DesktopContract, TheSplashWindowStandsInTheMiddleOfItsOwnerEachTime) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    SplashLabels labels;
    labels.LblCopyright = "a rather long line about whose work this is, and since when";
    window->SetLabels(labels);
    MainWindow().Show();
    for (const float width : {9000.F, 7500.F}) {
        user->Resize(width, 6000);
        Distance distance;
        user->WillUseSplash([&](SplashWindowUser& splashUser) {
            distance = splashUser.FromTheMiddleOfItsOwner();
            splashUser.CloseByFrame();
        });
        window->ShowModal();
        EXPECT_NEAR(distance.right, 0, 1);
        EXPECT_NEAR(distance.down, 0, 1);
    }
}

TEST_P(DesktopContract, TheFrameOfTheSplashWindowHidesItWithoutAnEvent) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    window->onKeyPress = [this] { events.emplace_back("key"); };
    window->onFrameClick = [this] { events.emplace_back("click"); };
    user->WillUseSplash([](SplashWindowUser& splashUser) { splashUser.CloseByFrame(); });
    MainWindow().Show();
    window->ShowModal();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheSplashWindowKeepsItsLabelsFromOneShowingToTheNext) {
    const std::unique_ptr<SplashWindow> window = TheDesktop().NewSplashWindow();
    window->onKeyPress = [&] { window->Hide(); };
    const Strings texts = {"label 1", "label 2", "label 3", "label 4", "label 5", "label & 6"};
    window->SetLabels({texts[0], texts[1], texts[2], texts[3], texts[4], texts[5]});
    MainWindow().Show();
    for (int showing = 0; showing < 2; ++showing) {
        Strings seen;
        user->WillUseSplash([&seen](SplashWindowUser& splashUser) {
            seen = splashUser.Labels();
            splashUser.PressKey('A');
        });
        window->ShowModal();
        std::sort(seen.begin(), seen.end());
        EXPECT_EQ(seen, (Strings{texts[5], texts[0], texts[1], texts[2], texts[3], texts[4]}));
    }
}

} // namespace
} // namespace tessaly
