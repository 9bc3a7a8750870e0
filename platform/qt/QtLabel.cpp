// A label.
#include "platform/qt/QtLabel.h"

namespace tessaly {

QtLabel::QtLabel(QWidget* parent, QtFocus* focus) : QtControl(focus, mLabel, QtKeyboard::Unused), mLabel(parent) {
    mLabel.setTextFormat(Qt::PlainText);
}

void QtLabel::SetCaption(std::string_view caption) {
    mCaption = caption;
    mLabel.setText(ToQt(caption));
}

} // namespace tessaly
