// A panel that does not spring has a fixed width; the springing ones share the rest.
#include "platform/qt/QtStatusBar.h"

#include <QPainter>
#include <QStyleOption>

namespace tessaly {

namespace {

constexpr int FixedWidth = 96;
constexpr int Margin = 8;
constexpr int AboveText = 4; // and below

} // namespace

void QtPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect place = rect().adjusted(Margin, 0, 0, 0);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()));
}

QtStatusBar::QtStatusBar(QWidget* parent, QtFocus& focus) : QtControl(&focus, mBar, QtKeyboard::Unused), mBar(parent) {
    mLayout.setContentsMargins(0, AboveText, 0, AboveText);
    mLayout.setSpacing(0);
}

void QtStatusBar::AddPanel() {
    auto label = std::make_unique<QtPanel>();
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(FixedWidth);
    mLayout.addWidget(label.get(), 0);
    label->show(); // the bar may be shown already
    mPanels.push_back({{}, std::move(label)});
}

float QtStatusBar::PreferredHeight() const {
    return ToTwips(mBar.fontMetrics().height() + 2 * AboveText);
}

void QtStatusBar::SetPanelSpring(std::int32_t number) {
    QtPanel& label = *Panel(number).label;
    label.setMinimumWidth(0);
    label.setMaximumWidth(QWIDGETSIZE_MAX);
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    mLayout.setStretchFactor(&label, 1);
}

void QtStatusBar::SetPanelText(std::int32_t number, std::string_view text) {
    const OnePanel& panel = Panel(number);
    mPanels[static_cast<std::size_t>(number) - 1].text = text;
    panel.label->setText(ToQt(text));
    const QString markup = QStringLiteral("<p style='white-space:pre'>%1</p>").arg(ToQt(text).toHtmlEscaped());
    panel.label->setToolTip(text.empty() ? QString() : markup); // plain text would be markup where it looks like some
}

// A number below 1 becomes one far behind the end.
const QtStatusBar::OnePanel& QtStatusBar::Panel(std::int32_t number) const {
    return mPanels.at(static_cast<std::size_t>(number) - 1);
}

} // namespace tessaly
