// A user who does anything at all, thousands of times. After each action window, document and tree must agree.
#include "tests/unit/ui/MainWindow.h"

#include <algorithm>
#include <random>

namespace tessaly {
namespace {

class RandomActionsTest : public MainWindow, public ::testing::WithParamInterface<unsigned> {
protected:
    std::size_t Pick(std::size_t count) { return mRandom() % count; }
    bool OneIn(std::size_t count) { return Pick(count) == 0; }

    void PrepareDialogs() {
        desktop.msgBox.decide = [this](const memory::MsgBox::Record& box) {
            const std::vector<MsgResult> yesNo = {MsgResult::Yes, MsgResult::No};
            const std::vector<MsgResult> all = {MsgResult::Yes, MsgResult::No, MsgResult::Cancel};
            return box.buttons == MsgButtons::Ok      ? MsgResult::Ok
                   : box.buttons == MsgButtons::YesNo ? yesNo[Pick(2)]
                                                      : all[Pick(3)];
        };
        while (desktop.fileDialog.AnswersLeft() < 40) {
            const std::vector<std::string> paths = {"a.PSF", "b.psf", "bad.PSF", "missing.PSF", "odd.txt"};
            if (OneIn(4)) {
                desktop.fileDialog.WillCancel();
            } else {
                desktop.fileDialog.WillChoose(paths[Pick(paths.size())]);
            }
        }
        desktop.modal.nameWindow.clear();
        desktop.modal.splashWindow.clear();
        desktop.modal.WillUseName([this](memory::NameWindow& dialog) {
            const std::vector<std::string> names = {"", "A", "B1", "Foo", "fo", "Foobar", "1x", "a b", "Zebra", "One"};
            dialog.Type(names[Pick(names.size())]);
            if (!OneIn(5)) {
                dialog.PressOk();
            }
            if (dialog.IsShown()) {
                dialog.PressCancel();
            }
        });
        desktop.modal.WillUseSplash([](memory::SplashWindow& splash) { splash.PressKey(); });
    }

    void ActOnTreeOrPane() {
        switch (Pick(5)) {
        case 0:
        case 1:
            desktop.tree.Click(
                desktop.tree.At(1 + static_cast<std::int32_t>(Pick(static_cast<std::size_t>(desktop.tree.Count())))));
            break;
        case 2:
            desktop.pane.Click();
            desktop.pane.Type(OneIn(2) ? "x{" : "[EndPSF]");
            break;
        case 3:
            desktop.pane.PressEnter();
            break;
        default:
            desktop.pane.Backspace();
            break;
        }
    }

    // Whether the action was a build.
    bool Act() {
        const std::vector<std::string> menus = {"mnuNewPSF",      "mnuOpenPSF", "mnuSavePSF", "mnuSaveAsPSF",
                                                "mnuBuildExe",    "mnuEnglish", "mnuGerman",  "mnuOpenHelp",
                                                "mnuHelpHotKeys", "mnuAbout"};
        const int keys[] = {KeyF2, KeyF3, KeyF4, KeyF5, KeyF10};
        switch (Pick(8)) {
        case 0: {
            const std::string menu = menus[Pick(menus.size())];
            Choose(menu);
            return menu == "mnuBuildExe";
        }
        case 1: {
            const int key = keys[Pick(std::size(keys))];
            desktop.window.PressKey(key);
            return key == KeyF10;
        }
        case 2:
            if (desktop.toolBar.ButtonCount() > 0) {
                desktop.toolBar.Press(1 + static_cast<std::int32_t>(Pick(2)));
            }
            return false;
        case 3:
            desktop.window.Resize(static_cast<float>(4000 + Pick(20000)), static_cast<float>(4000 + Pick(20000)));
            return false;
        default:
            ActOnTreeOrPane();
            return false;
        }
    }

    void CheckAgreement() {
        if (window.mCurrentNode != TreeItem::None) {
            ASSERT_NO_THROW(desktop.tree.Key(window.mCurrentNode)) << "the current item is not in the tree";
        }
        // A failed load drops the document and leaves the tree: the two part until the next New or Open.
        mPartedByFailedLoad =
            window.StatusPanel2 == "vornMainFrmPrmpt23" || (mPartedByFailedLoad && FunctionItems() != FunctionNames());
        if (!mPartedByFailedLoad) {
            ASSERT_EQ(FunctionItems(), FunctionNames());
        }
    }

    std::mt19937 mRandom{GetParam()};
    bool mPartedByFailedLoad = false;
};

TEST_P(RandomActionsTest, WindowDocumentAndTreeAgreeAfterEveryAction) {
    desktop.files.contents["a.PSF"] = GoodPsf();
    desktop.files.contents["b.psf"] = Psf(" 0", "", "");
    desktop.files.contents["bad.PSF"] = "[GVars]\r\n";
    Start();
    std::size_t builds = 0;
    for (int action = 0; action < 3000; ++action) {
        SCOPED_TRACE("action " + std::to_string(action));
        PrepareDialogs();
        const std::size_t startsBefore = desktop.app.starts.size();
        bool isBuild = false;
        ASSERT_NO_THROW(isBuild = Act());
        CheckAgreement();
        if (HasFatalFailure()) {
            return;
        }
        const std::size_t starts = desktop.app.starts.size() - startsBefore;
        // Only a build starts a process, only one, and then it says so.
        ASSERT_LE(starts, isBuild ? 1U : 0U);
        if (starts == 1) {
            ASSERT_EQ(window.StatusPanel2, "vornMainFrmPrmpt39");
        }
        builds += starts;
    }
    EXPECT_GT(builds, 0U);
    EXPECT_EQ(builds, desktop.app.starts.size());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomActionsTest, ::testing::Values(1U, 2U, 3U, 20261120U));

} // namespace
} // namespace tessaly
