// A label of the window grows upwards where the user's font needs more room than it was given.
#include "platform/qt/QtLabel.h"

#include <algorithm>

namespace tessaly {

QtLabel::QtLabel(QWidget* parent, QtFocus* focus) : QtControl(focus, mLabel, QtKeyboard::Unused), mLabel(parent) {
    mLabel.setTextFormat(Qt::PlainText);
}

void QtLabel::SetCaption(std::string_view caption) {
    mCaption = caption;
    mLabel.setText(ToQt(caption));
}

void QtLabel::Place(const QRect& place) {
    QRect grown = place;
    grown.setTop(place.bottom() + 1 - std::max(place.height(), mLabel.fontMetrics().height()));
    mLabel.setGeometry(grown);
}

} // namespace tessaly
