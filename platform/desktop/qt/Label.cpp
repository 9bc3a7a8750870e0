// A label.
#include "platform/desktop/qt/Label.h"

namespace tessaly::qt {

Label::Label(QWidget* parent, Focus* focus) : Control(focus, mLabel, Keyboard::Unused), mLabel(parent) {
    mLabel.setTextFormat(Qt::PlainText);
}

void Label::SetCaption(std::string_view caption) {
    mCaption = caption;
    QString text = ToQt(caption);
    if (mLabel.buddy() != nullptr) {
        mLabel.buddy()->setAccessibleName(text); // a tree does not ask its label
        // Only for a buddy an ampersand would mark an access key.
        text.replace(u'&', QStringLiteral("&&"));
    }
    mLabel.setText(text);
}

} // namespace tessaly::qt
