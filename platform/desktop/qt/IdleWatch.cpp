#include "platform/desktop/qt/IdleWatch.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <utility>

namespace tessaly::qt {

IdleWatch::IdleWatch(std::function<void()> onIdle) : mOnIdle(std::move(onIdle)) {
    QCoreApplication::instance()->installEventFilter(this);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                     [this] { AboutToWait(); });
}

bool IdleWatch::eventFilter(QObject* object, QEvent* event) {
    ++mEvents;
    return QObject::eventFilter(object, event);
}

void IdleWatch::AboutToWait() {
    if (std::exchange(mEventsBefore, mEvents) != mEvents) {
        mIsIdle = false;
        QAbstractEventDispatcher::instance()->wakeUp(); // for one more round, which does not wait
    } else if (!std::exchange(mIsIdle, true)) {
        mOnIdle();
        mEventsBefore = mEvents; // its own are no work
    }
}

} // namespace tessaly::qt
