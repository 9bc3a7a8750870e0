// The menu that comes up where the user asks for one: how it is asked for, and who has the keyboard.
#include "tests/contract/DesktopContract.h"

namespace tessaly {
namespace {

const std::vector<PopupRow> Rows = {
    {"&One", "Ctrl+1"}, {"", ""}, {"Two", "", false}, {"gr\xC3\xB6\xC3\x9F\x65r", "F3"}};

// What a chosen row does beside being written down.
using Work = std::function<void()>;

// The control shows the rows when it is asked for a menu. That and the row that is chosen are written to `events`.
void Offer(
    Desktop& desktop, Control& control, Strings& events, const Work& work = [] {}) {
    control.onMenu = [&desktop, &events, work](ScreenPlace place) {
        events.emplace_back("menu");
        desktop.Popup().Show(Rows, place, [&events, work](std::size_t row) {
            events.push_back("chose " + std::to_string(row));
            work();
        });
    };
}

TEST_P(DesktopContract, AMenuOfThePaneHasTheKeyboardUntilItsCommandHasEnded) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events);
    user->UseMenuOfPane(0, 3);
    EXPECT_EQ(user->MenuSeen(), (Strings{"&One|Ctrl+1", "-", "(Two|)", "gr\xC3\xB6\xC3\x9F\x65r|F3"}));
    EXPECT_EQ(events, (Strings{"menu", "lost focus", "chose 3", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AMenuThatIsLeftStartsNothing) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events);
    user->UseMenuOfPane(0, std::nullopt);
    EXPECT_EQ(user->MenuSeen().size(), 4U);
    EXPECT_EQ(events, (Strings{"menu", "lost focus", "got focus"}));
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, TwoKeysAskForAMenuOfThePane) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events);
    user->UseMenuByKey(KeyMenu, 0, 0);
    EXPECT_EQ(events, (Strings{"menu", "lost focus", "chose 0", "got focus"}));
    events.clear();
    user->UseMenuByKey(KeyF10, 1, 3);
    EXPECT_EQ(events, (Strings{"menu", "lost focus", "chose 3", "got focus"}));
}

TEST_P(DesktopContract, AMenuOfTheTreeIsForTheItemUnderTheMouse) {
    Tree().Add(TreeItem::None, "a", "A");
    const TreeItem second = Tree().Add(TreeItem::None, "b", "B");
    MainWindow().Show();
    user->ClickItem(Tree().Find("a"));
    Record();
    Offer(TheDesktop(), Tree(), events);
    user->UseMenuOfItem(second, 0);
    EXPECT_EQ(events, (Strings{"click b", "menu", "chose 0"}));
    EXPECT_EQ(Selected(), "B");
    for (const auto& [key, shift] : {std::pair<int, int>{KeyMenu, 0}, {KeyF10, 1}}) {
        events.clear();
        user->UseMenuByKey(key, shift, 3);
        EXPECT_EQ(events, (Strings{"menu", "chose 3"}));
    }
}

TEST_P(DesktopContract, ARightClickKeepsWhatIsSelectedUnderIt) {
    Edit("one two", 0);
    Offer(TheDesktop(), Pane(), events);
    const Selection one = {{0, 0}, {0, 3}};
    Pane().Select(one);
    user->UseMenuOfPane(1, std::nullopt);
    EXPECT_EQ(Pane().Selected(), one);
    user->UseMenuOfPane(5, std::nullopt);
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 5}, {0, 5}}));
}

TEST_P(DesktopContract, AnUnavailablePaneHasNoMenu) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events);
    Pane().SetFuncBodyAvailable(false);
    user->UseMenuOfPane(0, std::nullopt);
    EXPECT_EQ(user->MenuSeen(), Strings{});
    user->UseMenuByKey(KeyMenu, 0, std::nullopt);
    EXPECT_EQ(user->MenuSeen(), Strings{});
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheCommandOfAMenuMayShowBoxes) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events, [this] {
        ShowBox();
        user->Settle();
        Pane().SetText("by the program");
    });
    user->UseMenuOfPane(0, 0);
    user->Settle();
    EXPECT_EQ(EventsAcrossWindows(), (Strings{"menu", "lost focus", "chose 0", "change", "got focus"}));
}

TEST_P(DesktopContract, TheCommandOfAMenuMayMoveTheKeyboard) {
    BeginInPane();
    Offer(TheDesktop(), Pane(), events, [this] { Tree().SetFocus(); });
    user->UseMenuOfPane(0, 0);
    user->Settle();
    EXPECT_EQ(events, (Strings{"menu", "lost focus", "chose 0"}));
    EXPECT_TRUE(Tree().HasKeyboard());
}

} // namespace
} // namespace tessaly
