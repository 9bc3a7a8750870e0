// Notices when all events are done. Qt says that it is about to wait in front of each round of events, also when some
// of them wait already. So it is idle when a round has brought none.
#pragma once

#include <QObject>
#include <functional>

namespace tessaly::qt {

class IdleWatch final : public QObject {
public:
    // `onIdle` is called once before each wait for events, on the thread of the application.
    explicit IdleWatch(std::function<void()> onIdle);

    // Counts the events of the application.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void AboutToWait();

    std::function<void()> mOnIdle;
    unsigned mEvents = 0;
    unsigned mEventsBefore = 0; // the last round
    bool mIsIdle = false;       // since that many
};

} // namespace tessaly::qt
