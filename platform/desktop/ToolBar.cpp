// A number below 1 becomes one far behind the end.
#include "platform/desktop/ToolBar.h"

#include "platform/desktop/Raise.h"

namespace tessaly {

void ToolBar::Clear() {
    RemoveButtons();
    mTags.clear();
}

void ToolBar::AddButton(std::int32_t image, std::string_view tag) {
    images.Tag(image); // throws
    ShowButton(image, tag);
    mTags.emplace_back(tag);
}

void ToolBar::SetButtonTip(std::int32_t number, std::string_view tip) {
    ButtonTag(number); // throws
    ShowTip(number, tip);
}

void ToolBar::RaiseClick(std::int32_t number) {
    if (number >= 1 && number <= ButtonCount()) {
        const FocusEvents::Command command(mControls.focus, FocusEvents::Keyboard::IsTaken);
        Raise(onButtonClick, number);
    }
}

} // namespace tessaly
