// What the pane sets apart in a text: the line of the caret, brackets, and what nobody would see otherwise.
#include "platform/text/Utf16.h"
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

TEST_P(DesktopContract, TheLineOfTheCaretIsSetApartWhereverTheCaretGoes) {
    Edit("one\ntwo\nthree", 5);
    const std::uint32_t paper = user->ColourBehind(0);
    EXPECT_NE(user->ColourBehind(4), paper);
    EXPECT_EQ(user->ColourBehind(8), paper);
    user->SetCaret(0);
    EXPECT_NE(user->ColourBehind(0), paper);
    EXPECT_EQ(user->ColourBehind(4), paper);
    Pane().MoveCaret(8);
    EXPECT_NE(user->ColourBehind(8), paper);
    EXPECT_EQ(user->ColourBehind(0), paper);
    user->PressEnter();
    EXPECT_NE(user->ColourBehind(9), paper) << "one line down, with the caret";
    EXPECT_EQ(user->ColourBehind(4), paper);
}

TEST_P(DesktopContract, TheBracketAtTheCaretAndItsPartnerAreSetApart) {
    Edit("f(a)\n{\n\")\"}", 1);
    const std::uint32_t line = user->ColourBehind(0);
    const std::uint32_t bracket = user->ColourBehind(1);
    EXPECT_NE(bracket, line);
    EXPECT_EQ(user->ColourBehind(3), bracket);
    EXPECT_EQ(user->ColourBehind(2), line);
    user->SetCaret(5);
    const std::uint32_t paper = user->ColourBehind(0);
    EXPECT_EQ(user->ColourBehind(1), paper);
    EXPECT_NE(user->ColourBehind(5), paper);
    EXPECT_NE(user->ColourBehind(10), paper) << "the partner is in another line";
    EXPECT_EQ(user->ColourBehind(8), paper) << "in a literal there is no bracket";
}

TEST_P(DesktopContract, ABracketWithoutAPartnerIsSetApartInAnotherWay) {
    Edit("(a)\n(a]", 0);
    const std::uint32_t bracket = user->ColourBehind(0);
    user->SetCaret(4);
    EXPECT_NE(user->ColourBehind(4), bracket);
    EXPECT_NE(user->ColourBehind(4), user->ColourBehind(5));
    EXPECT_EQ(user->ColourBehind(6), user->ColourBehind(5));
}

TEST_P(DesktopContract, ABracketFollowsWhatIsTyped) {
    Edit("(a", 0);
    const std::uint32_t alone = user->ColourBehind(0);
    user->SetCaret(2);
    user->Type(")");
    EXPECT_NE(user->ColourBehind(0), user->ColourBehind(1));
    EXPECT_NE(user->ColourBehind(0), alone);
    EXPECT_EQ(user->ColourBehind(0), user->ColourBehind(2));
    user->Undo();
    EXPECT_EQ(user->ColourBehind(0), user->ColourBehind(1)) << "the caret stands behind the letter again";
}

TEST_P(DesktopContract, BlanksAtTheEndOfALineAreSetApartUnlessTheyAreBeingTyped) {
    Edit("a b  \n\xC2\xA0"
         "c\nx",
         10);
    const std::uint32_t paper = user->ColourBehind(0);
    EXPECT_EQ(user->ColourBehind(1), paper);
    EXPECT_NE(user->ColourBehind(3), paper);
    EXPECT_NE(user->ColourBehind(4), paper);
    EXPECT_NE(user->ColourBehind(6), paper) << "a no-break space";
    EXPECT_EQ(user->ColourBehind(8), paper);
    user->SetCaret(5);
    EXPECT_EQ(user->ColourBehind(3), user->ColourBehind(0));
    user->SetCaret(0);
    EXPECT_NE(user->ColourBehind(3), user->ColourBehind(0));
}

