// When the lost and gained events come, and which of them a command holds back.
#include "platform/desktop/FocusEvents.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using Strings = std::vector<std::string>;

class Target final : public FocusTarget {
public:
    Target(Strings& told, std::string name) : mTold(told), mName(std::move(name)) {}
    void GainFocus() override { mTold.push_back("+" + mName); }
    void LoseFocus() override { mTold.push_back("-" + mName); }

private:
    Strings& mTold;
    std::string mName;
};

class FocusEventsTest : public ::testing::Test {
protected:
    Strings told;
    Target a{told, "a"};
    Target b{told, "b"};
    FocusEvents events;
};

TEST_F(FocusEventsTest, OnlyAMoveIsTold) {
    events.Taken();
    events.MovedTo(a);
    events.MovedTo(a);
    events.MovedTo(b);
    events.Taken();
    events.Taken();
    EXPECT_EQ(told, (Strings{"+a", "-a", "+b", "-b"}));
    EXPECT_EQ(events.Owner(), &b);
}

TEST_F(FocusEventsTest, WhatACommandTakesComesBackAtTheEndOfTheOutermostOne) {
    events.MovedTo(a);
    {
        const FocusEvents::Command outer(events, FocusEvents::Keyboard::Stays);
        events.Taken();
        {
            const FocusEvents::Command inner(events, FocusEvents::Keyboard::IsTaken);
            events.MovedTo(a);
        }
        EXPECT_EQ(told, (Strings{"+a", "-a"}));
    }
    EXPECT_EQ(told, (Strings{"+a", "-a", "+a"}));
}

TEST_F(FocusEventsTest, ACommandThatTakesNothingTellsNothing) {
    events.MovedTo(a);
    { const FocusEvents::Command command(events, FocusEvents::Keyboard::Stays); }
    EXPECT_EQ(told, Strings{"+a"});
    { const FocusEvents::Command command(events, FocusEvents::Keyboard::IsTaken); }
    EXPECT_EQ(told, (Strings{"+a", "-a", "+a"}));
}

TEST_F(FocusEventsTest, AnEndedCommandGivesNothingBackThatIsElsewhere) {
    events.MovedTo(a);
    {
        const FocusEvents::Command command(events, FocusEvents::Keyboard::IsTaken);
        events.Taken();
    }
    EXPECT_EQ(told, (Strings{"+a", "-a"}));
    events.MovedTo(a);
    EXPECT_EQ(told, (Strings{"+a", "-a", "+a"}));
}

TEST_F(FocusEventsTest, AMoveByTheProgramIsToldWithinACommand) {
    events.MovedTo(a);
    const FocusEvents::Command command(events, FocusEvents::Keyboard::Stays);
    events.MovedTo(b);
    EXPECT_EQ(told, (Strings{"+a", "-a"}));
    events.MovedByProgram(b);
    EXPECT_EQ(told, (Strings{"+a", "-a", "+b"}));
}

TEST_F(FocusEventsTest, NothingIsToldAfterTheEnd) {
    events.MovedTo(a);
    {
        const FocusEvents::Command command(events, FocusEvents::Keyboard::Stays);
        events.End();
    }
    events.MovedTo(b);
    events.MovedByProgram(a);
    events.Taken();
    EXPECT_EQ(told, Strings{"+a"});
}

} // namespace
} // namespace tessaly
