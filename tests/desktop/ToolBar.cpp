#include "tests/desktop/ToolBar.h"

#include "tests/desktop/TestFailure.h"

namespace tessaly::memory {

void ToolBar::RemoveButtons() {
    CountCall();
    mButtons.clear();
}

void ToolBar::ShowButton(std::int32_t image, std::string_view tag) {
    CountCall();
    mButtons.push_back({image, std::string(tag)});
}

void ToolBar::ShowTip(std::int32_t number, std::string_view tip) {
    CountCall();
    mButtons[static_cast<std::size_t>(number) - 1].tip = tip;
}

void ToolBar::Press(std::int32_t number) {
    CheckReachable("a press of a tool-bar button");
    if (number < 1 || number > ButtonCount()) {
        throw ImpossibleAction("a press of tool-bar button " + std::to_string(number) + ", which is not there");
    }
    if (takesFocus) {
        MoveHere();
    }
    RaiseClick(number);
}

} // namespace tessaly::memory
