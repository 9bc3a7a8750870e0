// The ends that come from outside: of the session, by a signal, and with the display.
//
// The session manager tells the end of a session in two steps. First each program is asked to keep its data; only then,
// and only with leave, it may ask its user; later it is told to end.
#pragma once

#include "platform/desktop/qt/Desktop.h"
#include "platform/system/posix/Descriptor.h"

#include <QObject>
#include <csignal>
#include <map>
#include <optional>

class QSessionManager;

namespace tessaly::qt {

class Session final : public QObject {
public:
    // One at a time. As long as it lives, signals that end a program do so between two events, after the window has
    // been suspended; those that were ignored stay so. Without descriptors to spare they end it at once, as ever.
    explicit Session(Desktop& desktop);

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() override;

    // Sees the word to end, which Qt would take for a click on the close button.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Commit(QSessionManager& manager);
    void WatchSignals();
    void EndBySignal();

    Desktop& mDesktop;
    std::optional<posix::Descriptor> mNoted; // signals that have come, a byte each
    std::optional<posix::Descriptor> mNote;
    std::map<int, struct sigaction> mActionsBefore;
};

} // namespace tessaly::qt
