// A menu that opens at a control, such as the one with Cut and Paste, is a part of that control.
#include "platform/desktop/qt/Focus.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <algorithm>

namespace tessaly::qt {

namespace {

bool IsAtWorkElsewhere(const QWidget* widget) {
    const QWidget* const popup = QApplication::activePopupWidget();
    const QObject* owner = popup;
    while (owner != nullptr && owner != widget) {
        owner = owner->parent();
    }
    return QApplication::activeModalWidget() != nullptr || (popup != nullptr && owner == nullptr);
}

} // namespace

Focus::Focus(const QWidget& window) : mWindow(window) {
    connect(qApp, &QApplication::focusChanged, this, [this] { Update(); });
}

void Focus::Update() {
    MoveTo(QApplication::focusWidget());
}

void Focus::UpdateInUse() {
    MoveTo(mWindow.focusWidget());
}

void Focus::Begin() {
    for (FocusTarget* const target : mTargets) {
        target->SetFilter(*this);
    }
    const auto first =
        std::find_if(mTargets.begin(), mTargets.end(), [](const auto* each) { return each->CanHaveFocus(); });
    if (TargetOf(mWindow.focusWidget()) == nullptr && first != mTargets.end()) {
        (*first)->TakeFocus();
    }
}

void Focus::End() {
    mTargets.clear();
    events.End();
}

// The first menu that opens and the last one that closes send such events, although the focus does not move.
bool Focus::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        Update();
    }
    return QObject::eventFilter(object, event);
}

FocusTarget* Focus::TargetOf(const QWidget* widget) const {
    const auto found =
        std::find_if(mTargets.begin(), mTargets.end(), [widget](const auto* each) { return each->Holds(widget); });
    return found != mTargets.end() ? *found : nullptr;
}

void Focus::MoveTo(const QWidget* widget) {
    FocusTarget* const target = IsAtWorkElsewhere(widget) ? nullptr : TargetOf(widget);
    if (target != nullptr) {
        events.MovedTo(*target);
    } else {
        events.Taken();
    }
}

} // namespace tessaly::qt
