// From a compiler's message to its line, on any desktop.
#include "tests/scenarios/ProgramScenario.h"

#include <algorithm>

namespace tessaly {
namespace {

// What a compiler would print.
class Printout {
public:
    Printout(const std::string& cFile, const std::string& code) : mCFile(cFile), mCode(code) {}

    // At the place behind `text`, where it stands first in the C file, as a compiler counts.
    Printout& Behind(const std::string& text, const std::string& message) {
        const std::size_t end = mCode.find(text) + text.size();
        const std::size_t begin = mCode.rfind('\n', end - 1) + 1;
        const auto line = 1 + std::count(mCode.begin(), mCode.begin() + static_cast<std::ptrdiff_t>(begin), '\n');
        mText += mCFile + ":" + std::to_string(line) + ":" + std::to_string(end - begin + 1) + ": " + message + "\n";
        return *this;
    }
    const std::string& Text() const { return mText; }

private:
    std::string mCFile;
    std::string mCode;
    std::string mText;
};

} // namespace

TEST_P(ProgramScenario, TwoMistakesAreFoundByTheirMessagesAndMended) {
    StartProgram();
    OpenWrong();
    Write("_0e3", "int b = ;");
    user->PressEnter();
    BuildAndSave();
    Print(Printout(CFile(), ReadFile(CFile()))
              .Behind("int b", "warning: odd")
              .Behind("int b = ", "error: expected a value")
              .Behind("int a = ", "error: expected another")
              .Text());
    ASSERT_TRUE(WaitForRows(3));
    EXPECT_EQ(Seen().rows,
              (Strings{"Error|OnKey()|1|expected a value*", "Error|One|3|expected another", "Warning|OnKey()|1|odd"}));
    EXPECT_EQ(Seen().pages, (Strings{"Messages*", "All output"}));
    EXPECT_FALSE(Seen().hasKeyboard);
    Click("_0v");

    user->PressKeyInMessages(KeyEnter, 0);
    user->Settle();
    EXPECT_EQ(CurrentKey(), "_0e3");
    EXPECT_EQ(user->PaneSaid(), "Error: expected a value; Warning: odd");
    EXPECT_EQ(user->TipShown({0, 1}), "");
    EXPECT_EQ(user->MarginTipShown(1), "");
    EXPECT_EQ(user->TipShown({0, 8}), "Error: expected a value\nWarning: odd");
    EXPECT_EQ(user->MarginTipShown(0), "Error: expected a value\nWarning: odd");
    user->Type("2");
    EXPECT_TRUE(user->PaneShown().starts_with("int b = 2;\n")) << user->PaneShown();
    user->PressKey('J', Ctrl);
    EXPECT_EQ(CurrentKey(), "One");
    user->Type("1");
    EXPECT_NE(user->PaneShown().find("\tint a = 1;\n"), std::string::npos) << user->PaneShown();
    BuildAndSave();
    user->Settle();
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_EQ(Seen().rows, Strings{});
    EXPECT_NE(ReadFile(CFile()).find("int a = 1;"), std::string::npos);
    EXPECT_NE(ReadFile(CFile()).find("int b = 2;"), std::string::npos);
}

TEST_P(ProgramScenario, LinesAndItemsWithMessagesAreMarkedUntilTheNextBuild) {
    StartProgram();
    OpenWrong();
    Click("One");
    Choose("mnuBuildExe");
    Print(Printout(CFile(), ReadFile(CFile()))
              .Behind("int ", "warning: odd")
              .Behind("int a = ", "error: one")
              .Behind("void Two()\n", "warning: two")
              .Text());
    ASSERT_TRUE(WaitForRows(3));
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3 error", "4", "5"}));
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "error: Error");
    EXPECT_EQ(user->MarkShown(Tree().Find("Two")), "warning: Warning");
    Click("Two");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 warning", "3", "4"}));
    Write("One", "/* in front */");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3 error", "4", "5"}));
    user->PressEnter();
    Click("_0v");
    Click("One");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4 error", "5", "6"}));
    BuildAndSave();
    user->Settle();
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "");
}

