// Calls of the desktop fail in the middle of every command, or calls of recovery: one, two, or all from one on. Nothing
// gets out of the command; document and files are the old ones or the new ones; the window goes on and closes; what was
// typed is still somewhere.
#include "tests/unit/ui/MainWindow.h"

#include <algorithm>
#include <functional>
#include <set>
#include <span>

namespace tessaly {
namespace {

// A PSF file without the line that a stored prototype gets when it is loaded and loses when its function is stored.
std::string WithoutPrototypes(std::string bytes) {
    const std::string line = "ProtoType=\r\n";
    for (std::size_t at = bytes.find(line); at != std::string::npos; at = bytes.find(line, at + 1)) {
        if (bytes.compare(at + line.size(), 2, "\r\n") == 0) {
            bytes.erase(at + line.size(), 2);
        }
    }
    return bytes;
}

// A window of its own for each failure. It shows a.PSF, and text is typed into the pane that is not stored yet.
class Program : public MainWindow {
public:
    Program() {
        desktop.msgBox.decide = [this](const memory::MsgBox::Record& box) {
            return box.buttons == MsgButtons::Ok      ? MsgResult::Ok
                   : box.buttons == MsgButtons::YesNo ? MsgResult::Yes
                                                      : saveAnswer;
        };
        Install();
        desktop.files.contents["a.PSF"] = GoodPsf();
        desktop.files.contents["b.PSF"] = Psf(" 1", "Other", PsfFunction("Other", "void Other(){}"));
        desktop.files.contents["bad.PSF"] = "[GVars]\r\nint bad;\r\n";
        desktop.files.contents["taken.PSF"] = "taken";
    }

    void Begin(const std::string& from, std::string_view typed) {
        desktop.app.commandLine = "a.PSF";
        window.Show();
        if (from == "_0e" || from == "_0f") {
            desktop.tree.Click(from);
        } else {
            Edit(from, typed);
        }
    }

    void WillName(const std::string& name) {
        desktop.modal.WillUseName([name](memory::NameWindow& dialog) {
            dialog.Type(name);
            dialog.PressOk();
            if (dialog.IsShown()) {
                dialog.CloseByFrame();
            }
        });
    }

    void WillSeeAbout() {
        desktop.modal.WillUseSplash([](memory::SplashWindow& splash) {
            splash.PressKey();
            if (splash.IsShown()) {
                splash.CloseByFrame();
            }
        });
    }

    // Everything that the document holds, as a file.
    std::string Document() {
        return WithoutPrototypes(Written([this](const std::string& path) { window.mSourceDoc->SaveFile(path); }));
    }

    std::string CCode() {
        return Written([this](const std::string& path) { window.mSourceDoc->BuildCCodeFile(path); });
    }

    // Whether `text` is in the pane, in the document or in a file, be it one of recovery's.
    bool IsSomewhere(std::string_view text) {
        return desktop.pane.Shown().find(text) != std::string::npos || Document().find(text) != std::string::npos ||
               std::any_of(desktop.files.contents.begin(), desktop.files.contents.end(),
                           [text](const auto& file) { return file.second.find(text) != std::string::npos; });
    }

    // The failures are over. What is in the pane and has an item is stored.
    void Recover() {
        desktop.faults.Off();
        if (desktop.window.IsShown()) {
            desktop.window.Resize(13000, 9500);
        }
    }

    // The user looks at everything, which changes nothing, and closes the window without saving.
    void LookAroundAndClose() {
        if (!desktop.window.IsShown()) {
            return;
        }
        const std::string document = Document();
        for (const std::string_view group : {"_0v", "_0f", "_0e"}) {
            for (std::int32_t i = 1; i <= desktop.tree.Count(); ++i) {
                if (desktop.tree.Key(desktop.tree.At(i)) == group) {
                    desktop.tree.Expand(desktop.tree.At(i));
                }
            }
        }
        for (std::int32_t i = 1; i <= desktop.tree.Count(); ++i) {
            const std::string key = desktop.tree.Key(desktop.tree.At(i));
            desktop.tree.Click(key);
            EXPECT_EQ(desktop.pane.Text(), TextOf(key)) << key;
        }
        EXPECT_NO_THROW(Choose("mnuGerman"));
        EXPECT_EQ(Document(), document);
        const std::map<std::string, std::string> files = UserFiles();
        saveAnswer = MsgResult::No;
        EXPECT_NO_THROW(desktop.window.CloseByUser());
        EXPECT_TRUE(desktop.window.HasEnded());
        EXPECT_EQ(UserFiles(), files);
    }