TEST_P(DesktopContract, WhatASaveWouldLoseIsSetApart) {
    Pane().keeps = [](char32_t character) { return character == 0xE4; };
    Edit("a\xC3\xA4\xCE\xB1z\nx", 6);
    const std::uint32_t paper = user->ColourBehind(0);
    EXPECT_EQ(user->ColourBehind(1), paper);
    EXPECT_NE(user->ColourBehind(3), paper);
    EXPECT_EQ(user->ColourBehind(5), paper);
    user->Paste("\xCE\xB2");
    EXPECT_NE(user->ColourBehind(7), user->ColourBehind(9)) << "as soon as it is pasted";
}

TEST_P(DesktopContract, AScreenReaderIsToldOfTheFirstCharacterInTheLineThatASaveWouldLose) {
    Pane().keeps = [](char32_t /*character*/) { return false; };
    Pane().tellLost = [](std::u16string_view character) { return "lost: " + ToUtf8(character); };
    Edit("ab\nc", 0);
    EXPECT_EQ(user->PaneSaid(), "");
    user->Paste("\xF0\x9F\x99\x82\xCE\xB1");
    EXPECT_EQ(user->PaneSaid(), "lost: \xF0\x9F\x99\x82");
    Pane().MoveCaret(Pane().Text().size());
    EXPECT_EQ(user->PaneSaid(), "");
}

TEST_P(DesktopContract, ControlCharactersAreShownByTheirPictures) {
    const std::string text("a\x01\x0C\x1B\x7F\t\0z", 8);
    Edit(text, 0);
    EXPECT_EQ(user->PaneShown(), "a\xE2\x90\x81\xE2\x90\x8C\xE2\x90\x9B\xE2\x90\xA1\t\xE2\x90\x80z");
    EXPECT_EQ(Pane().Text(), text);
    EXPECT_EQ(Pane().Line(0), std::u16string(text.begin(), text.end()));
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "x" + text);
}

TEST_P(DesktopContract, APastedControlCharacterIsShownByItsPictureAtOnce) {
    Edit("old", 1);
    Record();
    user->Paste("\x02\r\n\x07n");
    EXPECT_EQ(user->PaneShown(), "o\xE2\x90\x82\n\xE2\x90\x87nld");
    EXPECT_EQ(Pane().Text(), "o\x02\r\n\x07nld");
    EXPECT_EQ(Pane().Selected(), (Selection{{1, 2}, {1, 2}}));
    EXPECT_EQ(events, Strings{"change"});
    user->Undo();
    EXPECT_EQ(Pane().Text(), "old");
}

TEST_P(DesktopContract, MatchesAreSetApartUntilTheTextChanges) {
    Edit("one two\ntwo", 0);
    const std::uint32_t line = user->ColourBehind(0);
    const std::uint32_t paper = user->ColourBehind(8);
    Record();
    Pane().SetMatches({{{0, 4}, 3}, {{1, 0}, 3}});
    EXPECT_EQ(user->ColourBehind(2), line);
    EXPECT_NE(user->ColourBehind(5), line);
    EXPECT_NE(user->ColourBehind(9), paper);
    EXPECT_EQ(events, Strings{});
    Pane().SetMatches({{{1, 0}, 3}});
    EXPECT_EQ(user->ColourBehind(5), line);
    user->Type("x");
    EXPECT_EQ(user->ColourBehind(10), paper);
}

// More than can be seen at once are not all looked at.
TEST_P(DesktopContract, OfManyMatchesInOneLineThoseInViewAreSetApart) {
    constexpr std::size_t count = 600;
    constexpr std::size_t distance = 8;
    std::string text;
    std::vector<Match> matches;
    for (std::size_t i = 0; i < count; ++i) {
        text += "aaaabbbb";
        matches.push_back({{0, i * distance}, 4});
    }
    Edit(text, 0);
    Pane().SetMatches(matches);
    for (const std::size_t caret : {distance, distance * count / 2, distance * count}) {
        Pane().MoveCaret(caret);
        EXPECT_NE(user->ColourBehind(caret - distance + 2), user->ColourBehind(caret - 2)) << caret;
    }
}

TEST_P(DesktopContract, AnUnavailablePaneSetsNothingApart) {
    Edit("(a)  ", 0);
    Pane().SetFuncBodyAvailable(false);
    EXPECT_TRUE(Pane().SpotsOf(0).empty());
}

} // namespace
} // namespace tessaly
