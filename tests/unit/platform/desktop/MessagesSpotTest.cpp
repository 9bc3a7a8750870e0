// Where the messages window stands: on screens of any size, round main windows of any size at any place.
#include "platform/desktop/MessagesWindow.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace tessaly {
namespace {

using Surroundings = MessagesWindow::Surroundings;
using WishedSize = MessagesWindow::WishedSize;

float Right(const Extent& extent) {
    return extent.left + extent.width;
}

float Bottom(const Extent& extent) {
    return extent.top + extent.height;
}

// By more than is rounded away.
bool IsOver(const Extent& one, const Extent& other) {
    const auto begins = [](float begin, float end) { return begin + 1 < end; };
    return begins(one.left, Right(other)) && begins(other.left, Right(one)) && begins(one.top, Bottom(other)) &&
           begins(other.top, Bottom(one));
}

// A main window as the program lays it out, with frame, menus and tool bar, in twips for a resolution of `percent`.
class Layout {
public:
    Layout(const Extent& work, const Extent& owner, float percent) {
        const float menus = 750 * 100 / percent + 300;
        const float border = 60;
        const Extent client = {owner.left + border, owner.top + menus, owner.width - 2 * border,
                               owner.height - menus - border};
        constexpr float footer = 420;
        constexpr float controlsTop = 900;
        const float treeWidth = client.width * 0.27F;
        mStatusBar = {client.left, Bottom(client) - footer, client.width, footer};
        mTree = {client.left, client.top + controlsTop, treeWidth, client.height - footer - controlsTop};
        around = {work,
                  owner,
                  {client.left, client.top, client.width, client.height - footer},
                  {client.left + treeWidth, mTree.top, client.width - treeWidth, mTree.height}};
    }

    // What a user sees of the tree when as much room is kept free. One that has no room is left as it is.
    Extent Tree(float room) const {
        Extent tree = mTree;
        const float end = mStatusBar.top - room;
        if (tree.top < end) {
            tree.height = std::min(tree.height, end - tree.top);
        }
        return tree;
    }

    void Expect(const WishedSize& wish) const {
        const auto [place, room] = MessagesWindow::FindSpot(around, wish);
        EXPECT_FALSE(IsOver(place, Tree(room))) << "the tree";
        EXPECT_FALSE(IsOver(place, mStatusBar)) << "the status bar";
        EXPECT_GE(place.left, around.work.left);
        EXPECT_GE(place.top, around.work.top);
        EXPECT_LE(Right(place), Right(around.work) + 1);
        EXPECT_LE(Bottom(place), Bottom(around.work) + 1);
        EXPECT_GE(place.height, 1000) << "nothing can be read in it";
        EXPECT_GE(place.width, 1500) << "nothing can be read in it";
        if (room > 0) {
            EXPECT_GE(Tree(room).height, 900) << "nothing is left of the tree";
        }
    }

    Surroundings around;

private:
    Extent mTree;
    Extent mStatusBar;
};

// From a large screen to the smallest that is common, at 100, 150 and 200 %.
struct Screen {
    float width;
    float height;
    float percent;
};
const std::vector<Screen> Screens = {{1920, 1080, 100}, {1280, 800, 100},  {1024, 768, 100}, {1920, 1080, 150},
                                     {1366, 768, 150},  {2560, 1440, 200}, {1366, 768, 200}, {1024, 768, 200}};

// Everywhere on the screen, in steps.
std::vector<Extent> Owners(const Extent& work) {
    std::vector<Extent> owners;
    for (const float width : {0.5F, 0.7F, 0.85F, 1.0F}) {
        for (int height = 43; height <= 100; height += 4) {
            for (const float left : {0.0F, 0.5F, 1.0F}) {
                for (int top = 0; top <= 100; top += 12) {
                    const Size size = {work.width * width, work.height * static_cast<float>(height) / 100};
                    const float down = (work.height - size.height) * static_cast<float>(top) / 100;
                    owners.push_back(
                        {work.left + (work.width - size.width) * left, work.top + down, size.width, size.height});
                }
            }
        }
    }
    return owners;
}

TEST(MessagesSpotTest, ItNeverLiesOverTheTreeOrTheStatusBarAndCanBeRead) {
    for (const auto& [width, height, percent] : Screens) {
        const float twips = 1500 / percent; // in a pixel
        const Extent work = {20, 30, width * twips, (height - 30) * twips};
        for (const Extent& owner : Owners(work)) {
            for (const WishedSize& wish : {WishedSize{}, WishedSize{6000, 2000}, WishedSize{30000, 20000}}) {
                SCOPED_TRACE(testing::Message() << width << " x " << height << " at " << percent << " %, window "
                                                << owner.width << " x " << owner.height << " at " << owner.left << ", "
                                                << owner.top << ", wish " << wish.height.value_or(0));
                Layout(work, owner, percent).Expect(wish);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST(MessagesSpotTest, BelowIsBetterThanBesideAndOutsideBetterThanInside) {
    const Extent work = {0, 0, 20000, 15000};
    const auto spot = [&work](const Extent& owner) {
        return MessagesWindow::FindSpot(Layout(work, owner, 100).around, {});
    };
    EXPECT_EQ(spot({100, 0, 9000, 9000}).place, (Extent{100, 9000, 9000, 3600}));
    EXPECT_EQ(spot({100, 0, 9000, 14000}).place, (Extent{9100, 0, 10900, 14000}));
    EXPECT_EQ(spot({10000, 0, 9000, 14000}).place, (Extent{0, 0, 10000, 14000}));
    EXPECT_EQ(spot({1000, 5000, 18000, 10000}).place, (Extent{1000, 1400, 18000, 3600}));
    EXPECT_EQ(spot(work).room, 3600);
}

TEST(MessagesSpotTest, WhereNoRoomIsLeftItLiesOverThePane) {
    const Extent work = {0, 0, 8000, 5760};
    const Layout layout(work, {100, 1000, 7800, 3700}, 200);
    const auto [place, room] = MessagesWindow::FindSpot(layout.around, {});
    EXPECT_EQ(room, 0);
    EXPECT_GE(place.left, layout.around.pane.left);
    EXPECT_EQ(Bottom(place), Bottom(layout.around.pane));
    EXPECT_GE(place.top, layout.around.pane.top);
}

TEST(MessagesSpotTest, AWindowThatLeavesTheScreenAtTheBottomHasItsMessagesOnTheScreen) {
    const Extent work = {0, 0, 20000, 12000};
    const Layout layout(work, {-100, 2000, 20200, 13000}, 100);
    const auto [place, room] = MessagesWindow::FindSpot(layout.around, {});
    EXPECT_GE(place.left, 0);
    EXPECT_LE(Right(place), 20000);
    EXPECT_LE(Bottom(place), 12000);
    EXPECT_FALSE(IsOver(place, layout.Tree(room)));
}

} // namespace
} // namespace tessaly
