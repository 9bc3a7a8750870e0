// A frame in the colour of selections round the control that has the keyboard. Many styles show little of that.
#pragma once

#include <QFocusFrame>

namespace tessaly::qt {

class FocusFrame final : public QFocusFrame {
public:
    using QFocusFrame::QFocusFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessaly::qt
