// What the window keeps beside its commands, and how it comes back at the next start.
#include "recovery/KeptDocuments.h"
#include "tests/unit/ui/MainWindow.h"

#include <algorithm>

namespace tessaly {
namespace {

// A program with one document that outlives it, and a look at what it left.
class RecoveryTest : public MainWindow {
protected:
    using Strings = std::vector<std::string>;

    void SetUp() override {
        Start();
        Open("a.PSF", GoodPsf());
    }

    void Type(std::string_view text) {
        Edit("One", text);
        desktop.window.BeIdle();
    }

    // A store that writes nothing.
    static RecoveryStore Look(memory::Desktop& at) {
        return RecoveryStore({at.own, at.files, {RecoveryFolder}, {}, [] { return 0; }, [] { return 0; }});
    }

    std::vector<Copy> Copies() { return Look(desktop).Copies(); }

    // The file names of what is kept, without their origins.
    Strings Kept() const {
        Strings names;
        for (const auto& [path, bytes] : desktop.files.contents) {
            if (path.starts_with(KeptFolder(RecoveryFolder)) && path.ends_with(".PSF")) {
                names.push_back(path.substr(KeptFolder(RecoveryFolder).size() + 1));
            }
        }
        return names;
    }

    // The text of `function` in the newest copy, or in the only document that is kept.
    std::string Saved(const std::vector<Copy>& copies, std::string_view function = "One") {
        VornSrcObj loaded(desktop.files, desktop.codePage);
        std::string prototype;
        std::string code = "nothing";
        if (!copies.empty() && Look(desktop).Load(copies.front(), loaded) == Status::Done) {
            loaded.GetFunction(function, prototype, code);
        }
        return code;
    }
    std::string InCopy() { return Saved(Copies()); }
    std::string InKept() { return Saved(Look(desktop).KeptDocuments()); }
};

constexpr const char* Typed = "/* typed */void One()\r\n{\r\n}\r\n";

// Copies.

TEST_F(RecoveryTest, AnUntouchedDocumentHasNoCopy) {
    desktop.tree.Click("One");
    desktop.tree.Click("Two");
    desktop.window.BeIdle();
    desktop.window.GoToAnotherProgram();
    EXPECT_EQ(desktop.files.contents.size(), 1U);
}

TEST_F(RecoveryTest, WhatIsTypedIsCopiedAsSoonAsTheWindowIsIdle) {
    Edit("One", "/* typed */");
    EXPECT_TRUE(Copies().empty());
    desktop.window.BeIdle();
    EXPECT_EQ(InCopy(), Typed);
    EXPECT_EQ(FunctionText("One"), "void One()\r\n{\r\n}\r\n") << "the document does not know of it";
    const Origin origin = Copies().at(0).origin;
    EXPECT_EQ(origin.path, "a.PSF");
    EXPECT_EQ(origin.file, MarkOf(GoodPsf()));
    EXPECT_EQ(origin.item, "functions/One");
    EXPECT_EQ(origin.caret, 11U);
}

TEST_F(RecoveryTest, EventsAndReferencesAreCopiedToo) {
    Edit("_0v", "int v;");
    desktop.window.BeIdle();
    Edit("_0e2", "/* frame */");
    desktop.window.BeIdle();
    VornSrcObj loaded(desktop.files, desktop.codePage);
    ASSERT_EQ(Look(desktop).Load(Copies().at(0), loaded), Status::Done);
    EXPECT_TRUE(loaded.VarCode().starts_with("int v;"));
    EXPECT_TRUE(loaded.EventCodeAt(1).starts_with("/* frame */"));
    EXPECT_EQ(Copies().at(0).origin.item, "events/OnFrame");
}

TEST_F(RecoveryTest, AnIdleWindowWritesNothingTwice) {
    Type("/* typed */");
    const auto files = desktop.files.contents;
    const std::size_t calls = desktop.ownFaults.Calls();
    desktop.window.BeIdle();
    desktop.window.PressKey(KeyF2);
    desktop.window.BeIdle();
    EXPECT_EQ(desktop.files.contents, files);
    EXPECT_EQ(desktop.ownFaults.Calls(), calls);
}

TEST_F(RecoveryTest, EachWayOutOfThePaneCopiesAtOnce) {
    const std::vector<std::pair<std::string, std::function<void()>>> ways = {
        {"another item", [this] { desktop.tree.Click("Two"); }},
        {"the tree", [this] { desktop.window.PressKey(KeyF2); }},
        {"a size", [this] { desktop.window.Resize(14000, 9100); }},
        {"another program", [this] { desktop.window.GoToAnotherProgram(); }},
        {"a box", [this] { desktop.msgBox.WillPress(MsgResult::Ok), Choose("mnuHelpHotKeys"); }}};
    for (const auto& [name, leave] : ways) {
        Edit("One", name);
        leave();
        EXPECT_TRUE(InCopy().starts_with(name)) << InCopy();
    }
}

TEST_F(RecoveryTest, AFunctionThatWasAddedOrDeletedIsCopied) {
    AddFunction("Added");
    desktop.window.BeIdle();
    EXPECT_EQ(Saved(Copies(), "Added"), FunctionText("Added"));
    desktop.tree.Click("Two");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.window.PressKey(KeyF4);
    desktop.window.BeIdle();
    EXPECT_EQ(Saved(Copies(), "Two"), "");
}

TEST_F(RecoveryTest, AnExpensiveCopyWaitsButNotForACommit) {
    memory::Desktop slow;
    std::int64_t watch = 0;
    RecoveryHost host = RecoveryOn(slow);
    host.stopwatch = [&watch] { return watch += 30'000; };
    slow.files.contents["a.PSF"] = GoodPsf();
    slow.app.commandLine = "a.PSF";
    slow.msgBox.decide = [](const memory::MsgBox::Record&) { return MsgResult::Ok; };
    VornMainFrm program(slow, host);
    program.Show();
    slow.tree.Click("One");
    slow.pane.Click();
    const auto copied = [&] { return Saved(Look(slow).Copies()); };
    const auto type = [&](std::string_view text) {
        slow.pane.Type(text);
        slow.window.BeIdle();
        desktop.files.contents = slow.files.contents;
    };
    type("1");
    EXPECT_TRUE(copied().starts_with("1void"));
    type("2");
    EXPECT_TRUE(copied().starts_with("1void"));
    watch += 1'500'000;
    type("");
    EXPECT_TRUE(copied().starts_with("12void"));
    type("3");
    EXPECT_TRUE(copied().starts_with("12void"));
    slow.tree.Click("Two");
    type("");
    EXPECT_TRUE(copied().starts_with("123void"));
}

TEST_F(RecoveryTest, ACopyThatCouldNotBeWrittenIsTriedAgain) {
    desktop.own.refused = {RecoveryFolder};
    Type("/* typed */");
    EXPECT_TRUE(Copies().empty());
    desktop.own.refused.clear();
    desktop.window.BeIdle();
    EXPECT_EQ(InCopy(), Typed);
}

// Saving.

TEST_F(RecoveryTest, ASaveDropsTheCopy) {
    Type("/* typed */");
    Choose("mnuSavePSF");
    EXPECT_EQ(desktop.files.contents.size(), 1U);
    Type("more ");
    EXPECT_EQ(Copies().at(0).origin.file, MarkOf(desktop.files.contents["a.PSF"]));
}

TEST_F(RecoveryTest, ASaveAsGivesTheCopiesBehindItItsName) {
    Type("/* typed */");
    desktop.fileDialog.WillChoose("b.PSF");
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(desktop.files.contents.size(), 2U);
    Type("more ");
    EXPECT_EQ(Copies().at(0).origin.path, "b.PSF");
    EXPECT_EQ(Copies().at(0).origin.file, MarkOf(desktop.files.contents["b.PSF"]));
}

TEST_F(RecoveryTest, ASaveThatDidNotReachTheDiskKeepsItsCopyWhateverItTold) {
    for (const std::string menu : {"mnuSavePSF", "mnuSaveAsPSF"}) {
        Type("/* typed */");
        desktop.fileDialog.WillChoose("b.PSF");
        desktop.msgBox.decide = [](const memory::MsgBox::Record&) { return MsgResult::Ok; };
        desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
        Choose(menu);
        EXPECT_NE(InCopy().find("/* typed */"), std::string::npos) << menu;
    }
    EXPECT_EQ(Panel(2), "File was saved successfully!");
    EXPECT_EQ(desktop.files.contents["b.PSF"], "");
    desktop.window.CloseByUser();
    EXPECT_TRUE(Copies().empty());
    ASSERT_EQ(Kept().size(), 1U);
    EXPECT_TRUE(Kept().at(0).ends_with("save failed.PSF")) << Kept().at(0);
    EXPECT_NE(InKept().find("/* typed */"), std::string::npos);
}

TEST_F(RecoveryTest, WithNoPlaceForTheCopyAFileIsNotOpenedForASave) {
    Edit("One", "/* typed */");
    desktop.own.refused = {RecoveryFolder};
    desktop.own.readOnly = {"."};
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuSavePSF");
    EXPECT_EQ(LastBox().caption, "File write error!");
    EXPECT_EQ(LastBox().text, "Please restart the application!");
    EXPECT_EQ(desktop.files.contents["a.PSF"], GoodPsf());
    EXPECT_TRUE(window.FuncBodyChangedFlag);

    desktop.files.contents["b.PSF"] = "b";
    desktop.fileDialog.WillChoose("b.PSF");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(LastBox().caption, "File write error!");
    EXPECT_EQ(desktop.files.contents["b.PSF"], "b");
    EXPECT_EQ(window.mLastOpenedFile, "a.PSF");

    desktop.fileDialog.WillChoose("new.PSF");
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(window.mLastOpenedFile, "new.PSF") << "there was nothing to destroy";
    EXPECT_NE(desktop.files.contents["new.PSF"].find("/* typed */"), std::string::npos);
}

TEST_F(RecoveryTest, WithoutAFolderTheCopyLiesBesideTheFileDuringASave) {
    Edit("One", "/* typed */");
    desktop.own.refused = {RecoveryFolder};
    desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuSavePSF");
    EXPECT_EQ(desktop.files.contents["a.PSF"], "");
    EXPECT_NE(desktop.files.contents["./.a.PSF.recovery.PSF"].find("/* typed */"), std::string::npos);
    Choose("mnuSavePSF");
    EXPECT_FALSE(desktop.files.contents.contains("./.a.PSF.recovery.PSF"));
}

// Giving up.

TEST_F(RecoveryTest, WhateverGivesTextUpKeepsIt) {
    struct Case {
        std::string reason;
        std::function<void()> act;
    };
    const auto forget = [this] { window.FuncBodyChangedFlag = false; };
    const auto open = [this](const std::string& path) {
        desktop.files.contents["b.PSF"] = GoodPsf();
        desktop.files.contents["bad.PSF"] = "bad";
        desktop.fileDialog.WillChoose(path);
        Choose("mnuOpenPSF");
    };
    const std::vector<Case> cases = {
        {"new file", [&] { forget(), Choose("mnuNewPSF"); }},
        {"answered no", [&] { desktop.msgBox.WillPress(MsgResult::No), Choose("mnuNewPSF"); }},
        {"other file opened", [&] { forget(), open("b.PSF"); }},
        {"answered no", [&] { desktop.msgBox.WillPress(MsgResult::No), open("b.PSF"); }},
        {"other file opened", [&] { forget(), desktop.msgBox.WillPress(MsgResult::Ok), open("bad.PSF"); }},
        {"text replaced", [&] { AddFunction("Added"); }},
        {"text replaced", [&] { desktop.msgBox.WillPress(MsgResult::Ok), AddFunction("Two"); }},
        {"deleted", [&] { desktop.msgBox.WillPress(MsgResult::Yes), desktop.window.PressKey(KeyF4); }},
        {"answered no", [&] { desktop.msgBox.WillPress(MsgResult::No), Choose("mnuExit"); }},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.reason);
        desktop.files.contents.clear();
        window.FuncBodyChangedFlag = false;
        Open("a.PSF", GoodPsf());
        desktop.files.contents = {{"a.PSF", GoodPsf()}};
        Type("/* typed */");
        each.act();
        ASSERT_EQ(Kept().size(), 1U);
        EXPECT_TRUE(Kept().at(0).ends_with(each.reason + ".PSF")) << Kept().at(0);
        EXPECT_TRUE(Kept().at(0).starts_with("a 2023-11-")) << Kept().at(0);
        EXPECT_EQ(InKept(), Typed);
    }
}

TEST_F(RecoveryTest, TheAnswersAtACloseKeepTheText) {
    for (const auto& [answer, reason] : std::vector<std::pair<MsgResult, std::string>>{
             {MsgResult::No, "answered no"}, {MsgResult::Cancel, "cancelled"}, {MsgResult::Yes, "save failed"}}) {
        memory::Desktop each;
        each.msgBox.decide = [answer = answer](const memory::MsgBox::Record& box) {
            return box.buttons == MsgButtons::Ok ? MsgResult::Ok : answer;
        };
        VornMainFrm program(each, RecoveryOn(each));
        program.Show();
        each.tree.Click("_0v");
        each.pane.Click();
        each.pane.Type("typed");
        each.fileDialog.WillCancel();
        each.window.CloseByUser();
        ASSERT_EQ(each.files.contents.size(), 2U) << reason;
        EXPECT_TRUE(each.files.contents.begin()->first.ends_with(reason + ".PSF") ||
                    each.files.contents.begin()->first.ends_with(reason + ".origin"))
            << each.files.contents.begin()->first;
    }
}

TEST_F(RecoveryTest, WhatIsOnDiskIsNotKept) {
    Type("/* typed */");
    desktop.msgBox.WillPress(MsgResult::Yes);
    Choose("mnuNewPSF");
    EXPECT_TRUE(Kept().empty());
    desktop.window.CloseByUser();
    EXPECT_TRUE(Kept().empty());
    EXPECT_EQ(desktop.files.contents.size(), 1U);
}

TEST_F(RecoveryTest, ACancelledOpenGivesNothingUp) {
    Type("/* typed */");
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.fileDialog.WillCancel();
    Choose("mnuOpenPSF");
    EXPECT_EQ(InCopy(), Typed);
    desktop.window.CloseByUser();
    EXPECT_EQ(InKept(), Typed) << "nobody was asked again";
}

// Coming back. The program ends without a word, and another one starts.

class NextStartTest : public RecoveryTest {
protected:
    // Starts another program where the first one has gone.
    void StartAgain(const std::string& commandLine = "", std::uint32_t language = 0) {
        next = std::make_unique<memory::Desktop>();
        SetLanguage(language);
        next->files.contents = desktop.files.contents;
        next->registry.store = desktop.registry.store;
        next->own.processes = {{10 + starts, "then"}};
        ++starts;
        next->app.commandLine = commandLine;
        next->msgBox.decide = [this](const memory::MsgBox::Record&) { return answer; };
        again = std::make_unique<VornMainFrm>(*next, RecoveryOn(*next));
        again->Show();
        desktop.files.contents = next->files.contents;
    }

