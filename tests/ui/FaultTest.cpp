// Any single call to the desktop may fail in the middle of a command. The command ends; nothing gets out of it, and the
// program goes on.
#include "tests/ui/MainWindow.h"

#include <functional>

namespace tessaly {
namespace {

struct Scenario {
    const char* name;
    std::function<void(MainWindow&)> prepare;
    std::function<void(MainWindow&)> act;
    bool isStart = false;
};

void PrintTo(const Scenario& scenario, std::ostream* stream) {
    *stream << scenario.name;
}

// A window of its own for each failing call.
class Program : public MainWindow {
public:
    Program() {
        desktop.msgBox.decide = [](const MemoryMsgBox::Record& box) {
            return box.buttons == MsgButtons::Ok      ? MsgResult::Ok
                   : box.buttons == MsgButtons::YesNo ? MsgResult::Yes
                                                      : MsgResult::No;
        };
        Install();
    }

private:
    void TestBody() override {}
};

void UseName(MainWindow& program) {
    program.desktop.modal.WillUseName([](MemoryNameWindow& dialog) {
        dialog.Type("Added");
        dialog.PressOk();
        if (dialog.IsShown()) {
            dialog.CloseByFrame();
        }
    });
}

const std::vector<Scenario> Scenarios = {
    {"Start", [](MainWindow&) {}, [](MainWindow& program) { program.window.Show(); }, true},
    {"SelectEvent", [](MainWindow& program) { program.window.Show(); },
     [](MainWindow& program) { program.desktop.tree.Click("_0e2"); }},
    {"SelectFunction",
     [](MainWindow& program) {
         program.window.Show();
         program.Open("a.PSF", GoodPsf());
     },
     [](MainWindow& program) { program.desktop.tree.Click("Two"); }},
    {"Resize", [](MainWindow& program) { program.window.Show(); },
     [](MainWindow& program) { program.desktop.window.Resize(20000, 20000); }},
    {"AddFunction",
     [](MainWindow& program) {
         program.window.Show();
         UseName(program);
     },
     [](MainWindow& program) { program.desktop.window.PressKey(KeyF5); }},
    {"DeleteFunction",
     [](MainWindow& program) {
         program.window.Show();
         program.AddFunction("Foo");
     },
     [](MainWindow& program) { program.desktop.window.PressKey(KeyF4); }},
    {"New", [](MainWindow& program) { program.window.Show(); },
     [](MainWindow& program) { program.Choose("mnuNewPSF"); }},
    {"Open",
     [](MainWindow& program) {
         program.window.Show();
         program.desktop.files.contents["a.PSF"] = GoodPsf();
         program.desktop.fileDialog.WillChoose("a.PSF");
     },
     [](MainWindow& program) { program.Choose("mnuOpenPSF"); }},
    {"SaveAs",
     [](MainWindow& program) {
         program.window.Show();
         program.desktop.fileDialog.WillChoose("a.PSF");
     },
     [](MainWindow& program) { program.Choose("mnuSaveAsPSF"); }},
    {"Build",
     [](MainWindow& program) {
         program.window.Show();
         program.Open("a.PSF", GoodPsf());
     },
     [](MainWindow& program) { program.Choose("mnuBuildExe"); }},
    {"German", [](MainWindow& program) { program.window.Show(); },
     [](MainWindow& program) { program.Choose("mnuGerman"); }},
    {"Close", [](MainWindow& program) { program.window.Show(); },
     [](MainWindow& program) { program.desktop.window.CloseByUser(); }},
};

class FaultTest : public ::testing::TestWithParam<Scenario> {};

// How often the scenario calls the desktop when nothing fails.
std::size_t CountCalls(const Scenario& scenario) {
    Program program;
    scenario.prepare(program);
    const std::size_t before = program.desktop.faults.Calls();
    scenario.act(program);
    return program.desktop.faults.Calls() - before;
}

TEST_P(FaultTest, NoFailingCallGetsOutOfItsCommandOrStopsTheProgram) {
    const std::size_t calls = CountCalls(GetParam());
    ASSERT_GE(calls, 3U);
    // The first call of a start is the desktop's own: showing the window. It has no command around it.
    for (std::size_t number = GetParam().isStart ? 2 : 1; number <= calls; ++number) {
        SCOPED_TRACE("call " + std::to_string(number));
        Program program;
        GetParam().prepare(program);
        program.desktop.faults.FailAt(number);
        EXPECT_NO_THROW(GetParam().act(program));
        program.desktop.faults.Off();
        if (program.desktop.window.IsShown()) {
            EXPECT_NO_THROW(program.Choose("mnuGerman"));
            EXPECT_NO_THROW(program.desktop.window.CloseByUser());
            EXPECT_TRUE(program.desktop.window.IsClosed());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllCommands, FaultTest, ::testing::ValuesIn(Scenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace tessaly
