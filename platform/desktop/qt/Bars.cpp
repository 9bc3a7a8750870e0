// A press does not take the focus from the pane.
#include "platform/desktop/qt/Bars.h"

#include "platform/desktop/qt/Pictures.h"

#include <QIcon>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <array>

namespace tessaly::qt {

namespace {

constexpr int PictureSize = 24;

// Of the images, each with its size in pixels behind it.
constexpr std::array<const char*, 2> Pictures = {":/add-", ":/delete-"};

} // namespace

ToolBar::ToolBar(Window& window) : Control(window, mBar), mBar(&window.Area()) {
    mBar.setIconSize(QSize(PictureSize, PictureSize));
    mBar.setFocusPolicy(Qt::NoFocus);
    QAction button{QIcon(), QString()}; // measured with one
    mBar.addAction(&button);
    mHeight = ToTwips(mBar.sizeHint().height());
}

void ToolBar::RemoveButtons() {
    mActions.clear(); // an action that goes takes its button along
}

void ToolBar::ShowButton(std::int32_t image, std::string_view tag) {
    QIcon icon;
    for (const int size : {PictureSize, 2 * PictureSize}) {
        icon.addFile(Pictures[static_cast<std::size_t>(image) - 1] + QString::number(size) + ".png");
    }
    mActions.push_back(std::make_unique<QAction>(icon, ToQt(tag)));
    QAction& action = *mActions.back();
    mBar.addAction(&action);
    mBar.widgetForAction(&action)->setFocusPolicy(Qt::TabFocus);
    const auto number = static_cast<std::int32_t>(mActions.size());
    // Queued, because the handler may take the button away.
    QObject::connect(
        &action, &QAction::triggered, &mBar, [this, number] { RaiseClick(number); }, Qt::QueuedConnection);
}

void ToolBar::ShowTip(std::int32_t number, std::string_view tip) {
    mActions[static_cast<std::size_t>(number) - 1]->setText(ToQt(tip));
}

void ToolBar::TakeKeyboard() {
    mBar.widgetForAction(mActions.front().get())->setFocus(Qt::OtherFocusReason);
}

namespace {

constexpr int PanelMargin = 8;

} // namespace

void PanelLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect place = rect().adjusted(PanelMargin, 0, 0, 0);
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

Size StatusBar::PreferredSize() const {
    return {0, ToTwips(std::max(mBar.sizeHint().height(), mBar.fontMetrics().height() + PanelMargin))};
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
        const QString text = ToQt(Panels()[place].text);
        mLabels[place]->setText(text);
        mLabels[place]->setToolTip(ToolTip(text));
    }
}

} // namespace tessaly::qt