TEST_P(ProgramScenario, TheKeysGoRoundInACircleOfMessagesInMembers) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    user->PressKey('J', Ctrl); // nothing is there yet
    EXPECT_EQ(CurrentKey(), "_0e");
    Print(Printout(CFile(), ReadFile(CFile()))
              .Behind("void One()\n{", "error: one")
              .Behind("void Two()", "note: see there")
              .Behind("void Two()\n{", "error: two")
              .Text() +
          "kit.h:3:1: error: in a header\n");
    ASSERT_TRUE(WaitForRows(4));
    EXPECT_EQ(Seen().rows.back(), "Error|kit.h:3:1||in a header");
    for (const std::string key : {"One", "Two", "One"}) {
        user->PressKey('J', Ctrl);
        EXPECT_EQ(CurrentKey(), key);
    }
    user->PressKey('J', CtrlWithShift);
    EXPECT_EQ(CurrentKey(), "Two");
    const std::string before = user->PaneShown();
    user->DoubleClickMessage(3); // leads nowhere
    EXPECT_EQ(CurrentKey(), "Two");
    EXPECT_TRUE(Seen().hasKeyboard);
    user->PressKeyInMessages(KeyEscape, 0);
    user->Settle();
    EXPECT_FALSE(Seen().isVisible);
    user->PressKey('J', Ctrl); // brings it back
    EXPECT_TRUE(Seen().isVisible);
    EXPECT_EQ(CurrentKey(), "One");
    EXPECT_EQ(before, "void Two()\n{\n}\n") << "the key typed something";
}

TEST_P(ProgramScenario, AMessageLeadsToItsLineAlsoAfterEditsAndToTheGroupOfWhatIsGone) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    Print(Printout(CFile(), ReadFile(CFile())).Behind("int a", "error: one").Behind("void Two()", "error: two").Text());
    ASSERT_TRUE(WaitForRows(2));
    Write("One", "/* first\nsecond */\n");
    user->PressKey('J', Ctrl);
    user->Type("!");
    EXPECT_NE(user->PaneShown().find("\tint a! = ;\n"), std::string::npos) << user->PaneShown();
    Click("Two");
    user->WillPress(MsgResult::Yes);
    user->PressKey(KeyF4, 0);
    user->PressKey('J', Ctrl);
    EXPECT_EQ(CurrentKey(), "_0f");
}

TEST_P(ProgramScenario, TheFunctionKeysWorkInTheMessagesWindow) {
    StartProgram();
    OpenWrong();
    Click("One");
    Choose("mnuBuildExe");
    Print("something that is no message\n");
    ASSERT_TRUE(user->SettleUntil([this] { return Seen().isVisible; }));
    EXPECT_EQ(Seen().printed, "something that is no message\n");
    EXPECT_EQ(Seen().pages, (Strings{"Messages", "All output*"}));
    user->PressKeyInMessages(KeyF3, 0);
    user->Settle();
    user->Type("x");
    EXPECT_TRUE(user->PaneShown().starts_with("xvoid One()"));
    user->PressKeyInMessages(KeyF2, 0);
    user->Settle();
    EXPECT_FALSE(Seen().hasKeyboard);
    user->WillPress(MsgResult::Yes);
    user->PressKeyInMessages(KeyF10, 0);
    user->Settle();
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_NE(ReadFile(CFile()).find("xvoid One()"), std::string::npos);
}

TEST_P(ProgramScenario, NothingOldIsInViewWhenABuildCannotBeStarted) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    Print("old.c:1:1: error: old\n");
    ASSERT_TRUE(WaitForRows(1));
    program->mCompBat = user->UnstartableCommand();
    Choose("mnuBuildExe");
    user->Settle();
    EXPECT_FALSE(Seen().isVisible);
    user->PressKey('J', Ctrl);
    EXPECT_FALSE(Seen().isVisible);
    EXPECT_EQ(Seen().rows, Strings{});
    EXPECT_EQ(Seen().printed, "");
}

