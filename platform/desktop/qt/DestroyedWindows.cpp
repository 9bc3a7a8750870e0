// The X server tells of a window that another program destroyed; Qt alone would keep the dead window.
#include "platform/desktop/qt/DestroyedWindows.h"

#include "platform/desktop/qt/Text.h"

#include <QApplication>
#include <QDialog>
#include <QWidget>

namespace tessaly::qt {

namespace {

// As the X server sends it. Its own headers would be one more dependency.
struct DestroyNotify {
    quint8 type;
    quint8 unused;
    quint16 sequence;
    quint32 event;
    quint32 window;
};

constexpr quint8 DestroyNotifyType = 17;
constexpr quint8 TypeBits = 0x7F; // the other one tells that a program sent the event

// Of a dialog that refuses to be closed the way out is the one that agrees to nothing.
void Close(QWidget& window) {
    auto* const dialog = qobject_cast<QDialog*>(&window);
    if (!window.close() && dialog != nullptr) {
        dialog->reject();
    }
}

} // namespace

DestroyedWindows::DestroyedWindows() {
    qApp->installNativeEventFilter(this);
}

// Qt is to know first that the window has gone. What comes up beside the caret Qt itself makes anew each time.
bool DestroyedWindows::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto& event = *static_cast<const DestroyNotify*>(message);
    QWidget* const window = (event.type & TypeBits) == DestroyNotifyType ? QWidget::find(event.window) : nullptr;
    if (window != nullptr && window->isWindow() && window->windowType() != Qt::ToolTip) {
        Post(*window, [window] { Close(*window); });
    }
    return false;
}

} // namespace tessaly::qt
