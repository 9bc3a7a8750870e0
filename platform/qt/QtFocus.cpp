// The focus has moved before the events tell so.
#include "platform/qt/QtFocus.h"

#include <QWidget>
#include <algorithm>
#include <utility>

namespace tessaly {

void QtFocus::Forget() {
    mTargets.clear();
    mOwner = nullptr;
}

void QtFocus::Update() {
    const QWidget* const widget = mWindow.focusWidget();
    const auto target =
        std::find_if(mTargets.begin(), mTargets.end(), [widget](const auto* each) { return each->Holds(widget); });
    if (widget == nullptr || target == mTargets.end() || *target == mOwner) {
        return;
    }
    QtFocusTarget* const before = std::exchange(mOwner, *target);
    if (before != nullptr) {
        before->LoseFocus();
    }
    // The event may have moved the focus on.
    if (mOwner == *target) {
        (*target)->GainFocus();
    }
}

void QtFocus::Begin() {
    const auto first =
        std::find_if(mTargets.begin(), mTargets.end(), [](const auto* each) { return each->CanHaveFocus(); });
    if (mOwner == nullptr && first != mTargets.end()) {
        (*first)->TakeFocus();
        Update();
    }
}

} // namespace tessaly
