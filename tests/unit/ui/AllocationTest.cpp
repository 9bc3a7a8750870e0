// Memory may run out in the middle of a command. It ends; the document is the old one or the new one.
#include "tests/unit/document/CountedAllocations.h"
#include "tests/unit/ui/MainWindow.h"

#include <functional>
#include <set>

namespace tessaly {
namespace {

class Program : public MainWindow {
public:
    Program() {
        desktop.msgBox.decide = [](const memory::MsgBox::Record& box) {
            return box.buttons == MsgButtons::Ok ? MsgResult::Ok : MsgResult::Yes;
        };
        Start();
        Open("a.PSF", GoodPsf());
        desktop.tree.Click("Two");
        desktop.files.contents["b.PSF"] = Psf(" 1", "Other", PsfFunction("Other", "void Other(){}"));
        desktop.fileDialog.WillChoose("b.PSF");
        desktop.modal.WillUseName([](memory::NameWindow& dialog) {
            dialog.Type("AddedWithANameThatIsStoredBesideItsString");
            dialog.PressOk();
            if (dialog.IsShown()) {
                dialog.CloseByFrame();
            }
        });
    }

    // Names and texts of everything in it.
    std::string Document() const {
        std::string document = References();
        for (std::int32_t i = 0; i < EventCount; ++i) {
            document += "|" + EventText(i);
        }
        for (const std::string& name : FunctionNames()) {
            document += "|" + name + "|" + FunctionText(name);
        }
        return document;
    }

private:
    void TestBody() override {}
};

// The event is what the program has to do; finding whose it is may take memory, too.
struct Command {
    std::string name;
    std::function<std::function<void()>(Program&)> event;
};

void PrintTo(const Command& command, std::ostream* stream) {
    *stream << command.name;
}

class AllocationTest : public ::testing::TestWithParam<Command> {};

TEST_P(AllocationTest, ACommandWithoutMemoryEndsAndLeavesTheOldDocumentOrTheNew) {
    std::set<std::string> documents;
    {
        Program program;
        documents.insert(program.Document());
        GetParam().event(program)();
        documents.insert(program.Document());
    }
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        Program program;
        const std::function<void()> event = GetParam().event(program);
        Allocations().leftUntilFailure = number;
        EXPECT_NO_THROW(event());
        isOver = Allocations().leftUntilFailure > 0;
        Allocations().leftUntilFailure = 0;
        EXPECT_TRUE(documents.contains(program.Document()) || !program.window.mSourceDoc->LoadedOK())
            << program.Document();
        for (const memory::MsgBox::Record& box : program.desktop.msgBox.records) {
            EXPECT_NE(box.caption, "Duplicate Function Error!");
        }
        program.desktop.window.CloseByUser();
        EXPECT_TRUE(program.desktop.window.HasEnded());
    }
}

Command Key(const std::string& name, int key) {
    return {name,
            [key](Program& program) { return [&program, key] { Raise(program.desktop.window.onKeyDown, key, 0); }; }};
}

Command Menu(const std::string& name) {
    return {name, [name](Program& program) {
                return [&program, name] { Raise(program.desktop.menus["mnu" + name].onClick); };
            }};
}

INSTANTIATE_TEST_SUITE_P(Commands, AllocationTest,
                         ::testing::Values(Key("AddFunction", KeyF5), Key("DeleteFunction", KeyF4), Menu("NewPSF"),
                                           Menu("OpenPSF"), Menu("SavePSF"), Menu("BuildExe"),
                                           Command{"Select",
                                                   [](Program& program) {
                                                       const TreeItem item = program.desktop.tree.Find("One");
                                                       return [&program, item] {
                                                           Raise(program.desktop.tree.onNodeClick, item);
                                                       };
                                                   }}),
                         [](const auto& command) { return command.param.name; });

class FreshProgram : public MainWindow {
    void TestBody() override {}
};

TEST(AllocationAtStart, AStepOfTheStartThatHasNoMemoryLeavesTheOthers) {
    std::size_t failed = 0;
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        FreshProgram program;
        program.desktop.msgBox.decide = [](const memory::MsgBox::Record&) { return MsgResult::Ok; };
        program.Install();
        Allocations().leftUntilFailure = number;
        EXPECT_NO_THROW(program.window.Show());
        isOver = Allocations().leftUntilFailure > 0;
        Allocations().leftUntilFailure = 0;
        if (program.window.mLastWidth == 0) {
            continue; // it failed before the errors begin to be skipped
        }
        failed += isOver ? 0U : 1U;
        const int missing = (program.window.mCompBat.empty() ? 1 : 0) + (program.window.mCompFileName.empty() ? 1 : 0) +
                            (program.window.mHelpFile.empty() ? 1 : 0);
        EXPECT_LE(missing, 1) << "allocation " << number;
    }
    EXPECT_GT(failed, 20U);
}

TEST(AllocationOfTexts, WithoutMemoryForTheTextsOfALanguageAllStayInTheOther) {
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        WindowTexts window;
        ApplyLanguage(window, EnglishLanguage);
        Allocations().leftUntilFailure = number;
        bool isWhole = true;
        try {
            ApplyLanguage(window, GermanLanguage);
        } catch (const std::bad_alloc&) {
            isWhole = false;
        }
        isOver = Allocations().leftUntilFailure > 0;
        Allocations().leftUntilFailure = 0;
        EXPECT_EQ(isWhole, isOver);
        for (const CatalogueRow& row : CatalogueRows) {
            if (row.member != nullptr) {
                EXPECT_EQ(window.*row.member, isWhole ? row.german : row.english) << row.identifier << ' ' << number;
            }
        }
    }
}

} // namespace
} // namespace tessaly
