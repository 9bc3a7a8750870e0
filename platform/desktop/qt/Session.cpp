// Without leave to ask nothing happens at the first step: the session may still go on.
#include "platform/desktop/qt/Session.h"

#include <QApplication>
#include <QSessionManager>

namespace tessaly::qt {

Session::Session(Desktop& desktop) : mDesktop(desktop) {
    qApp->installEventFilter(this);
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) { Commit(manager); },
        Qt::DirectConnection);
}

bool Session::eventFilter(QObject* object, QEvent* event) {
    if (object != qApp || event->type() != QEvent::Quit) {
        return QObject::eventFilter(object, event);
    }
    mDesktop.EndSession(false);
    QCoreApplication::exit(0); // also where a question is still open
    return true;
}

// Without leave to ask, nothing is done here: the session may still go on, and with it the program. A question that is
// open already is to be answered first.
void Session::Commit(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
    if (!manager.allowsInteraction()) {
        return;
    }
    if (mDesktop.window.HasEnded()) {
        manager.cancel();
    } else {
        mDesktop.EndSession(true);
    }
    manager.release();
}

} // namespace tessaly::qt