    MsgResult saveAnswer = MsgResult::Yes;

private:
    void TestBody() override {}

    std::string Written(const std::function<void(const std::string& path)>& write) {
        write("scratch");
        std::string bytes = desktop.files.contents["scratch"];
        desktop.files.contents.erase("scratch");
        return bytes;
    }

    std::string TextOf(const std::string& key) {
        return key == "_0v"                   ? References()
               : key == "_0e" || key == "_0f" ? ""
               : key.starts_with("_0e")       ? EventText(key.back() - '1')
                                              : FunctionText(key);
    }
};

struct Failure {
    std::string name;
    std::function<void(memory::Faults&, std::size_t number)> set;
};

const std::vector<Failure>& Failures() {
    static const std::vector<Failure> failures = [] {
        std::vector<Failure> all = {
            {"once", [](memory::Faults& faults, std::size_t number) { faults.FailAt(number); }},
            {"for ever", [](memory::Faults& faults, std::size_t number) { faults.FailFrom(number); }},
        };
        for (const std::size_t distance : {1U, 2U, 3U, 5U, 8U}) {
            all.push_back(
                {"twice, " + std::to_string(distance) + " apart",
                 [distance](memory::Faults& faults, std::size_t number) { faults.FailTwice(number, distance); }});
        }
        return all;
    }();
    return failures;
}

// When a command stores the pane, and so from which call on what was typed cannot get lost.
enum class Commits {
    First,      // it begins with that
    BehindABox, // it asks something first
    Never,      // what was typed stays in the pane
    Discards,   // what was typed is overwritten, on purpose
};

struct Command {
    std::string name;
    Commits commits;
    std::function<void(Program&)> act;
    std::size_t writes = 0; // of PSF files
    bool loads = false;
    std::vector<std::string> from = {"_0v", "_0e2", "Two"};
    std::function<void(Program&)> prepare = [](Program&) {};
};

std::function<void(Program&)> Chosen(const std::string& menu, const std::string& file = "") {
    return [menu, file](Program& program) {
        if (!file.empty()) {
            program.desktop.fileDialog.WillChoose(file);
        }
        program.Choose(menu);
    };
}

std::function<void(Program&)> Pressed(int key) {
    return [key](Program& program) { program.desktop.window.PressKey(key); };
}

std::function<void(Program&)> Answering(MsgResult answer) {
    return [answer](Program& program) { program.saveAnswer = answer; };
}

void Untitle(Program& program) {
    program.window.mLastOpenedFile = "";
}

void ForgetChanges(Program& program) {
    program.window.FuncBodyChangedFlag = false;
}

void WillNameAdded(Program& program) {
    program.WillName("Added");
}

std::vector<Command> Commands() {
    std::vector<Command> commands = {
        {"Resize", Commits::First, [](Program& program) { program.desktop.window.Resize(20000, 20000); }},
        {"AddByKey", Commits::Discards, Pressed(KeyF5), 0, false, {"_0v", "Two", "_0f", "_0e"}, WillNameAdded},
        {"AddTaken",
         Commits::Discards,
         Pressed(KeyF5),
         0,
         false,
         {"_0e2", "Two"},
         [](Program& program) { program.WillName("one"); }},
        {"AddByButton",
         Commits::First,
         [](Program& program) { program.desktop.toolBar.Press(1); },
         0,
         false,
         {"Two", "_0f"},
         WillNameAdded},
        {"DeleteByKey", Commits::Never, Pressed(KeyF4), 0, false, {"_0e2", "Two"}},
        {"DeleteByButton",
         Commits::First,
         [](Program& program) { program.desktop.toolBar.Press(2); },
         0,
         false,
         {"Two"}},
        {"New", Commits::First, Chosen("mnuNewPSF"), 0, false, {"Two", "_0f"}, ForgetChanges},
        {"NewSaving", Commits::First, Chosen("mnuNewPSF"), 1},
        {"NewSavingAs", Commits::First, Chosen("mnuNewPSF", "new.PSF"), 1, false, {"Two"}, Untitle},
        {"NewDeclined", Commits::First, Chosen("mnuNewPSF"), 0, false, {"Two"}, Answering(MsgResult::No)},
        {"NewCancelled", Commits::First, Chosen("mnuNewPSF"), 0, false, {"_0v", "Two"}, Answering(MsgResult::Cancel)},
        {"Open", Commits::First, Chosen("mnuOpenPSF", "b.PSF"), 0, true, {"_0e2", "_0f", "_0e"}, ForgetChanges},
        {"OpenSaving", Commits::First, Chosen("mnuOpenPSF", "b.PSF"), 1, true},
        {"OpenCancelled",
         Commits::First,
         Chosen("mnuOpenPSF"),
         0,
         false,
         {"Two"},
         [](Program& program) {
             ForgetChanges(program);
             program.desktop.fileDialog.WillCancel();
         }},
        {"OpenBad", Commits::First, Chosen("mnuOpenPSF", "bad.PSF"), 0, true, {"_0v", "_0e2", "Two"}, ForgetChanges},
        {"Drop", Commits::First, [](Program& program) { program.desktop.window.DropFile("b.PSF"); }, 1, true, {"Two"}},
        {"Save", Commits::First, Chosen("mnuSavePSF"), 1, false, {"_0v", "_0e2", "Two", "_0f"}},
        {"SaveUntitled", Commits::First, Chosen("mnuSavePSF", "new.PSF"), 1, false, {"Two"}, Untitle},
        {"SaveAs", Commits::First, Chosen("mnuSaveAsPSF", "new.PSF"), 1, false, {"_0v", "Two"}},
        {"SaveAsReplacing", Commits::First, Chosen("mnuSaveAsPSF", "taken.PSF"), 1, false, {"Two"}},
        {"ExitSaving", Commits::First, Chosen("mnuExit"), 1, false, {"Two"}},
        {"ExitDeclined", Commits::First, Chosen("mnuExit"), 0, false, {"Two"}, Answering(MsgResult::No)},
        {"CloseSaving", Commits::First, [](Program& program) { program.desktop.window.CloseByUser(); }, 1},
        {"CloseDeclined",
         Commits::First,
         [](Program& program) { program.desktop.window.CloseByUser(); },
         0,
         false,
         {"Two"},
         Answering(MsgResult::No)},
        {"Build", Commits::First, Chosen("mnuBuildExe"), 0, false, {"_0v", "Two"}, ForgetChanges},
        {"BuildByKey", Commits::First, Pressed(KeyF10), 0, false, {"Two"}, ForgetChanges},
        {"BuildSaving", Commits::BehindABox, Chosen("mnuBuildExe"), 1},
        {"BuildSavingAs", Commits::BehindABox, Chosen("mnuBuildExe", "new.PSF"), 1, false, {"Two"}, Untitle},
        {"FocusToTree", Commits::Never, Pressed(KeyF2)},
        {"FocusToPane", Commits::Never, Pressed(KeyF3)},
        {"English", Commits::Never, Chosen("mnuEnglish")},
        {"German", Commits::Never, Chosen("mnuGerman")},
        {"HotKeys", Commits::Never, Chosen("mnuHelpHotKeys"), 0, false, {"Two"}},
        {"Help",
         Commits::Never,
         [](Program& program) {
             program.Choose("mnuOpenHelp");
             program.desktop.window.DeliverSentKeys();
         },
         0,
         false,
         {"Two"}},
        {"About",
         Commits::First,
         Chosen("mnuAbout"),
         0,
         false,
         {"Two"},
         [](Program& program) { program.WillSeeAbout(); }},
    };
    for (const std::string to : {"_0v", "_0e2", "_0e3", "One", "Two", "_0f", "_0e"}) {
        commands.push_back({"Select" + to,
                            Commits::First,
                            [to](Program& program) { program.desktop.tree.Click(to); },
                            0,
                            false,
                            {"_0v", "_0e2", "Two", "_0f", "_0e"}});
    }
    return commands;
}

struct FaultCase {
    Command command;
    std::string from;
};

void PrintTo(const FaultCase& each, std::ostream* stream) {
    *stream << each.command.name << " from " << each.from;
}

std::vector<FaultCase> Cases() {
    std::vector<FaultCase> cases;
    for (const Command& command : Commands()) {
        for (const std::string& from : command.from) {
            cases.push_back({command, from});
        }
    }
    return cases;
}

class FaultTest : public ::testing::TestWithParam<FaultCase> {
protected:
    using Documents = std::set<std::string>;

