// The end of the session, which the session manager tells in two steps. First each program is asked to keep its data;
// only then, and only with leave, it may ask its user; later it is told to end.
#pragma once

#include "platform/desktop/qt/Desktop.h"

#include <QObject>

class QSessionManager;

namespace tessaly::qt {

class Session final : public QObject {
public:
    explicit Session(Desktop& desktop);

    // Sees the word to end, which Qt would take for a click on the close button.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Commit(QSessionManager& manager);

    Desktop& mDesktop;
};

} // namespace tessaly::qt
