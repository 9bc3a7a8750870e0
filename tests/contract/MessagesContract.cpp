// The messages window: what it shows, where it stands, and whose the keyboard is.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

MessageRow Row(const std::string& what, MessageKind kind = MessageKind::Error) {
    return {kind, {"Error", "OnKey()", "3", what}};
}

TEST_P(DesktopContract, TheMessagesWindowIsNotThereAtFirst) {
    MainWindow().Show();
    EXPECT_FALSE(Messages().IsVisible());
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_EQ(Messages().Selected(), std::nullopt);
    EXPECT_THROW(Messages().Choose(0), std::out_of_range);
}

TEST_P(DesktopContract, TheMessagesWindowShowsTextsAndRowsWithTheFirstOneSelected) {
    ShowRows({Row("<b>one</b> & \xC3\xA4"), Row("two", MessageKind::Warning)});
    EXPECT_TRUE(Messages().IsVisible());
    const SeenMessages seen = Seen();
    EXPECT_TRUE(seen.isVisible);
    EXPECT_EQ(seen.caption, "Build");
    EXPECT_EQ(seen.heads, (Strings{"Kind", "Where", "Line", "What"}));
    EXPECT_EQ(seen.pages, (Strings{"Messages*", "Output \xC3\xA4"}));
    EXPECT_EQ(seen.rows, (Strings{"Error|OnKey()|3|<b>one</b> & \xC3\xA4*", "Error|OnKey()|3|two"}));
    EXPECT_TRUE(seen.isSelectedInView);
    EXPECT_EQ(Messages().Selected(), 0U);
}

TEST_P(DesktopContract, TheMessagesWindowComesWithoutTheKeyboard) {
    Edit("b", 0);
    ShowRows({Row("one")});
    EXPECT_FALSE(Seen().hasKeyboard);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, ThePrintIsInFrontWhereThereAreNoRows) {
    ShowRows({});
    Messages().SetPrinted("one\n\ttwo \xC3\xA4\n");
    EXPECT_EQ(Seen().printed, "one\n\ttwo \xC3\xA4\n");
    EXPECT_EQ(Seen().pages, (Strings{"Messages", "Output \xC3\xA4*"}));
    Messages().SetPrinted("one\n\ttwo \xC3\xA4\nthree");
    EXPECT_EQ(Seen().printed, "one\n\ttwo \xC3\xA4\nthree");
    Messages().SetPrinted("another");
    EXPECT_EQ(Seen().printed, "another");
    Messages().SetRows({Row("one")});
    EXPECT_EQ(Seen().pages, (Strings{"Messages*", "Output \xC3\xA4"}));
    Messages().SetRows({});
    EXPECT_EQ(Seen().pages, (Strings{"Messages", "Output \xC3\xA4*"}));
    EXPECT_EQ(Seen().rows, Strings{});
}

TEST_P(DesktopContract, RowsThatComeInFrontAreSelectedUntilTheUserHasChosen) {
    ShowRows({Row("warning")});
    Messages().SetRows({Row("error"), Row("warning")});
    EXPECT_EQ(Messages().Selected(), 0U);
    user->ClickMessage(1);
    EXPECT_EQ(Messages().Selected(), 1U);
    Messages().SetRows({Row("error"), Row("other"), Row("warning")});
    EXPECT_EQ(Messages().Selected(), 2U);
    EXPECT_EQ(Seen().rows.back(), "Error|OnKey()|3|warning*");
    Messages().SetRows({Row("new"), Row("newer")});
    EXPECT_EQ(Seen().rows.front(), "Error|OnKey()|3|new*");
}

TEST_P(DesktopContract, AChosenRowIsSelectedAndInView) {
    std::vector<MessageRow> rows;
    for (int row = 0; row < 200; ++row) {
        rows.push_back(Row(std::to_string(row)));
    }
    ShowRows(rows);
    for (const std::size_t row : {150U, 20U}) {
        Messages().Choose(row);
        user->Settle();
        EXPECT_EQ(Messages().Selected(), row);
        EXPECT_EQ(Seen().rows.at(row).back(), '*');
        EXPECT_TRUE(Seen().isSelectedInView);
    }
}

