// All targets of the focus are controls: nobody else is reported here.
#include "platform/desktop/Control.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

void Controls::LayOut(const Size& client, float footer) {
    mClient = client;
    mFooterTop = client.height - footer;
    for (Control* const control : mOrder) {
        control->Move();
    }
}

Control* Controls::Owner() const {
    return static_cast<Control*>(focus.Owner());
}

Control* Controls::ToReturnTo() const {
    const auto first =
        std::find_if(mOrder.begin(), mOrder.end(), [](const Control* control) { return control->CanHaveFocus(); });
    return Owner() != nullptr ? Owner() : first != mOrder.end() ? *first : nullptr;
}

Control* Controls::NextStop(bool backwards) const {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), Owner());
    std::vector<Control*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    if (backwards) {
        std::reverse(behind.begin(), behind.end());
    }
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const Control* control) {
        return control != Owner() && control->IsTabStop() && control->CanHaveFocus();
    });
    return next != behind.end() ? *next : nullptr;
}

Control::Control(Controls& controls, Keyboard keyboard) : mControls(controls), mKeyboard(keyboard) {
    mControls.mOrder.push_back(this);
}

Control::~Control() {
    std::erase(mControls.mOrder, this);
}

void Control::SetExtent(const Extent& extent) {
    mExtent = extent;
    Move();
}

void Control::SetRoomAbove(float height) {
    mRoomAbove = height;
    Move();
}

void Control::SetVisible(bool visible) {
    if (visible != mIsVisible) {
        ShowVisible(visible);
        mIsVisible = visible;
    }
}

void Control::SetTabStop(bool stop) {
    if (!HasTabStop()) {
        throw std::logic_error("the control has no tab stop");
    }
    mIsTabStop = stop;
}

void Control::SetFocus() {
    if (!CanHaveFocus()) {
        throw std::runtime_error("the control cannot have the focus");
    }
    TakeKeyboard();
    mControls.focus.MovedByProgram(*this);
}

// The lower edge stops where the footer begins, so that a control never lies over the status bar. What stands in the
// footer is left alone.
void Control::Move() {
    if (!mExtent) {
        Dock(mControls.mClient);
        return;
    }
    Extent place = *mExtent;
    if (const std::optional<float> footerTop = mControls.mFooterTop; footerTop && place.top < *footerTop) {
        place.height = std::min(place.height, *footerTop - place.top);
    }
    const float room = std::clamp(mRoomAbove, 0.0F, std::max(place.height, 0.0F));
    place.top += room;
    place.height -= room;
    Show(place);
}

} // namespace tessaly
