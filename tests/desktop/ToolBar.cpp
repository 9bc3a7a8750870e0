// A tool bar in memory. A number below 1 becomes one far behind the end.
#include "tests/desktop/ToolBar.h"

#include "tests/desktop/TestFailure.h"

#include <stdexcept>

namespace tessaly::memory {

std::string ImageList::Tag(std::int32_t number) const {
    mFaults.Count();
    return tags.at(static_cast<std::size_t>(number) - 1);
}

void ToolBar::Clear() {
    CountCall();
    mButtons.clear();
}

void ToolBar::AddButton(std::int32_t image, std::string_view tag) {
    CountCall();
    if (image < 1 || static_cast<std::size_t>(image) > mImages.tags.size()) {
        throw std::out_of_range("there is no such image");
    }
    mButtons.push_back({image, std::string(tag), std::string(tag)});
}

float ToolBar::PreferredHeight() const {
    CountCall();
    return 420;
}

void ToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    CountCall();
    mButtons.at(static_cast<std::size_t>(number) - 1).tip = tip;
}

std::int32_t ToolBar::ButtonCount() const {
    CountCall();
    return static_cast<std::int32_t>(mButtons.size());
}

std::string ToolBar::ButtonTag(std::int32_t number) const {
    CountCall();
    return mButtons.at(static_cast<std::size_t>(number) - 1).tag;
}

void ToolBar::Press(std::int32_t number) {
    CheckReachable("a press of a tool-bar button");
    if (number < 1 || static_cast<std::size_t>(number) > mButtons.size()) {
        throw ImpossibleAction("a press of tool-bar button " + std::to_string(number) + ", which is not there");
    }
    if (takesFocus) {
        TakeFocus();
    }
    const FocusEvents::Command command(Events(), FocusEvents::Keyboard::IsTaken);
    if (onButtonClick) {
        onButtonClick(number);
    }
}

std::string ToolBar::ButtonTip(std::int32_t number) const {
    return mButtons.at(static_cast<std::size_t>(number) - 1).tip;
}

std::int32_t ToolBar::ButtonImage(std::int32_t number) const {
    return mButtons.at(static_cast<std::size_t>(number) - 1).image;
}

} // namespace tessaly::memory
