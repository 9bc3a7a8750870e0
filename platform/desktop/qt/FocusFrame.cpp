// Qt keeps the frame round its control and above it, and the mouse goes through.
#include "platform/desktop/qt/FocusFrame.h"

#include <QPainter>

namespace tessaly::qt {

void FocusFrame::paintEvent(QPaintEvent*) {
    constexpr int width = 2;
    QPainter painter(this);
    const QRect round = rect();
    const QRect inner = round.adjusted(width, width, -width, -width);
    painter.setClipRegion(QRegion(round) - inner);
    painter.fillRect(round, palette().color(QPalette::Highlight));
}

} // namespace tessaly::qt
