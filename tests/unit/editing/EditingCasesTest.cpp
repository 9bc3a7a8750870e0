// The golden cases of tests/cases/editing: a text, keys, and the text behind them.
#include "editing/Brackets.h"
#include "editing/Indenting.h"
#include "editing/LineCommands.h"
#include "tests/unit/Checkout.h"
#include "tests/unit/editing/Cases.h"
#include "tests/unit/editing/TextModel.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace tessaly {
namespace {

constexpr std::size_t TabWidth = 4;

using Rule = std::function<std::optional<Edit>(const TextLines& lines, const Selection& selection)>;

const std::map<std::string, Rule>& Rules() {
    static const std::map<std::string, Rule> rules = {
        {"Enter", PressEnter},
        {"}", PressCloseBrace},
        {"Backspace", [](const auto& lines, const auto& chosen) { return PressBackspace(lines, chosen, TabWidth); }},
        {"Tab", [](const auto& lines, const auto& chosen) { return ShiftLines(lines, chosen, Shift::In, TabWidth); }},
        {"Shift+Tab",
         [](const auto& lines, const auto& chosen) { return ShiftLines(lines, chosen, Shift::Out, TabWidth); }},
        {"Ctrl+/", ToggleComment},
        {"Alt+Up", [](const auto& lines, const auto& chosen) { return MoveLines(lines, chosen, Direction::Up); }},
        {"Alt+Down", [](const auto& lines, const auto& chosen) { return MoveLines(lines, chosen, Direction::Down); }},
        {"Ctrl+Shift+D", DuplicateLines},
        {"Ctrl+Shift+K", DeleteLines},
    };
    return rules;
}

// A key without a rule, or whose rule leaves it alone, does what it does in every editor.
void Press(TextModel& text, const std::string& key) {
    const auto rule = Rules().find(key);
    const std::optional<Edit> edit = rule != Rules().end() ? rule->second(text, text.Selected()) : std::nullopt;
    if (edit) {
        text.Do(*edit);
    } else if (key == "Backspace") {
        text.TakeBack();
    } else if (key == "Tab") {
        text.Type(u"\t");
    } else if (rule == Rules().end() || key == "}") {
        text.Type(ToUtf16(key));
    }
}

TEST(EditingCasesTest, EachDoesWhatIsWritten) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(InCheckout("tests/cases/editing"))) {
        for (const Case& each : ReadCases(entry.path())) {
            TextModel text(each.before);
            std::istringstream keys(each.keys);
            for (std::string key; keys >> key;) {
                Press(text, key);
            }
            EXPECT_EQ(text.Written(), each.after) << entry.path().filename() << ": " << each.name;
            ++count;
        }
    }
    EXPECT_GT(count, 50U);
}

} // namespace
} // namespace tessaly
