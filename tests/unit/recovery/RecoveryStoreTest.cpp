// What a window leaves behind and what a later one finds.
#include "tests/unit/recovery/StoreFixture.h"

#include <algorithm>

namespace tessaly {
namespace {

TEST_F(StoreTest, ACopyHasThePanesTextAndTheDocumentDoesNot) {
    ASSERT_FALSE(store.Write(Holding("typed"), Flushing::Later));
    EXPECT_EQ(NewestText(), "typed");
    EXPECT_EQ(Code(0), "void Blink()\r\n{\r\n}");
}

TEST_F(StoreTest, ACopyIsLoadedAsTheDocumentWas) {
    document.UpdateVarCode("int x;\r\n\r\n");
    document.UpdateEventCodeByIndex(2, "");
    store.Write(Holding("", ""), Flushing::Later);
    VornSrcObj loaded(files, codePage);
    ASSERT_EQ(LoadCopy(files, store.Copies().at(0), loaded), Status::Done);
    EXPECT_EQ(loaded.VarCode(), "int x;\r\n\r\n");
    EXPECT_EQ(loaded.EventCodeAt(0), document.EventCodeAt(0));
    EXPECT_EQ(loaded.EventCodeAt(2), "");
    EXPECT_EQ(loaded.Functions().PrototypeAt(0), "void Blink()");
    EXPECT_EQ(loaded.Functions().CodeAt(0), document.Functions().CodeAt(0));
}

TEST_F(StoreTest, ACopyKnowsItsOrigin) {
    store.Write(Holding("typed"), Flushing::Later);
    const Origin origin = store.Copies().at(0).origin;
    EXPECT_EQ(origin.reason, Reason::NotSaved);
    EXPECT_EQ(origin.path, File);
    EXPECT_EQ(origin.file, MarkOf(files.contents[File]));
    EXPECT_EQ(origin.time, clock);
    EXPECT_EQ(origin.codePage, "1252");
    EXPECT_EQ(origin.item, "functions/Blink");
    EXPECT_EQ(origin.caret, 3U);
    EXPECT_EQ(origin.process, (ProcessMark{1, "now"}));
}

TEST_F(StoreTest, ACopyIsReadInTheCodePageThatItWasWrittenIn) {
    const std::unique_ptr<CodePage> cyrillic = MakeCodePage("1251");
    VornSrcObj written(files, *cyrillic);
    RecoveryHost host = Host();
    host.codePage = "1251";
    RecoveryStore(host).Write({written, "references", "/* \u041F\u0443\u0441\u043A */"}, Flushing::Now);
    VornSrcObj loaded(files, codePage);
    ASSERT_EQ(LoadCopy(files, store.Copies().at(0), loaded), Status::Done);
    EXPECT_EQ(loaded.VarCode(), "/* \u041F\u0443\u0441\u043A */");
}

TEST_F(StoreTest, TwoCopiesAreWrittenInTurnsAndTheNewestIsGivenOut) {
    for (const char* const text : {"one", "two", "three"}) {
        store.Write(Holding(text), Flushing::Later);
        EXPECT_EQ(NewestText(), text);
    }
    EXPECT_EQ(files.contents.size(), 5U) << "two copies with their origins, and the document's file";
    EXPECT_EQ(store.Copies().size(), 1U);
}

TEST_F(StoreTest, AClockThatIsSetBackDoesNotBringAnOlderCopyBack) {
    store.Write(Holding("one"), Flushing::Later);
    clock -= 1'000'000;
    store.Write(Holding("two"), Flushing::Later);
    EXPECT_EQ(NewestText(), "two");
}

TEST_F(StoreTest, DroppedCopiesAreGone) {
    store.Write(Holding("one"), Flushing::Later);
    store.Write(Holding("two"), Flushing::Later);
    EXPECT_FALSE(store.Drop());
    EXPECT_EQ(files.contents.size(), 1U);
}

TEST_F(StoreTest, TheSecondFolderTakesWhatTheFirstOneCannot) {
    own.refused.insert(First);
    EXPECT_FALSE(store.Write(Holding("typed"), Flushing::Later));
    EXPECT_EQ(NewestText(), "typed");
    EXPECT_TRUE(store.Copies().at(0).path.starts_with(Second));
    EXPECT_FALSE(store.Drop());
    EXPECT_EQ(files.contents.size(), 1U);
}

TEST_F(StoreTest, WithoutAFolderTheFailureIsTold) {
    own.refused = {First, Second};
    EXPECT_EQ(store.Write(Holding("typed"), Flushing::Later), std::errc::operation_not_permitted);
}

TEST_F(StoreTest, WhatACutOffWriteLeftIsSwept) {
    files.contents[std::string(First) + "/.psf-ab12"] = "half";
    store.Write(Holding("typed"), Flushing::Later);
    EXPECT_FALSE(files.contents.contains(std::string(First) + "/.psf-ab12"));
}

TEST_F(StoreTest, AnExpensiveCopyWantsARest) {
    EXPECT_TRUE(store.IsCheap());
    RecoveryHost host = Host();
    host.stopwatch = [this] { return watch += 30'000; };
    RecoveryStore slow(host);
    slow.Write(Holding("typed"), Flushing::Later);
    EXPECT_FALSE(slow.IsCheap());
    watch += 1'500'000;
    EXPECT_TRUE(slow.IsCheap());
}

TEST_F(StoreTest, ALargeDocumentIsCopiedTwiceASecondUnlessThatTakesTooLong) {
    std::int64_t cost = 30'000;
    RecoveryHost host = Host();
    host.stopwatch = [&] { return watch += cost; };
    RecoveryStore large(host);
    large.Write(Holding(std::string(300'000, 'x')), Flushing::Later);
    watch += 300'000;
    EXPECT_FALSE(large.IsCheap());
    watch += 100'000;
    EXPECT_TRUE(large.IsCheap());
    cost = 100'000; // as on a busy machine
    large.Write(Holding(std::string(300'000, 'x')), Flushing::Later);
    watch += 300'000;
    EXPECT_TRUE(large.IsCheap());
    cost = 600'000;
    large.Write(Holding(std::string(300'000, 'x')), Flushing::Later);
    cost = 0;
    watch += 500'000;
    EXPECT_FALSE(large.IsCheap());
    watch += 100'000;
    EXPECT_TRUE(large.IsCheap());
}

TEST_F(StoreTest, OnABusyMachineASmallDocumentIsCopiedOn) {
    RecoveryHost host = Host();
    host.stopwatch = [this] { return watch += 3000; };
    RecoveryStore busy(host);
    busy.Write(Holding("typed"), Flushing::Later);
    EXPECT_TRUE(busy.IsCheap());
    busy.Write(Holding(std::string(300'000, 'x')), Flushing::Later);
    EXPECT_FALSE(busy.IsCheap());
}

TEST_F(StoreTest, TheTimeOfTheDiskDoesNotCount) {
    RecoveryHost host = Host();
    host.stopwatch = [this] { return watch += 30'000; };
    RecoveryStore flushed(host);
    flushed.Write(Holding("typed"), Flushing::Now);
    EXPECT_TRUE(flushed.IsCheap());
}

TEST_F(StoreTest, WhatIsOnTheDiskStaysThereUntilTheNextOne) {
    for (const char* text : {"first", "second", "third"}) {
        store.Write(Holding(text), Flushing::Now);
        const auto onDisk = files.contents;
        for (int i = 0; i < 7; ++i) {
            store.Write(Holding("typed " + std::to_string(i)), Flushing::Later);
            auto contents = std::exchange(files.contents, onDisk);
            for (auto& [path, bytes] : files.contents) {
                bytes = bytes == contents[path] ? bytes : ""; // half written when the power went
            }
            EXPECT_EQ(NewestText(), text) << i;
            files.contents = std::move(contents);
            EXPECT_EQ(NewestText(), "typed " + std::to_string(i));
        }
    }
    store.Drop();
    EXPECT_TRUE(store.Copies().empty());
}

// A copy and its origin, cut at every byte and with every byte changed: the older one is used.

class DamageTest : public StoreTest {
protected:
    DamageTest() {
        store.Write(Holding("one"), Flushing::Later);
        store.Write(Holding("two"), Flushing::Later);
        newest = store.Copies().at(0);
    }

    void ExpectTheOlderOne(const std::string& path, const std::string& bytes) {
        const std::string whole = std::exchange(files.contents[path], bytes);
        ASSERT_EQ(NewestText(), "one") << path;
        files.contents[path] = whole;
    }

    void DamageEverywhere(const std::string& path) {
        const std::string whole = files.contents[path];
        for (std::size_t at = 0; at < whole.size(); ++at) {
            ExpectTheOlderOne(path, whole.substr(0, at));
            for (const int change : {1, 32, 255}) {
                std::string damaged = whole;
                damaged[at] = static_cast<char>(damaged[at] ^ change);
                ExpectTheOlderOne(path, damaged);
            }
        }
        EXPECT_EQ(NewestText(), "two");
    }

    Copy newest;
};

TEST_F(DamageTest, OfACopyIsSeenAtEveryByte) {
    DamageEverywhere(newest.path);
}

TEST_F(DamageTest, OfAnOriginIsSeenAtEveryByte) {
    DamageEverywhere(newest.originPath);
}

TEST_F(DamageTest, OfBothLeavesNothing) {
    for (auto& [path, bytes] : files.contents) {
        if (path.starts_with(First)) {
            bytes.pop_back();
        }
    }
    EXPECT_TRUE(store.Copies().empty());
}

TEST_F(DamageTest, ThatComesBehindTheLookIsNotLoaded) {
    files.contents[newest.path] += " ";
    EXPECT_EQ(LoadCopy(files, newest, document), Status::LoadFailed);
    EXPECT_EQ(Code(0), "void Blink()\r\n{\r\n}");
}

TEST_F(DamageTest, OfAMixOfTwoCopiesIsSeen) {
    std::string older = newest.path;
    older[older.size() - 5] = '1';
    ASSERT_NE(older, newest.path);
    files.contents[newest.path] = files.contents.at(older);
    EXPECT_EQ(NewestText(), "one");
}

// Every call fails once, twice and for ever: there is the old copy or the new one, and the failure is told.

TEST_F(StoreTest, AFailingCallLeavesTheOldCopyOrTheNewOne) {
    std::size_t runs = 0;
    std::size_t told = 0;
    for (int kind = 0; kind < 7; ++kind) { // once, for ever, twice at five distances
        bool isReached = true;
        for (std::size_t at = 1; isReached; ++at, ++runs) {
            faults.Off();
            store.Drop();
            ASSERT_FALSE(store.Write(Holding("old"), Flushing::Now));
            kind == 0   ? faults.FailAt(at)
            : kind == 1 ? faults.FailFrom(at)
                        : faults.FailTwice(at, static_cast<std::size_t>(kind - 1));
            const std::size_t before = faults.Calls();
            const std::error_code error = store.Write(Holding("new"), Flushing::Now);
            isReached = faults.Calls() - before >= at;
            faults.Off();
            EXPECT_EQ(NewestText(), error ? "old" : "new") << kind << " " << at;
            told += error ? 1 : 0;
            EXPECT_FALSE(store.Write(Holding("newer"), Flushing::Now)) << "the next event tries again";
            EXPECT_EQ(NewestText(), "newer");
        }
    }
    EXPECT_GE(runs, 21U);
    EXPECT_GE(told, 2U) << "what fails once is tried again";
}

TEST_F(StoreTest, AFailingCallOfADropLeavesTheNewestCopyOrNone) {
    for (std::size_t at = 1; at <= 8; ++at) {
        for (const bool forEver : {false, true}) {
            store.Write(Holding("old"), Flushing::Later);
            store.Write(Holding("new"), Flushing::Later);
            forEver ? faults.FailFrom(at) : faults.FailAt(at);
            EXPECT_TRUE(store.Drop());
            faults.Off();
            EXPECT_NE(NewestText(), "old") << at << forEver;
            EXPECT_FALSE(store.Drop());
            EXPECT_EQ(files.contents.size(), 1U);
        }
    }
}

// Saving.

TEST_F(StoreTest, ASaveThatReachedTheDiskDropsTheCopy) {
    document.UpdateFunction("Blink", "", "typed");
    ASSERT_FALSE(store.WriteBeforeSave(Holding("typed"), File));
    EXPECT_FALSE(store.DropAfterSave(File)) << "nothing was saved yet";
    EXPECT_EQ(NewestText(), "typed");
    document.SaveFile(File);
    EXPECT_TRUE(store.DropAfterSave(File));
    EXPECT_TRUE(store.Copies().empty());
}

TEST_F(StoreTest, ASaveThatLostTheLastByteKeepsTheCopy) {
    store.WriteBeforeSave(Holding("typed"), File);
    document.UpdateFunction("Blink", "", "typed");
    document.SaveFile(File);
    files.contents[File].pop_back();
    EXPECT_FALSE(store.DropAfterSave(File));
    EXPECT_EQ(NewestText(), "typed");
}

TEST_F(StoreTest, AFileThatCannotBeFlushedKeepsTheCopy) {
    document.UpdateFunction("Blink", "", "typed");
    store.WriteBeforeSave(Holding("typed"), File);
    document.SaveFile(File);
    faults.FailAt(1);
    EXPECT_FALSE(store.DropAfterSave(File));
    EXPECT_EQ(NewestText(), "typed");
}

TEST_F(StoreTest, WithoutAFolderTheCopyLiesBesideTheFileUntilTheSaveIsDone) {
    own.refused = {First, Second};
    document.UpdateFunction("Blink", "", "typed");
    ASSERT_FALSE(store.WriteBeforeSave(Holding("typed"), File));
    EXPECT_TRUE(files.contents.contains("/home/.Blink.PSF.recovery.PSF"));
    files.contents[File] = "cut";
    own.processes.clear();
    const std::optional<Copy> beside = store.FindBeside(File, document);
    ASSERT_TRUE(beside);
    EXPECT_EQ(BlinkIn(*beside), "typed");
    document.SaveFile(File);
    EXPECT_FALSE(store.FindBeside(File, document));
    EXPECT_TRUE(store.DropAfterSave(File));
    EXPECT_EQ(files.contents.size(), 1U);
}

TEST_F(StoreTest, WithNoPlaceAtAllTheSaveIsToldSo) {
    own.refused = {First, Second};
    own.readOnly = {"/home"};
    EXPECT_EQ(store.WriteBeforeSave(Holding("typed"), File), std::errc::permission_denied);
}

// Coming back.

TEST_F(StoreTest, TheCopyOfAProgramThatEndedIsLeft) {
    Ended().Write(Holding("typed"), Flushing::Later);
    const std::optional<Copy> left = store.FindLeft(document);
    ASSERT_TRUE(left);
    EXPECT_EQ(BlinkIn(*left), "typed");
    EXPECT_TRUE(store.FindLeft(document)) << "it stays until it is dropped or given up";
}

TEST_F(StoreTest, TheCopyOfARunningProgramIsNotTouched) {
    own.processes[Gone] = "then";
    Ended().Write(Holding("typed"), Flushing::Later);
    EXPECT_FALSE(store.FindLeft(document));
    EXPECT_EQ(NewestText(), "typed");
}

TEST_F(StoreTest, AnotherProgramOfTheSameNumberDoesNotKeepItFromBeingFound) {
    own.processes[Gone] = "later";
    Ended().Write(Holding("typed"), Flushing::Later);
    EXPECT_TRUE(store.FindLeft(document));
    EXPECT_FALSE(RecoveryStore(Host({Gone, "later"})).Write(Holding("other"), Flushing::Later));
    EXPECT_EQ(store.Copies().size(), 2U);
}

TEST_F(StoreTest, ACopyWhoseTextIsOnDiskIsRemoved) {
    RecoveryStore ended = Ended();
    ended.Write(Holding("older"), Flushing::Later);
    ended.Write(Holding("typed"), Flushing::Later);
    document.UpdateFunction("Blink", "", "typed");
    document.SaveFile(File);
    EXPECT_FALSE(store.FindLeft(document));
    EXPECT_EQ(files.contents.size(), 1U) << "nor does the older one come back";
}

TEST_F(StoreTest, ASingleLineBreakAtTheEndOfATextIsWorthACopy) {
    document.LoadFile(File);
    Ended().Write(Holding(Code(0)), Flushing::Later);
    EXPECT_FALSE(store.FindLeft(document)) << "nothing was typed";
    Ended().Write(Holding(Code(0) + "\r\n"), Flushing::Later);
    EXPECT_TRUE(store.FindLeft(document));
}

TEST_F(StoreTest, AnUntouchedDocumentWithoutANameIsNotLeft) {
    document.Init();
    WindowContent content = Holding("", "");
    content.path.clear();
    Ended().Write(content, Flushing::Later);
    EXPECT_FALSE(store.FindLeft(document));
    document.UpdateVarCode("int x;");
    Ended().Write(content, Flushing::Later);
    EXPECT_TRUE(store.FindLeft(document));
}

TEST_F(StoreTest, OfSeveralTheNewestIsLeftAndTheOthersAreKept) {
    Ended(7).Write(Holding("one"), Flushing::Later);
    Ended(8).Write(Holding("two"), Flushing::Later);
    Ended(9).Write(Holding("three"), Flushing::Later);
    const std::optional<Copy> left = store.FindLeft(document);
    ASSERT_TRUE(left);
    EXPECT_EQ(BlinkIn(*left), "three");
    const std::vector<Copy> kept = store.KeptDocuments();
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(BlinkIn(kept[0]), "two");
    EXPECT_EQ(kept[0].origin.reason, Reason::OlderCopy);
    EXPECT_EQ(store.Copies().size(), 1U);
}

TEST_F(StoreTest, ACopyThatEndedTwiceIsLeftAgain) {
    Ended(7).Write(Holding("typed"), Flushing::Later);
    for (const std::uint64_t process : {8U, 9U, 10U}) {
        RecoveryStore next = Ended(process);
        const std::optional<Copy> left = next.FindLeft(document);
        ASSERT_TRUE(left) << process;
        EXPECT_EQ(BlinkIn(*left), "typed");
        next.Adopt(*left);
        next.Write(Holding("typed"), Flushing::Later);
    }
    EXPECT_TRUE(store.KeptDocuments().empty());
}

TEST_F(StoreTest, WhatWasKeptBesideWorkThatWentOnIsStillLeft) {
    for (const Reason reason : {Reason::TextReplaced, Reason::MemberDeleted, Reason::OlderCopy}) {
        RecoveryStore ended = Ended();
        ended.Write(Holding("typed"), Flushing::Later);
        ended.Keep(Holding("typed"), reason);
        EXPECT_TRUE(store.FindLeft(document)) << ReasonName(reason);
    }
}

TEST_F(StoreTest, WhatWasTypedAgainAfterItWasGivenUpIsLeft) {
    RecoveryStore ended = Ended();
    ended.Keep(Holding("typed"), Reason::AnsweredNo);
    ended.Write(Holding("typed"), Flushing::Later);
    EXPECT_TRUE(store.FindLeft(document));
    ended.Keep(Holding("typed"), Reason::AnsweredNo);
    EXPECT_FALSE(store.FindLeft(document));
}

TEST_F(StoreTest, ACopyThatTheUserDidNotWantIsKeptAndNotAskedForAgain) {
    RecoveryStore ended = Ended();
    ended.Write(Holding("older"), Flushing::Later);
    ended.Write(Holding("typed"), Flushing::Later);
    ASSERT_FALSE(store.GiveUp(*store.FindLeft(document), Reason::NotRecovered));
    EXPECT_FALSE(store.FindLeft(document));
    EXPECT_EQ(BlinkIn(store.KeptDocuments().at(0)), "typed");
}

TEST_F(StoreTest, AGivenUpCopyThatCannotBeRemovedIsNotAskedForAgain) {
    Ended().Write(Holding("typed"), Flushing::Later);
    const Copy left = *store.FindLeft(document);
    const auto before = files.contents;
    store.GiveUp(left, Reason::NotRecovered);
    files.contents.insert(before.begin(), before.end());
    EXPECT_EQ(store.Copies().size(), 1U);
    EXPECT_FALSE(store.FindLeft(document));
}

TEST_F(StoreTest, ACopyThatCannotBeKeptStays) {
    Ended().Write(Holding("typed"), Flushing::Later);
    const Copy left = *store.FindLeft(document);
    own.refused = {KeptFolder(First), KeptFolder(Second)};
    EXPECT_TRUE(store.GiveUp(left, Reason::NotRecovered));
    EXPECT_EQ(NewestText(), "typed");
}

TEST_F(StoreTest, AnAdoptedCopyGoesWithTheOwnOnes) {
    Ended().Write(Holding("typed"), Flushing::Later);
    store.Adopt(*store.FindLeft(document));
    store.Write(Holding("typed more"), Flushing::Later);
    EXPECT_EQ(NewestText(), "typed more");
    EXPECT_FALSE(store.Drop());
    EXPECT_EQ(files.contents.size(), 1U);
}

TEST_F(StoreTest, AFailingCallOfAStartLosesNoCopy) {
    for (std::size_t at = 1;; ++at) {
        files.contents.clear();
        document.SaveFile(File);
        Ended(7).Write(Holding("one"), Flushing::Later);
        Ended(8).Write(Holding("two"), Flushing::Later);
        const std::size_t before = faults.Calls();
        faults.FailAt(at);
        store.FindLeft(document);
        const bool isReached = faults.Calls() - before >= at;
        faults.Off();
        std::vector<std::string> texts;
        for (const std::vector<Copy>& copies : {store.Copies(), store.KeptDocuments()}) {
            for (const Copy& copy : copies) {
                texts.push_back(BlinkIn(copy));
            }
        }
        EXPECT_NE(std::count(texts.begin(), texts.end(), "one"), 0) << at;
        EXPECT_NE(std::count(texts.begin(), texts.end(), "two"), 0) << at;
        if (!isReached) {
            EXPECT_GT(at, 20U);
            break;
        }
    }
}

// What is given up.

TEST_F(StoreTest, AKeptDocumentsNameTellsTheDocumentTheDateAndTheReason) {
    ASSERT_FALSE(store.Keep(Holding("typed"), Reason::AnsweredNo));
    const std::string path = store.KeptDocuments().at(0).path;
    EXPECT_TRUE(path.starts_with(KeptFolder(First) + "/Blink 2023-11-1")) << path;
    EXPECT_TRUE(path.ends_with(" answered no.PSF")) << path;
}

TEST_F(StoreTest, WhatIsOnDiskIsNotKept) {
    ASSERT_FALSE(store.Keep(Holding("", ""), Reason::NewFile));
    EXPECT_TRUE(store.KeptDocuments().empty());
}

TEST_F(StoreTest, TwoOfOneSecondAreBothKept) {
    store.Keep(Holding("one"), Reason::NewFile);
    clock -= 1000;
    store.Keep(Holding("two"), Reason::NewFile);
    EXPECT_EQ(store.KeptDocuments().size(), 2U);
}

TEST_F(StoreTest, AHostileNameStaysInTheFolderAndIsAFileName) {
    WindowContent content = Holding("typed");
    content.path = "/x/..\\a:b*\x1b" + std::string(300, 'n') + "\xC3\xA4.PSF";
    ASSERT_FALSE(store.Keep(content, Reason::NewFile));
    const std::string path = store.KeptDocuments().at(0).path;
    const std::string name = path.substr(KeptFolder(First).size() + 1);
    EXPECT_TRUE(name.starts_with("a_b__nnn")) << name;
    EXPECT_LT(name.size(), 200U);
}

TEST_F(StoreTest, TheNewestHundredStay) {
    for (int i = 0; i < 103; ++i) {
        store.Keep(Holding("text " + std::to_string(i)), Reason::NewFile);
    }
    const std::vector<Copy> kept = store.KeptDocuments();
    ASSERT_EQ(kept.size(), MostKept);
    EXPECT_EQ(BlinkIn(kept.front()), "text 102");
    EXPECT_EQ(BlinkIn(kept.back()), "text 3");
}

TEST_F(StoreTest, AtMostTwoHundredMegabytesStay) {
    const std::string large(80'000'000, 'x');
    for (int i = 0; i < 3; ++i) {
        store.Keep(Holding(large + std::to_string(i)), Reason::NewFile);
    }
    EXPECT_EQ(store.KeptDocuments().size(), 2U);
}

TEST_F(StoreTest, AFailingCallOfKeepingKeepsTheDocumentOrTellsIt) {
    for (std::size_t at = 1;; ++at) {
        std::erase_if(files.contents, [](const auto& file) { return file.first != File; });
        const std::size_t before = faults.Calls();
        faults.FailAt(at);
        const std::error_code error = store.Keep(Holding("typed"), Reason::NewFile);
        const bool isReached = faults.Calls() - before >= at;
        faults.Off();
        const std::vector<Copy> kept = store.KeptDocuments();
        ASSERT_EQ(kept.size(), error ? 0U : 1U) << at;
        if (!isReached) {
            break;
        }
    }
}

} // namespace
} // namespace tessaly
