// A press does not take the focus from where the user types.
#include "platform/desktop/qt/BarControls.h"

#include <QCheckBox>
#include <QPushButton>

namespace tessaly::qt {

namespace {

std::unique_ptr<QAbstractButton> MakeButton(QWidget* parent, ButtonKind kind) {
    if (kind == ButtonKind::Check) {
        return std::make_unique<QCheckBox>(parent);
    }
    return std::make_unique<QPushButton>(parent);
}

} // namespace

TextBox::TextBox(Window& window) : Control(window, mEdit), mEdit(&window.Area()) {
    QObject::connect(&mEdit, &QLineEdit::textEdited, &mEdit, [this] { Raise(onChange); });
}

Button::Button(Window& window, ButtonKind kind) : Button(window, MakeButton(&window.Area(), kind).release()) {}

Button::Button(Window& window, QAbstractButton* button) : Control(window, *button), mButton(button) {
    mButton->setFocusPolicy(Qt::TabFocus);
    QObject::connect(mButton.get(), &QAbstractButton::clicked, mButton.get(), [this] { TellClick(); });
}

void Button::SetCaption(std::string_view caption) {
    mButton->setText(ToQt(caption).replace(u'&', QStringLiteral("&&")));
}

Size Button::PreferredSize() const {
    const QSize size = mButton->sizeHint();
    return {ToTwips(size.width()), ToTwips(size.height())};
}

PaneBar::PaneBar(Window& theWindow) : window(theWindow) {
    wantedLabel.SetBuddy(wanted.Widget());
    replacementLabel.SetBuddy(replacement.Widget());
    controls.Hide();
    window.WatchEvents();
}

} // namespace tessaly::qt
