// A tool bar in memory. A number below 1 becomes one far behind the end.
#include "tests/desktop/ToolBar.h"

#include "tests/desktop/TestFailure.h"

#include <stdexcept>

namespace tessaly {

std::string MemoryImageList::Tag(std::int32_t number) const {
    mFaults.Count();
    return tags.at(static_cast<std::size_t>(number) - 1);
}

void MemoryToolBar::Clear() {
    CountCall();
    mButtons.clear();
}

void MemoryToolBar::AddButton(std::int32_t image, std::string_view tag) {
    CountCall();
    if (image < 1 || static_cast<std::size_t>(image) > mImages.tags.size()) {
        throw std::out_of_range("there is no such image");
    }
    mButtons.push_back({image, std::string(tag), std::string(tag)});
}

float MemoryToolBar::PreferredHeight() const {
    CountCall();
    return 420;
}

void MemoryToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    CountCall();
    mButtons.at(static_cast<std::size_t>(number) - 1).tip = tip;
}

std::int32_t MemoryToolBar::ButtonCount() const {
    CountCall();
    return static_cast<std::int32_t>(mButtons.size());
}

std::string MemoryToolBar::ButtonTag(std::int32_t number) const {
    CountCall();
    return mButtons.at(static_cast<std::size_t>(number) - 1).tag;
}

void MemoryToolBar::Press(std::int32_t number) {
    CheckReachable("a press of a tool-bar button");
    if (number < 1 || static_cast<std::size_t>(number) > mButtons.size()) {
        throw ImpossibleAction("a press of tool-bar button " + std::to_string(number) + ", which is not there");
    }
    if (takesFocus) {
        TakeFocus();
    }
    const FocusEvents::Command command(Focus(), FocusEvents::Keyboard::IsTaken);
    if (onButtonClick) {
        onButtonClick(number);
    }
}

std::string MemoryToolBar::ButtonTip(std::int32_t number) const {
    return mButtons.at(static_cast<std::size_t>(number) - 1).tip;
}

std::int32_t MemoryToolBar::ButtonImage(std::int32_t number) const {
    return mButtons.at(static_cast<std::size_t>(number) - 1).image;
}

} // namespace tessaly