    void ExpectSelectedAgain(const std::string& key) {
        Edit(key, "/* here */");
        desktop.window.BeIdle();
        StartAgain();
        EXPECT_EQ(next->tree.Key(again->mCurrentNode), key);
        EXPECT_TRUE(next->pane.Text().starts_with("/* here */")) << next->pane.Text();
        EXPECT_EQ(next->pane.Caret(), 10U);
    }

    MsgResult answer = MsgResult::Yes;
    std::uint64_t starts = 1;
    std::unique_ptr<memory::Desktop> next;
    std::unique_ptr<VornMainFrm> again;
};

TEST_F(NextStartTest, NothingIsAskedWhereNothingIsLeft) {
    StartAgain();
    EXPECT_TRUE(next->msgBox.records.empty());
}

TEST_F(NextStartTest, TheQuestionNamesTheFile) {
    Type("/* typed */");
    StartAgain();
    ASSERT_EQ(next->msgBox.records.size(), 1U);
    const memory::MsgBox::Record& box = next->msgBox.records[0];
    EXPECT_EQ(box.caption, "Recovery");
    EXPECT_EQ(box.text, "Tessaly ended before these edits were saved:\na.PSF\n\nDo you wish to go on with them?");
    EXPECT_EQ(box.buttons, MsgButtons::YesNo);
    EXPECT_EQ(box.icon, MsgIcon::Question);
}

TEST_F(NextStartTest, TheQuestionIsGermanInGerman) {
    desktop.msgBox.WillPress(MsgResult::No);
    window.FuncBodyChangedFlag = false;
    Choose("mnuNewPSF");
    Edit("_0v", "x");
    desktop.window.BeIdle();
    StartAgain("", 1);
    EXPECT_EQ(next->msgBox.records.at(0).caption, "Wiederherstellung");
    EXPECT_EQ(next->msgBox.records.at(0).text,
              "Tessaly wurde beendet, bevor diese \xC3\x84nderungen gespeichert waren:\n(ohne Namen)\n\n"
              "Wollen Sie damit weiterarbeiten?");
}

TEST_F(NextStartTest, AnUntitledOneIsCalledSo) {
    Choose("mnuNewPSF");
    Edit("_0v", "x");
    desktop.window.BeIdle();
    StartAgain();
    EXPECT_NE(next->msgBox.records.at(0).text.find("\n(untitled)\n\n"), std::string::npos);
    EXPECT_EQ(next->status.PanelText(1), "File=");
}

TEST_F(NextStartTest, YesBringsTheWindowBackAsItWas) {
    AddFunction("Added");
    Type("/* typed */");
    StartAgain();
    EXPECT_EQ(next->pane.Text(), Typed);
    EXPECT_EQ(next->pane.Caret(), 11U);
    EXPECT_EQ(next->tree.Key(next->tree.Selected()), "One");
    EXPECT_EQ(next->tree.Key(again->mCurrentNode), "One");
    EXPECT_TRUE(again->FuncBodyChangedFlag);
    EXPECT_EQ(again->mLastOpenedFile, "a.PSF");
    EXPECT_EQ(next->status.PanelText(1), "File=a.PSF");
    EXPECT_EQ(again->mSourceDoc->GetFunctionCount(), 3);
    EXPECT_NO_THROW(next->tree.Click("Added"));
    EXPECT_FALSE(Look(*next).Copies().empty()) << "until the text is on disk";
    next->menus["mnuSavePSF"].Choose();
    EXPECT_EQ(next->files.contents.size(), 1U);
    EXPECT_NE(next->files.contents["a.PSF"].find("/* typed */"), std::string::npos);
}

TEST_F(NextStartTest, WhatIsNotSavedIsInItalicsAgain) {
    AddFunction("Added");
    Type("/* typed */");
    desktop.tree.Click("Two");
    desktop.window.BeIdle();
    StartAgain();
    for (const std::string_view key : {"_0v", "_0f", "_0e", "One", "Two", "Added", "_0e1", "_0e8"}) {
        EXPECT_EQ(next->tree.IsItalic(next->tree.Find(key)), key == "One" || key == "Added") << key;
    }
    next->menus["mnuSavePSF"].Choose();
    EXPECT_FALSE(next->tree.IsItalic(next->tree.Find("One")));
}

TEST_F(NextStartTest, OfAnUntitledDocumentWhatIsNotAsAtFirstIsInItalicsAgain) {
    Choose("mnuNewPSF");
    Edit("_0v", "x");
    desktop.window.BeIdle();
    StartAgain();
    EXPECT_TRUE(next->tree.IsItalic(next->tree.Find("_0v")));
    EXPECT_FALSE(next->tree.IsItalic(next->tree.Find("_0e1")));
}

TEST_F(NextStartTest, OfAFileThatIsGoneAllIsInItalicsAgain) {
    Type("/* typed */");
    desktop.files.contents.erase("a.PSF");
    StartAgain();
    for (const std::string_view key : {"One", "Two", "_0e1"}) {
        EXPECT_TRUE(next->tree.IsItalic(next->tree.Find(key))) << key;
    }
}

TEST_F(NextStartTest, ReferencesAreSelectedAgain) {
    ExpectSelectedAgain("_0v");
}

TEST_F(NextStartTest, AnEventIsSelectedAgain) {
    ExpectSelectedAgain("_0e5");
}

TEST_F(NextStartTest, TheItemThatIsSelectedLastIsSelectedAgain) {
    Type("/* typed */");
    desktop.tree.Click("Two");
    desktop.window.BeIdle();
    StartAgain();
    EXPECT_EQ(next->tree.Key(again->mCurrentNode), "Two");
}

TEST_F(NextStartTest, AFileThatChangedMeanwhileIsNotOverwrittenUnasked) {
    Type("/* typed */");
    desktop.files.contents["a.PSF"] += "\r\n";
    StartAgain();
    EXPECT_EQ(next->pane.Text(), Typed);
    EXPECT_EQ(again->mLastOpenedFile, "");
    EXPECT_EQ(next->status.PanelText(1), "File=");
    EXPECT_TRUE(again->FuncBodyChangedFlag);
}

TEST_F(NextStartTest, TheTextThatCameBackIsCopiedOnAndGivenUpLikeAnyOther) {
    Type("/* typed */");
    StartAgain();
    next->window.BeIdle();
    again.reset();
    desktop.files.contents = next->files.contents;
    StartAgain();
    ASSERT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_EQ(next->pane.Text(), Typed);
    answer = MsgResult::No;
    next->window.CloseByUser();
    desktop.files.contents = next->files.contents;
    EXPECT_TRUE(Copies().empty());
    EXPECT_EQ(InKept(), Typed);
    StartAgain();
    EXPECT_TRUE(next->msgBox.records.empty());
}

TEST_F(NextStartTest, NoKeepsTheCopyAndIsNotAskedAgain) {
    Type("/* typed */");
    answer = MsgResult::No;
    StartAgain();
    EXPECT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_FALSE(again->FuncBodyChangedFlag);
    EXPECT_TRUE(Copies().empty());
    ASSERT_EQ(Kept().size(), 1U);
    EXPECT_TRUE(Kept().at(0).ends_with("not recovered.PSF"));
    StartAgain();
    EXPECT_TRUE(next->msgBox.records.empty());
}

TEST_F(NextStartTest, ACommandLineIsOpenedFirst) {
    Type("/* typed */");
    desktop.files.contents["other.PSF"] = Psf(" 1", "Other", PsfFunction("Other", "void Other(){}"));
    answer = MsgResult::No;
    StartAgain("other.PSF");
    EXPECT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_EQ(next->status.PanelText(1), "File=other.PSF");
    EXPECT_EQ(next->status.PanelText(2), "File was opened successfully!");
}

TEST_F(NextStartTest, ASavedDocumentIsNotAskedFor) {
    Type("/* typed */");
    const auto copies = desktop.files.contents;
    Choose("mnuSavePSF");
    desktop.files.contents.insert(copies.begin(), copies.end()); // as if it ended before they were removed
    StartAgain();
    EXPECT_TRUE(next->msgBox.records.empty());
    EXPECT_EQ(next->files.contents.size(), 1U);
}

TEST_F(NextStartTest, TheEndOfTheSessionGivesNothingUp) {
    Type("/* typed */");
    desktop.msgBox.AskNoMore();
    desktop.window.DestroyFromOutside();
    EXPECT_TRUE(Kept().empty());
    StartAgain();
    EXPECT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_EQ(next->pane.Text(), Typed);
}

TEST_F(NextStartTest, ACopyBesideTheFileIsAskedForWhenThatIsOpened) {
    Edit("One", "/* typed */");
    desktop.own.refused = {RecoveryFolder};
    desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuSavePSF");
    desktop.files.contents["a.PSF"] = GoodPsf();
    StartAgain();
    EXPECT_TRUE(next->msgBox.records.empty());
    next->fileDialog.WillChoose("a.PSF");
    next->menus["mnuOpenPSF"].Choose();
    EXPECT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_EQ(next->pane.Text(), Typed);
    again.reset();
    StartAgain("a.PSF");
    EXPECT_EQ(next->msgBox.records.size(), 1U);
    EXPECT_EQ(next->pane.Text(), Typed);
}

TEST_F(NextStartTest, ADamagedCopyIsPassedOverForAnOlderOne) {
    Type("/* typed */");
    Edit("One", "more");
    desktop.window.BeIdle();
    const std::string newest = Copies().at(0).path;
    desktop.files.contents[newest].pop_back();
    StartAgain();
    EXPECT_EQ(next->pane.Text(), Typed);
}

// The newest copy or its origin is cut at every byte, and every byte is changed. The older copy is whole.
TEST_F(NextStartTest, NoDamageShowsAWrongTextOrEndsTheProgram) {
    Type("/* typed */");
    const std::string older = InCopy();
    Type("/* more */");
    const Copy newest = Copies().at(0);
    const auto whole = desktop.files.contents;
    for (const std::string& path : {newest.path, newest.originPath}) {
        const std::string& bytes = whole.at(path);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ (1 << at % 8));
            for (const std::string& damaged : {bytes.substr(0, at), changed}) {
                desktop.files.contents = whole;
                desktop.files.contents[path] = damaged;
                StartAgain();
                ASSERT_EQ(next->pane.Text(), older) << path << " " << at;
                ASSERT_EQ(next->msgBox.records.size(), 1U);
            }
        }
    }
}

} // namespace
} // namespace tessaly