TEST_P(DesktopContract, EnterAndADoubleClickGoToARow) {
    ShowRows({Row("one"), Row("two"), Row("three")});
    std::vector<std::size_t> gone;
    Messages().onGo = [&gone](std::size_t row) { gone.push_back(row); };
    user->PressKeyInMessages(KeyEnter, 0);
    EXPECT_EQ(gone, std::vector<std::size_t>{0});
    user->DoubleClickMessage(2);
    EXPECT_EQ(gone, (std::vector<std::size_t>{0, 2}));
    user->ClickMessage(1);
    user->PressKeyInMessages(KeyEnter, 0);
    EXPECT_EQ(gone, (std::vector<std::size_t>{0, 2, 1}));
    EXPECT_TRUE(Seen().hasKeyboard);
}

TEST_P(DesktopContract, TheArrowKeysMoveTheSelectionOfRows) {
    constexpr int keyDown = 40;
    ShowRows({Row("one"), Row("two")});
    user->ClickMessage(0);
    user->PressKeyInMessages(keyDown, 0);
    EXPECT_EQ(Messages().Selected(), 1U);
}

TEST_P(DesktopContract, CtrlCCopiesTheCellsOfTheSelectedRow) {
    Edit("", 0);
    ShowRows({Row("one"), Row("<b>two</b> & \xC3\xA4")});
    const auto pasted = [this] {
        Pane().SetText("");
        Pane().Do(RichTextBox::Clip::Paste);
        return Pane().Text();
    };
    user->ClickMessage(1);
    user->PressKeyInMessages('C', 2);
    EXPECT_EQ(pasted(), "Error\tOnKey()\t3\t<b>two</b> & \xC3\xA4");
    user->ClickMessage(0);
    user->PressKeyInMessages('C', 3);
    EXPECT_EQ(pasted(), "Error\tOnKey()\t3\t<b>two</b> & \xC3\xA4") << "with Shift it is another key";
    user->PressKeyInMessages('C', 2);
    EXPECT_EQ(pasted(), "Error\tOnKey()\t3\tone");
    Messages().SetRows({});
    user->PressKeyInMessages('C', 2);
    EXPECT_EQ(pasted(), "Error\tOnKey()\t3\tone") << "there is no row";
}

TEST_P(DesktopContract, CtrlCBehindAPageThatTheUserTurnedCopiesNoRow) {
    Edit("", 0);
    ShowRows({Row("one"), Row("two")});
    user->PressKeyInMessages('C', 2);
    user->ClickMessage(1);
    user->PressKeyInMessages(KeyTab, 2);
    ASSERT_EQ(Seen().pages, (Strings{"Messages", "Output \xC3\xA4*"}));
    user->PressKeyInMessages('C', 2);
    Pane().Do(RichTextBox::Clip::Paste);
    EXPECT_EQ(Pane().Text(), "Error\tOnKey()\t3\tone");
}

TEST_P(DesktopContract, KeysOfTheMessagesWindowAreTheMainWindowsAsWell) {
    ShowRows({Row("one")});
    Record();
    MainWindow().onKeyDown = [this](int keyCode, int shift) {
        if (!IsModifierKey(keyCode)) {
            events.push_back("key " + std::to_string(keyCode) + " " + std::to_string(shift));
        }
    };
    user->PressKeyInMessages(KeyF10, 0);
    user->PressKeyInMessages('J', 3);
    user->PressKeyInMessages(KeyEnter, 0); // its own
    EXPECT_EQ(events, (Strings{"key 121 0", "key 74 3"}));
}

TEST_P(DesktopContract, F1InTheMessagesWindowOpensTheHelp) {
    TheDesktop().App().helpFile = user->FilePath("help");
    ShowRows({Row("one")});
    user->PressKeyInMessages(KeyF1, 0);
    EXPECT_EQ(user->HelpOpened(1), Strings{user->FilePath("help")});
}