    void SetUp() override {
        Prepared([this](Program& program) {
            mOld = program.Document();
            mCCodes.insert({"", program.CCode()});
            mFiles = program.UserFiles();
            const std::size_t before = program.desktop.faults.Calls();
            program.window.SaveCurrentNodeCode(program.window.mCurrentNode);
            mCommitCalls = program.desktop.faults.Calls() - before;
            mStored = program.Document();
            mCCodes.insert(program.CCode());
        });
        Prepared([this](Program& program) {
            const std::size_t before = program.desktop.faults.Calls();
            GetParam().command.act(program);
            mCalls = program.desktop.faults.Calls() - before;
            program.Recover();
            mNew = program.Document();
        });
        Prepared(
            [this](Program& program) {
                GetParam().command.act(program);
                program.Recover();
                mNewOfOld = program.Document();
            },
            "");
    }

    // Does something with a program that is ready for the command.
    static void Prepared(const std::function<void(Program&)>& doIt, std::string_view typed = "/* typed */") {
        Program program;
        program.Begin(GetParam().from, typed);
        GetParam().command.prepare(program);
        doIt(program);
    }

    // The call from which on what was typed must not get lost.
    std::size_t SafeFrom() const {
        switch (GetParam().command.commits) {
        case Commits::First:
            return mCommitCalls + 1;
        case Commits::BehindABox:
            return mCommitCalls + 2;
        case Commits::Never:
            return 1;
        case Commits::Discards:
            break;
        }
        return mCalls + 1;
    }

