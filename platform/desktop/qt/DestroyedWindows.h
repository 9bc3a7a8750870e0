// Windows that somebody else destroys, as a program may on X. Qt forgets such a window and tells nobody; here it counts
// as closed by its frame, so that no process is left without a window.
#pragma once

#include <QAbstractNativeEventFilter>

namespace tessaly::qt {

class DestroyedWindows final : public QAbstractNativeEventFilter {
public:
    DestroyedWindows();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

} // namespace tessaly::qt
