// The tree.
#include "tests/contract/DesktopContract.h"

#include <map>
#include <stdexcept>

namespace tessaly {
namespace {

// Those keys of Fill that are in the tree, by their indices, which count from 1 without a gap.
Strings KeysOf(const TreeView& tree) {
    std::map<std::int32_t, std::string> byIndex;
    for (const char* const key : {"a", "b", "b1", "a1", "b1x", "a2"}) {
        try {
            byIndex[tree.Index(tree.Find(key))] = key;
        } catch (const std::out_of_range&) {
            continue;
        }
    }
    Strings keys;
    for (const auto& [index, key] : byIndex) {
        keys.push_back(key);
        EXPECT_EQ(index, static_cast<std::int32_t>(keys.size()));
    }
    return keys;
}

// Two top items with children that were added in turn.
void Fill(TreeView& tree) {
    const TreeItem a = tree.Add(TreeItem::None, "a", "A");
    const TreeItem b = tree.Add(TreeItem::None, "b", "B");
    const TreeItem b1 = tree.Add(b, "b1", "B1");
    tree.Add(a, "a1", "A1");
    tree.Add(b1, "b1x", "B1X");
    tree.Add(a, "a2", "A2");
}

TEST_P(DesktopContract, ATreeIsEmptyAtFirst) {
    EXPECT_EQ(user->TreeShown(), Strings{});
    EXPECT_THROW(Tree().Remove(1), std::out_of_range);
}

TEST_P(DesktopContract, IndicesCountFrom1InTheOrderOfAddingOverTheWholeTree) {
    Fill(Tree());
    EXPECT_EQ(KeysOf(Tree()), (Strings{"a", "b", "b1", "a1", "b1x", "a2"}));
    EXPECT_EQ(user->TreeShown(), (Strings{"A", "  A1", "  A2", "B", "  B1", "    B1X"}));
}

TEST_P(DesktopContract, IndicesCloseUpAfterARemoval) {
    Fill(Tree());
    const TreeItem last = Tree().Find("a2");
    Tree().Remove(4);
    EXPECT_EQ(KeysOf(Tree()), (Strings{"a", "b", "b1", "b1x", "a2"}));
    EXPECT_EQ(Tree().Index(last), 5);
    EXPECT_EQ(Tree().Find("a2"), last);
}

TEST_P(DesktopContract, ARemovalTakesAllBelow) {
    Fill(Tree());
    Tree().Remove(2);
    EXPECT_EQ(KeysOf(Tree()), (Strings{"a", "a1", "a2"}));
    EXPECT_EQ(user->TreeShown(), (Strings{"A", "  A1", "  A2"}));
    EXPECT_THROW(Tree().Find("b1x"), std::out_of_range);
}

TEST_P(DesktopContract, ARemovalOfNoItemRemovesNothing) {
    Fill(Tree());
    EXPECT_THROW(Tree().Remove(-1), std::out_of_range);
    EXPECT_THROW(Tree().Remove(0), std::out_of_range);
    EXPECT_THROW(Tree().Remove(7), std::out_of_range);
    EXPECT_EQ(user->TreeShown().size(), 6U);
}

TEST_P(DesktopContract, ANewItemIsPlain) {
    const TreeItem parent = Tree().Add(TreeItem::None, "key", "text");
    const TreeItem child = Tree().Add(parent, "KEY", "");
    EXPECT_NE(parent, TreeItem::None);
    EXPECT_EQ(Tree().Key(parent), "key");
    EXPECT_EQ(Tree().Text(parent), "text");
    EXPECT_EQ(Tree().Tag(parent), "");
    EXPECT_EQ(Tree().Parent(parent), TreeItem::None);
    EXPECT_FALSE(user->IsExpanded(parent));
    EXPECT_EQ(user->TreeShown(), (Strings{"text", "  "}));
    EXPECT_EQ(Tree().Text(child), "");
    EXPECT_EQ(Tree().Parent(child), parent);
}

TEST_P(DesktopContract, KeysAreUniqueOverTheWholeTree) {
    Fill(Tree());
    EXPECT_THROW(Tree().Add(TreeItem::None, "b1x", "other"), std::invalid_argument);
    EXPECT_EQ(user->TreeShown().size(), 6U);
    EXPECT_EQ(Tree().Text(Tree().Find("b1x")), "B1X");
}

TEST_P(DesktopContract, KeysAreComparedExactly) {
    const TreeItem lower = Tree().Add(TreeItem::None, "key", "");
    const TreeItem upper = Tree().Add(TreeItem::None, "Key", "");
    const TreeItem blank = Tree().Add(TreeItem::None, "key ", "");
    const TreeItem umlaut = Tree().Add(TreeItem::None, "k\xC3\xA4y", "");
    EXPECT_EQ(Tree().Find("key"), lower);
    EXPECT_EQ(Tree().Find("Key"), upper);
    EXPECT_EQ(Tree().Find("key "), blank);
    EXPECT_EQ(Tree().Find("k\xC3\xA4y"), umlaut);
    EXPECT_THROW(Tree().Find("KEY"), std::out_of_range);
    EXPECT_THROW(Tree().Find("ke"), std::out_of_range);
}

TEST_P(DesktopContract, AKeyIsFreeAfterItsItemIsRemoved) {
    const TreeItem before = Tree().Add(TreeItem::None, "key", "");
    Tree().Remove(1);
    const TreeItem after = Tree().Add(TreeItem::None, "key", "");
    EXPECT_EQ(Tree().Find("key"), after);
    EXPECT_NE(after, before);
}

TEST_P(DesktopContract, AnItemIsNeverGivenToAnotherOne) {
    std::vector<TreeItem> items;
    for (int round = 0; round < 3; ++round) {
        items.push_back(Tree().Add(TreeItem::None, "key", ""));
        items.push_back(Tree().Add(TreeItem::None, "other", ""));
        Tree().Remove(1);
        items.push_back(Tree().Add(TreeItem::None, "third", ""));
        Tree().Clear();
    }
    for (std::size_t first = 0; first < items.size(); ++first) {
        for (std::size_t second = 0; second < first; ++second) {
            EXPECT_NE(items[first], items[second]);
        }
        EXPECT_THROW(Tree().Key(items[first]), std::out_of_range);
    }
}

TEST_P(DesktopContract, AnItemNeedsAParentThatIsThere) {
    const TreeItem gone = Tree().Add(TreeItem::None, "gone", "");
    Tree().Remove(1);
    EXPECT_THROW(Tree().Add(gone, "child", ""), std::invalid_argument);
    EXPECT_EQ(user->TreeShown(), Strings{});
    EXPECT_THROW(Tree().Find("child"), std::out_of_range);
}

TEST_P(DesktopContract, AnItemThatIsNotInTheTreeHasNothing) {
    const TreeItem gone = Tree().Add(TreeItem::None, "gone", "");
    Tree().Clear();
    for (const TreeItem item : {gone, TreeItem::None}) {
        EXPECT_THROW(Tree().Key(item), std::out_of_range);
        EXPECT_THROW(Tree().Text(item), std::out_of_range);
        EXPECT_THROW(Tree().SetText(item, ""), std::out_of_range);
        EXPECT_THROW(Tree().Tag(item), std::out_of_range);
        EXPECT_THROW(Tree().SetTag(item, ""), std::out_of_range);
        EXPECT_THROW(Tree().Index(item), std::out_of_range);
        EXPECT_THROW(Tree().Parent(item), std::out_of_range);
        EXPECT_THROW(Tree().Expand(item), std::out_of_range);
        EXPECT_THROW(Tree().Select(item), std::out_of_range);
    }
}

TEST_P(DesktopContract, TextAndTagOfAnItemCanBeChanged) {
    Fill(Tree());
    Tree().SetText(Tree().Find("b"), "B & \xC3\xA4");
    Tree().SetTag(Tree().Find("b"), "tag");
    EXPECT_EQ(Tree().Text(Tree().Find("b")), "B & \xC3\xA4");
    EXPECT_EQ(user->TreeShown()[3], "B & \xC3\xA4");
    EXPECT_EQ(Tree().Tag(Tree().Find("b")), "tag");
    EXPECT_EQ(Tree().Key(Tree().Find("b")), "b");
    EXPECT_EQ(Tree().Text(Tree().Find("a")), "A");
    EXPECT_EQ(Tree().Tag(Tree().Find("a")), "");
}

TEST_P(DesktopContract, ExpandingOneItemExpandsNoOther) {
    Fill(Tree());
    Tree().Expand(Tree().Find("b"));
    EXPECT_TRUE(user->IsExpanded(Tree().Find("b")));
    EXPECT_FALSE(user->IsExpanded(Tree().Find("a")));
    EXPECT_FALSE(user->IsExpanded(Tree().Find("b1")));
}

TEST_P(DesktopContract, AnItemCanBeExpandedBeforeItHasChildren) {
    const TreeItem parent = Tree().Add(TreeItem::None, "parent", "");
    Tree().Expand(parent);
    const TreeItem child = Tree().Add(parent, "child", "Child");
    EXPECT_TRUE(user->IsExpanded(parent));
    MainWindow().Show();
    user->ClickItem(child);
    EXPECT_EQ(user->TreeShown(), (Strings{"", "  Child*"}));
}

TEST_P(DesktopContract, SelectRaisesNoClick) {
    MainWindow().Show();
    Fill(Tree());
    Record();
    Tree().Select(Tree().Find("b"));
    EXPECT_EQ(Selected(), "B");
    Tree().Select(Tree().Find("a"));
    EXPECT_EQ(Selected(), "A");
    user->Settle();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, NothingButTheUserRaisesAClick) {
    MainWindow().Show();
    Record();
    Fill(Tree());
    Tree().Expand(Tree().Find("a"));
    Tree().Select(Tree().Find("a1"));
    Tree().SetFocus();
    Tree().Remove(Tree().Index(Tree().Find("a1")));
    Tree().Clear();
    user->Settle();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AClickSelectsBeforeItIsTold) {
    MainWindow().Show();
    Fill(Tree());
    std::string selected;
    TreeItem told = TreeItem::None;
    Tree().onNodeClick = [&](TreeItem item) {
        told = item;
        selected = Selected();
    };
    user->ClickItem(Tree().Find("b"));
    EXPECT_EQ(told, Tree().Find("b"));
    EXPECT_EQ(selected, "B");
}

TEST_P(DesktopContract, EveryClickIsToldOnceEvenOnTheSelectedItem) {
    MainWindow().Show();
    Fill(Tree());
    Tree().Select(Tree().Find("a"));
    Record();
    user->ClickItem(Tree().Find("a"));
    EXPECT_EQ(events, Strings{"click a"});
    user->ClickItem(Tree().Find("b"));
    EXPECT_EQ(events, (Strings{"click a", "click b"}));
    user->ClickItem(Tree().Find("b"));
    EXPECT_EQ(events, (Strings{"click a", "click b", "click b"}));
}

TEST_P(DesktopContract, AClickTakesTheFocusFromThePaneFirst) {
    MainWindow().Show();
    Fill(Tree());
    Pane().SetFocus();
    Record();
    user->ClickItem(Tree().Find("a"));
    EXPECT_EQ(events, (Strings{"lost focus", "click a"}));
}

TEST_P(DesktopContract, ASelectionByKeyIsToldLikeAClick) {
    MainWindow().Show();
    Fill(Tree());
    Tree().Expand(Tree().Find("a"));
    Tree().Select(Tree().Find("a"));
    Tree().SetFocus();
    Record();
    user->MoveSelectionDown();
    EXPECT_EQ(events, Strings{"click a1"});
    EXPECT_EQ(Selected(), "A1");
}

TEST_P(DesktopContract, AKeyPassesOverWhatACollapsedItemHides) {
    MainWindow().Show();
    Fill(Tree());
    Tree().Select(Tree().Find("a"));
    Tree().SetFocus();
    Record();
    user->MoveSelectionDown();
    EXPECT_EQ(events, Strings{"click b"});
}

TEST_P(DesktopContract, ChildrenAreShownInTheOrderOfAdding) {
    MainWindow().Show();
    Fill(Tree());
    Tree().Expand(Tree().Find("a"));
    Tree().Select(Tree().Find("a"));
    Tree().SetFocus();
    Record();
    for (int step = 0; step < 3; ++step) {
        user->MoveSelectionDown();
    }
    EXPECT_EQ(events, (Strings{"click a1", "click a2", "click b"}));
}

TEST_P(DesktopContract, AnItemThatIsCollapsedIsSelectedInPlaceOfWhatItHides) {
    MainWindow().Show();
    Fill(Tree());
    for (const char* const key : {"a", "b", "b1"}) {
        Tree().Expand(Tree().Find(key));
    }
    Tree().SetFocus();
    Record();
    for (const auto& [selected, collapsed] : {std::pair("a2", "a"), std::pair("b1x", "b")}) {
        events.clear();
        Tree().Select(Tree().Find(selected));
        user->CollapseItem(Tree().Find(collapsed));
        EXPECT_EQ(events, Strings{std::string("click ") + collapsed});
        EXPECT_EQ(Selected(), Tree().Text(Tree().Find(collapsed)));
        EXPECT_FALSE(user->IsExpanded(Tree().Find(collapsed)));
    }
}

TEST_P(DesktopContract, ACollapseThatHidesNoSelectionSelectsNothing) {
    MainWindow().Show();
    Fill(Tree());
    Tree().Expand(Tree().Find("a"));
    Tree().Expand(Tree().Find("b"));
    Tree().SetFocus();
    Tree().Select(Tree().Find("a1"));
    Record();
    user->CollapseItem(Tree().Find("b"));
    EXPECT_EQ(Selected(), "A1");
    Tree().Select(Tree().Find("a"));
    user->CollapseItem(Tree().Find("a"));
    EXPECT_EQ(Selected(), "A");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, NothingIsSelectedAfterTheSelectedItemWasRemoved) {
    Fill(Tree());
    Tree().Select(Tree().Find("a2"));
    Tree().Remove(6);
    EXPECT_EQ(Selected(), "");
}

TEST_P(DesktopContract, NothingIsSelectedAfterAnItemAboveTheSelectedOneWasRemoved) {
    Fill(Tree());
    Tree().Expand(Tree().Find("b"));
    Tree().Expand(Tree().Find("b1"));
    Tree().Select(Tree().Find("b1x"));
    Tree().Remove(2);
    EXPECT_EQ(Selected(), "");
}

TEST_P(DesktopContract, TheSelectionStaysWhenAnotherItemIsRemoved) {
    Fill(Tree());
    Tree().Select(Tree().Find("a"));
    Tree().Remove(2);
    EXPECT_EQ(Selected(), "A");
}

TEST_P(DesktopContract, ClearLeavesNothing) {
    Fill(Tree());
    Tree().Select(Tree().Find("a"));
    Tree().Clear();
    EXPECT_EQ(user->TreeShown(), Strings{});
    EXPECT_THROW(Tree().Find("a"), std::out_of_range);
    Fill(Tree());
    EXPECT_EQ(user->TreeShown().size(), 6U);
}

TEST_P(DesktopContract, TheClickHandlerMayRebuildTheTree) {
    MainWindow().Show();
    Fill(Tree());
    Tree().onNodeClick = [this](TreeItem) {
        Tree().Clear();
        Fill(Tree());
        Tree().Select(Tree().Find("b"));
    };
    user->ClickItem(Tree().Find("a"));
    EXPECT_EQ(Selected(), "B");
    EXPECT_EQ(user->TreeShown().size(), 6U);
}

TEST_P(DesktopContract, TypingLettersFindsAnItem) {
    const TreeItem group = Tree().Add(TreeItem::None, "group", "Group");
    for (const char* const key : {"Alpha", "Beta", "Bison", "Gamma"}) {
        Tree().Add(group, key, key);
    }
    Tree().Expand(group);
    MainWindow().Show();
    user->ClickItem(group);
    Record();
    user->Type("bi");
    EXPECT_EQ(Selected(), "Bison");
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back(), "click Bison");
}

TEST_P(DesktopContract, LettersThatNoItemBeginsWithSelectNothingElse) {
    MainWindow().Show();
    user->ClickItem(Tree().Add(TreeItem::None, "Alpha", "Alpha"));
    Record();
    user->Type("xy");
    EXPECT_EQ(Selected(), "Alpha");
    EXPECT_EQ(events, Strings{});
}

} // namespace
} // namespace tessaly