    // The possible documents after the call `number` failed first.
    Documents Allowed(std::size_t number) const {
        Documents allowed = {mStored, mNew};
        if (number < SafeFrom()) {
            allowed.insert({mOld, mNewOfOld});
        }
        return allowed;
    }

    // What the document is when the load itself fails: the old one is given up all the same. Looked up once: it takes
    // two dozen programs.
    const Documents& HalfLoaded() {
        if (!mHalfLoaded.empty()) {
            return mHalfLoaded;
        }
        for (const memory::SequentialFiles::Call call :
             {memory::SequentialFiles::Call::Open, memory::SequentialFiles::Call::Read,
              memory::SequentialFiles::Call::Close}) {
            for (std::size_t number = 1; number <= 8; ++number) { // copies are read first
                Prepared([&](Program& program) {
                    program.desktop.files.FailAt(call, number);
                    GetParam().command.act(program);
                    program.Recover();
                    if (program.window.StatusPanel2.empty() && !program.window.mSourceDoc->LoadedOK()) {
                        mHalfLoaded.insert(program.Document());
                    }
                });
            }
        }
        return mHalfLoaded;
    }

    void CheckDocument(Program& program, const Documents& allowed) {
        const std::string document = program.Document();
        if (GetParam().command.loads && program.window.mSourceDoc->LoadedOK()) {
            EXPECT_EQ(program.window.mLastOpenedFile, document == mNew ? "b.PSF" : "a.PSF") << "where Save goes";
        }
        if (allowed.contains(document)) {
            return;
        }
        EXPECT_TRUE(GetParam().command.loads && !program.window.mSourceDoc->LoadedOK() &&
                    HalfLoaded().contains(document))
            << document;
    }