TEST_P(ProgramScenario, MessagesGoWithTheirDocument) {
    StartProgram();
    for (const std::string_view menu : {"mnuNewPSF", "mnuOpenPSF"}) {
        OpenWrong();
        Choose("mnuBuildExe");
        Print("old.c:1:1: error: old\n");
        ASSERT_TRUE(WaitForRows(1));
        if (menu == "mnuOpenPSF") {
            user->WillChooseFile(user->FilePath("a.PSF"));
        }
        Choose(menu);
        user->Settle();
        EXPECT_FALSE(Seen().isVisible) << menu;
        EXPECT_EQ(Seen().rows, Strings{});
    }
}

TEST_P(ProgramScenario, MessagesSpeakTheLanguageOfTheWindow) {
    StartProgram(1);
    OpenWrong();
    Choose("mnuBuildExe");
    Print(Printout(CFile(), ReadFile(CFile())).Behind("int a", "error: one").Text());
    ASSERT_TRUE(WaitForRows(1));
    EXPECT_EQ(Seen().rows, Strings{"Fehler|One|3|one*"});
    EXPECT_EQ(Seen().heads, (Strings{"Art", "Wo", "Zeile", "Meldung"}));
    Choose("mnuEnglish");
    EXPECT_EQ(Seen().rows, Strings{"Error|One|3|one*"});
    EXPECT_EQ(Seen().heads, (Strings{"Kind", "Where", "Line", "Message"}));
    EXPECT_EQ(Seen().caption, "Messages of the build");
}

TEST_P(ProgramScenario, WhatTheCompilerDoesNotSayStandsInFront) {
    StartProgram();
    OpenWrong();
    Click("_0v");
    user->ClickPane();
    user->SelectAll();
    user->Type("/* left open");
    BuildAndSave();
    ASSERT_TRUE(WaitForRows(1)); // before anything is printed
    EXPECT_TRUE(Seen().rows.front().starts_with("Warning|References|1|")) << Seen().rows.front();
    Print(Printout(CFile(), ReadFile(CFile())).Behind("void One()", "error: one").Text());
    ASSERT_TRUE(WaitForRows(2));
    EXPECT_TRUE(Seen().rows.front().starts_with("Warning|References|1|"));
}

TEST_P(ProgramScenario, OutputForATerminalIsShownAsText) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    Print("\x1B[31mred\x1B[0m\r\n\x07half\rof \xFC");
    ASSERT_TRUE(user->SettleUntil([this] { return Seen().isVisible; }));
    const std::string printed = Seen().printed;
    EXPECT_TRUE(printed.starts_with("red\nhalf\nof ")) << printed;
    EXPECT_EQ(printed.find('\x1B'), std::string::npos);
}

TEST_P(ProgramScenario, OfAVeryLongOutputTheBeginningIsShown) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    const std::string line = CFile() + ":1:1: warning: again and again\n";
    std::string text = Printout(CFile(), ReadFile(CFile())).Behind("int a", "error: one").Text();
    while (text.size() < 3'000'000) {
        text += line;
    }
    Print(text);
    ASSERT_TRUE(user->SettleUntil([this] { return Seen().isVisible; }));
    ASSERT_TRUE(user->SettleUntil([this] { return Seen().printed.size() > 1'000'000; }));
    const SeenMessages seen = Seen();
    EXPECT_EQ(seen.rows.size(), 1001U);
    EXPECT_EQ(seen.rows.front(), "Error|One|3|one*");
    EXPECT_NE(seen.rows.back().find(" more messages: see the other page"), std::string::npos);
    EXPECT_LT(seen.printed.size(), 1'200'000U);
    EXPECT_TRUE(seen.printed.starts_with("Only the first 1,024 KB")) << seen.printed.substr(0, 100);
}

} // namespace tessaly