TEST_P(DesktopContract, TheMessagesWindowHasTheKeyboardUntilAControlTakesIt) {
    BeginInPane();
    ShowRows({Row("one")});
    user->Settle();
    events.clear();
    user->ClickMessage(0);
    EXPECT_EQ(EventsAcrossWindows(), Strings{"lost focus"});
    EXPECT_TRUE(Seen().hasKeyboard);
    Messages().onGo = [this](std::size_t) { Pane().SetFocus(); };
    events.clear();
    user->PressKeyInMessages(KeyEnter, 0);
    user->Settle();
    EXPECT_FALSE(Seen().hasKeyboard);
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(EventsAcrossWindows().back(), "got focus");
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, EscapeHidesTheMessagesWindowAndGivesTheKeyboardBack) {
    BeginInPane();
    ShowRows({Row("one")});
    user->PressKeyInMessages(KeyEscape, 0);
    user->Settle();
    EXPECT_FALSE(Messages().IsVisible());
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_EQ(EventsAcrossWindows().back(), "got focus");
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
    Messages().Show();
    EXPECT_EQ(Seen().rows, Strings{"Error|OnKey()|3|one*"});
}

TEST_P(DesktopContract, ClosingTheMessagesWindowHidesItAlone) {
    ShowRows({Row("one")});
    user->CloseMessages();
    EXPECT_FALSE(Messages().IsVisible());
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_TRUE(user->IsShown());
    Messages().Show();
    EXPECT_TRUE(Seen().isVisible);
}

TEST_P(DesktopContract, TheMessagesWindowIsHiddenByAKeyInIt) {
    BeginInPane();
    ShowRows({Row("one")});
    MainWindow().onKeyDown = [this](int keyCode, int) {
        if (keyCode == KeyF10) {
            Messages().Hide();
        }
    };
    user->PressKeyInMessages(KeyF10, 0);
    user->Settle();
    EXPECT_FALSE(Seen().isVisible);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, TheMessagesWindowLiesNeitherOverTheTreeNorThePaneNorTheStatusBar) {
    TheDesktop().StatusBar1().AddPanel();
    MainWindow().SetFooter(TheDesktop().StatusBar1().PreferredHeight());
    Tree().SetExtent({0, 0, 3000, 20000});
    Pane().SetExtent({3000, 0, 6000, 20000});
    ShowRows({Row("one")});
    ExpectNothingCovered();
    user->FillScreen();
    ExpectNothingCovered();
    const Extent narrow = user->Shown(Pane());
    Messages().Hide();
    user->Settle();
    EXPECT_GT(user->Shown(Pane()).height, narrow.height);
    Messages().Show();
    user->Settle();
    ExpectNothingCovered();
}

TEST_P(DesktopContract, TheMessagesWindowRemembersItsSize) {
    ShowRows({Row("one")});
    const Size before = user->SizeOfMessages();
    const Size chosen = {before.width - 900, before.height - 450};
    user->ResizeMessages(chosen);
    user->PressKeyInMessages(KeyEscape, 0);
    Messages().Show();
    user->Settle();
    EXPECT_NEAR(user->SizeOfMessages().width, chosen.width, 30);
    EXPECT_NEAR(user->SizeOfMessages().height, chosen.height, 30);
}

TEST_P(DesktopContract, AFileThatIsFollowedTellsOfItsChanges) {
    const std::string path = user->FilePath("followed.log");
    int told = 0;
    TheDesktop().App().onFollowed = [&told] { ++told; };
    MainWindow().Show();
    TheDesktop().App().Follow(path);
    const auto write = [&](const std::string& name, std::string_view text) {
        const std::unique_ptr<OutputFile> file = TheDesktop().Files().OpenForOutput(user->FilePath(name));
        file->Write(text);
        file->Close();
    };
    write("followed.log", "one"); // it was not there
    EXPECT_TRUE(user->SettleUntil([&told] { return told > 0; }));
    user->Settle();
    told = 0;
    write("followed.log", "one and two");
    EXPECT_TRUE(user->SettleUntil([&told] { return told > 0; }));
    TheDesktop().App().Follow("");
    user->Settle();
    told = 0;
    write("followed.log", "one and two and three");
    user->Settle();
    EXPECT_EQ(told, 0);
}

} // namespace
} // namespace tessaly