    // A file that was to be saved is cut where the write itself failed, and only there.
    void CheckFiles(Program& program, const Documents& allowed) {
        for (const auto& [path, bytes] : program.UserFiles()) {
            SCOPED_TRACE(path);
            const auto before = mFiles.find(path);
            if (before != mFiles.end() && before->second == bytes) {
                continue;
            }
            if (path == "C:\\kit\\program.c") {
                EXPECT_TRUE(mCCodes.contains(bytes)) << bytes;
            } else if (GetParam().command.writes > 0 && bytes.empty()) {
                ++mCutFiles;
            } else {
                EXPECT_TRUE(GetParam().command.writes > 0 && allowed.contains(WithoutPrototypes(bytes))) << bytes;
            }
        }
    }

    static void CheckNothingIsLost(Program& program) {
        const bool isGroup = GetParam().from == "_0e" || GetParam().from == "_0f"; // nothing was typed
        EXPECT_TRUE(isGroup || program.IsSomewhere("/* typed */"));
    }

    // What the user sees and has.
    static std::string Seen(Program& program) {
        std::string seen = program.Document() + program.desktop.pane.Shown() + program.CurrentKey();
        for (const int panel : {1, 2}) {
            seen += "\n" + program.Panel(panel);
        }
        for (const memory::MsgBox::Record& box : program.desktop.msgBox.records) {
            seen += "\n" + box.caption + ": " + box.text;
        }
        for (const auto& [path, bytes] : program.UserFiles()) {
            seen += "\n" + path + "\n" + bytes;
        }
        return seen + (program.window.FuncBodyChangedFlag ? " changed" : "") + program.window.mLastOpenedFile;
    }

