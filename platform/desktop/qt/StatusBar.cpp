#include "platform/desktop/qt/StatusBar.h"

#include "platform/desktop/qt/Colours.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace tessaly::qt {

namespace {

constexpr int Margin = 8;

} // namespace

void PanelLabel::paintEvent(QPaintEvent*) {
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

StatusBar::StatusBar(Window& window) : Control(window, mBar), mBar(&window.Area()) {
    mBar.setSizeGripEnabled(false);
    mBar.setAutoFillBackground(true);
}

float StatusBar::PreferredHeight() const {
    return ToTwips(std::max(mBar.sizeHint().height(), mBar.fontMetrics().height() + Margin));
}

void StatusBar::Show(const Extent& place) {
    Control::Show(place);
    ShowPanels();
}

void StatusBar::ShowPanels() {
    while (mLabels.size() < Panels().size()) {
        mLabels.push_back(std::make_unique<PanelLabel>(&mBar));
        mLabels.back()->setTextFormat(Qt::PlainText);
        mLabels.back()->show(); // the bar may be shown already
    }
    int start = 0;
    const std::vector<int> ends = Ends(mBar.width(), ToPixels(FixedWidth));
    for (std::size_t place = 0; place < ends.size(); ++place) {
        mLabels[place]->setGeometry(start, 1, ends[place] - start, mBar.height() - 1);
        start = ends[place];
    }
}

void StatusBar::ShowText(std::size_t place, std::string_view text) {
    mLabels[place]->setText(ToQt(text));
    const QString markup = QStringLiteral("<p style='white-space:pre'>%1</p>").arg(ToQt(text).toHtmlEscaped());
    mLabels[place]->setToolTip(text.empty() ? QString()
                                            : markup); // plain text would be markup where it looks like some
}

} // namespace tessaly::qt
