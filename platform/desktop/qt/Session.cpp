// Without leave to ask nothing but copies is made at the first step: the session may still go on.
#include "platform/desktop/qt/Session.h"

#include <QApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace tessaly::qt {

namespace {

std::atomic<int> noteOfSignals = -1;

// Writing is all that is allowed here: the program may be in the middle of anything.
extern "C" void NoteSignal(int number) {
    const int before = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const ssize_t written = ::write(noteOfSignals, &byte, 1);
    errno = before;
}

Window* toSuspendAtExit = nullptr;

// Where the display is lost Qt ends the program from inside.
void SuspendAtExit() {
    if (Window* const window = std::exchange(toSuspendAtExit, nullptr)) {
        window->Suspend();
    }
}

} // namespace

Session::Session(Desktop& desktop) : mDesktop(desktop) {
    qApp->installEventFilter(this);
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) { Commit(manager); },
        Qt::DirectConnection);
    toSuspendAtExit = &desktop.window;
    std::atexit(SuspendAtExit);
    WatchSignals();
}

Session::~Session() {
    for (const auto& [number, action] : mActionsBefore) {
        ::sigaction(number, &action, nullptr);
    }
    noteOfSignals = -1;
    toSuspendAtExit = nullptr;
}

void Session::WatchSignals() {
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    mNoted.emplace(ends[0]);
    noteOfSignals = mNote.emplace(ends[1]).Number();
    auto* const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this); // its parent's from here on
    QObject::connect(notifier, &QSocketNotifier::activated, this, [this] { EndBySignal(); });
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN) { // by nohup, or for a job in the background
            continue;
        }
        mActionsBefore[number] = action;
        action = {};
        action.sa_handler = NoteSignal;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

// By the same signal, so that the one who started the program sees what ended it.
void Session::EndBySignal() {
    unsigned char number = 0;
    if (::read(mNoted->Number(), &number, 1) != 1) {
        return;
    }
    mDesktop.window.Suspend();
    ::sigaction(number, &mActionsBefore.at(number), nullptr);
    ::raise(number);
}

bool Session::eventFilter(QObject* object, QEvent* event) {
    if (object != qApp || event->type() != QEvent::Quit) {
        return QObject::eventFilter(object, event);
    }
    mDesktop.window.Suspend();
    mDesktop.EndSession(false);
    QCoreApplication::exit(0); // also where a question is still open
    return true;
}

// The program goes on where nobody may be asked. A question that is open already is to be answered first.
void Session::Commit(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
    mDesktop.window.Suspend();
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