    std::string mOld;      // the document before the command
    std::string mStored;   // and with what was typed
    std::string mNew;      // what the command makes of it
    std::string mNewOfOld; // and what it would make of it without what was typed
    Documents mHalfLoaded;
    std::set<std::string> mCCodes;
    std::map<std::string, std::string> mFiles;
    std::size_t mCommitCalls = 0;
    std::size_t mCalls = 0;
    std::size_t mCutFiles = 0;
};

TEST_P(FaultTest, DocumentAndFilesAreTheOldOrTheNewAndTheWindowGoesOn) {
    for (const Failure& failure : Failures()) {
        mCutFiles = 0;
        for (std::size_t number = 1; number <= mCalls; ++number) {
            SCOPED_TRACE("call " + std::to_string(number) + " fails " + failure.name);
            Prepared([&](Program& program) {
                failure.set(program.desktop.faults, number);
                EXPECT_NO_THROW(GetParam().command.act(program));
                program.Recover();
                CheckDocument(program, Allowed(number));
                CheckFiles(program, Allowed(number));
                CheckNothingIsLost(program);
                program.LookAroundAndClose();
                CheckNothingIsLost(program);
            });
        }
        EXPECT_GE(mCutFiles, GetParam().command.writes) << failure.name;
        if (failure.name == "once") {
            EXPECT_EQ(mCutFiles, GetParam().command.writes) << "only the write itself cuts a file";
        }
    }
}

// A Save alone is refused where the new content would be nowhere but in the file that it opens.
TEST_P(FaultTest, WhatRecoveryCannotDoChangesNothing) {
    std::string usual;
    std::size_t calls = 0;
    Prepared([&](Program& program) {
        const std::size_t before = program.desktop.ownFaults.Calls();
        GetParam().command.act(program);
        calls = program.desktop.ownFaults.Calls() - before;
        program.Recover();
        usual = Seen(program);
    });
#ifdef TESSALY_SANITIZED // a run takes ten times as long
    constexpr std::size_t kinds = 3;
#else
    constexpr std::size_t kinds = 7;
#endif
    for (const Failure& failure : std::span(Failures()).first(kinds)) {
        for (std::size_t number = 1; number <= calls; ++number) {
            SCOPED_TRACE("call " + std::to_string(number) + " of recovery fails " + failure.name);
            Prepared([&](Program& program) {
                failure.set(program.desktop.ownFaults, number);
                EXPECT_NO_THROW(GetParam().command.act(program));
                program.desktop.ownFaults.Off();
                program.Recover();
                const bool isRefused = GetParam().command.writes > 0 && program.Boxes() > 0 &&
                                       program.LastBox().caption == "File write error!";
                EXPECT_TRUE(isRefused || Seen(program) == usual) << Seen(program);
                EXPECT_TRUE(!isRefused || program.UserFiles() == mFiles);
                if (failure.name != "for ever" || usual.find("/* typed */") != std::string::npos) {
                    CheckNothingIsLost(program); // else there is no place for what is given up
                }
                program.LookAroundAndClose();
            });
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCommand, FaultTest, ::testing::ValuesIn(Cases()), [](const auto& each) {
    std::string name = each.param.command.name + "From" + each.param.from;
    std::erase(name, '_');
    return name;
});

// The start has no document to lose.
TEST(FaultAtStart, TheWindowComesUpAndCloses) {
    for (const Failure& failure : Failures()) {
        for (std::size_t number = 1; number < 400; ++number) {
            SCOPED_TRACE("call " + std::to_string(number) + " fails " + failure.name);
            Program program;
            const std::string file = program.desktop.files.contents["a.PSF"];
            program.desktop.app.commandLine = "a.PSF";
            failure.set(program.desktop.faults, number);
            EXPECT_NO_THROW(program.window.Show());
            const bool isOver = program.desktop.faults.IsPending();
            program.Recover();
            ASSERT_TRUE(program.desktop.window.IsShown());
            EXPECT_NE(program.window.mSourceDoc, nullptr);
            program.LookAroundAndClose();
            EXPECT_EQ(program.desktop.files.contents["a.PSF"], file);
            if (isOver) {
                break;
            }
        }
    }
}

// So that closing asks whether to save it.
TEST(FaultAtAddOrDelete, ADocumentThatWasChangedCountsAsChanged) {
    for (const int key : {KeyF4, KeyF5}) {
        std::size_t changed = 0;
        for (std::size_t number = 1; number < 40; ++number) {
            Program program;
            program.Begin("Two", "");
            program.WillName("Added");
            const std::string old = program.Document();
            program.desktop.faults.FailAt(number);
            program.desktop.window.PressKey(key);
            program.desktop.faults.Off();
            const bool isChanged = program.Document() != old;
            EXPECT_EQ(program.window.FuncBodyChangedFlag, isChanged) << "key " << key << ", call " << number;
            changed += isChanged ? 1U : 0U;
        }
        EXPECT_GT(changed, 10U);
        EXPECT_LT(changed, 39U);
    }
}

// A file of several pieces; the others here are written in one.
TEST(FaultAtSave, AFileIsLeftAsFarAsItWasWritten) {
    Program program;
    program.Begin("One", "");
    program.window.mSourceDoc->UpdateVarCode(std::string(3000000, 'x'));
    program.Choose("mnuSavePSF");
    const std::string whole = program.desktop.files.contents["a.PSF"];
    std::size_t length = 0;
    for (const std::size_t write : {1U, 2U, 3U}) {
        program.desktop.files.FailAt(memory::SequentialFiles::Call::Write, write);
        program.Choose("mnuSavePSF");
        EXPECT_EQ(program.LastBox().caption, "File write error!");
        const std::string& cut = program.desktop.files.contents["a.PSF"];
        EXPECT_TRUE(whole.starts_with(cut));
        EXPECT_EQ(cut.empty(), write == 1);
        EXPECT_TRUE(write == 1 || cut.size() > length);
        length = cut.size();
    }
    EXPECT_LT(length, whole.size());
}

} // namespace
} // namespace tessaly
