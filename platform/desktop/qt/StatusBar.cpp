// A panel that does not spring has a fixed width; the springing ones share the rest.
#include "platform/desktop/qt/StatusBar.h"

#include "platform/desktop/qt/Colours.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace tessaly::qt {

namespace {

constexpr int FixedWidth = 96;
constexpr int Margin = 8;

} // namespace

void Panel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect place = rect().adjusted(Margin, 0, 0, 0);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()));
}

void Bar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(0, 0, width(), 1, Between(palette(), QPalette::Window, QPalette::WindowText));
}

StatusBar::StatusBar(QWidget* parent, Focus& focus) : Control(&focus, mBar, Keyboard::Unused), mBar(parent) {
    mBar.setSizeGripEnabled(false);
    mBar.setAutoFillBackground(true);
    mBar.addWidget(&mRow, 1);
    mLayout.setContentsMargins(0, 0, 0, 0);
    mLayout.setSpacing(0);
}

void StatusBar::AddPanel() {
    auto label = std::make_unique<Panel>();
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(FixedWidth);
    mLayout.addWidget(label.get(), 0);
    label->show(); // the bar may be shown already
    mPanels.push_back({{}, std::move(label)});
}

float StatusBar::PreferredHeight() const {
    return ToTwips(std::max(mBar.sizeHint().height(), mBar.fontMetrics().height() + Margin));
}

void StatusBar::SetPanelSpring(std::int32_t number) {
    Panel& label = *At(number).label;
    label.setMinimumWidth(0);
    label.setMaximumWidth(QWIDGETSIZE_MAX);
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    mLayout.setStretchFactor(&label, 1);
}

void StatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    const OnePanel& panel = At(number);
    mPanels[static_cast<std::size_t>(number) - 1].text = text;
    panel.label->setText(ToQt(text));
    const QString markup = QStringLiteral("<p style='white-space:pre'>%1</p>").arg(ToQt(text).toHtmlEscaped());
    panel.label->setToolTip(text.empty() ? QString() : markup); // plain text would be markup where it looks like some
}

// A number below 1 becomes one far behind the end.
const StatusBar::OnePanel& StatusBar::At(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly::qt
