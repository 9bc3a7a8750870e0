// The window manager has no say in where such windows stand.
#include "platform/desktop/qt/Suggestions.h"

#include "platform/desktop/qt/Text.h"

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QScreen>
#include <QToolTip>
#include <algorithm>

namespace tessaly::qt {

namespace {

constexpr int MostRowsInView = 8;

// What the list adds round its rows.
int FrameOf(const QTreeWidget& list) {
    return 2 * list.frameWidth();
}

QSize SizeFor(const QTreeWidget& list, int widest) {
    const QAbstractItemView& view = list;
    const int rows = std::min(list.topLevelItemCount(), MostRowsInView);
    const bool isLong = list.topLevelItemCount() > rows;
    const int columns = view.sizeHintForColumn(0) + view.sizeHintForColumn(1);
    const int width = columns + FrameOf(list) + (isLong ? list.style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0);
    return {std::min(width, widest), rows * list.sizeHintForRow(0) + FrameOf(list)};
}

QString Marked(const HintText& hint) {
    const std::string_view text = hint.text;
    const auto part = [text](std::size_t begin, std::size_t end) {
        return ToQt(text.substr(begin, end - begin)).toHtmlEscaped();
    };
    return part(0, hint.begin) + "<b>" + part(hint.begin, hint.end) + "</b>" + part(hint.end, text.size());
}

void BeTip(QWidget& widget) {
    widget.setWindowFlags(Qt::ToolTip);
    widget.setAttribute(Qt::WA_ShowWithoutActivating);
    widget.setFocusPolicy(Qt::NoFocus);
}

} // namespace

void Suggestions::MakeList() {
    if (mList) {
        return;
    }
    mList = std::make_unique<QTreeWidget>(&mWindow);
    BeTip(*mList);
    mList->setColumnCount(2);
    mList->setHeaderHidden(true);
    mList->setRootIsDecorated(false);
    mList->setUniformRowHeights(true);
    mList->setAllColumnsShowFocus(true);
    mList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mList->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    mList->header()->setMinimumSectionSize(1);
    QObject::connect(mList.get(), &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        TellPick(static_cast<std::size_t>(mList->indexOfTopLevelItem(item)));
    });
}

void Suggestions::MakeHint() {
    if (mHint) {
        return;
    }
    mHint = std::make_unique<QLabel>(&mWindow);
    BeTip(*mHint);
    mHint->setTextFormat(Qt::RichText);
    mHint->setPalette(QToolTip::palette());
    mHint->setAutoFillBackground(true);
    mHint->setFrameStyle(QFrame::Box | QFrame::Plain);
    mHint->setMargin(2);
}

bool Suggestions::eventFilter(QObject* object, QEvent* event) {
    const auto* const widget = qobject_cast<QWidget*>(object);
    const bool isMouse = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel;
    const bool isOther =
        isMouse && widget != nullptr && widget->window() != mList.get() && widget->window() != mHint.get();
    const bool isChange = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (isOther || (isChange && object == &mWindow)) {
        TellElsewhere();
    }
    return false;
}

void Suggestions::Watch() {
    qApp->removeEventFilter(this);
    if ((mList && mList->isVisible()) || (mHint && mHint->isVisible())) {
        qApp->installEventFilter(this);
    }
}

void Suggestions::PutBeside(QWidget& what, Place place, bool isBelow) {
    const QRect caret = mPane.CharacterPlace(place);
    const QRect screen = mWindow.screen()->availableGeometry();
    const int below = caret.bottom() + 1;
    const int above = caret.top() - what.height();
    const bool fits = isBelow ? below + what.height() <= screen.bottom() + 1 : above >= screen.top();
    const int right = std::max(screen.right() + 1 - what.width(), screen.left());
    what.move(std::clamp(caret.left(), screen.left(), right), isBelow == fits ? below : above);
    what.show();
    Watch();
}

void Suggestions::ShowNames(const std::vector<SuggestedName>& names, Place place) {
    MakeList();
    mList->clear();
    mList->setFont(mPane.Widget().font());
    QList<QTreeWidgetItem*> items;
    for (const SuggestedName& name : names) {
        items.append(new QTreeWidgetItem({ToQt(name.name), ToQt(name.declaration)})); // the list's own from here on
    }
    mList->addTopLevelItems(items);
    mList->resize(SizeFor(*mList, mWindow.screen()->availableGeometry().width() * 2 / 3));
    PutBeside(*mList, place, true);
}

void Suggestions::HideNames() {
    mList->hide();
    Watch();
}

void Suggestions::ShowSelected(std::size_t row) {
    mList->setCurrentItem(mList->topLevelItem(static_cast<int>(row)));
}

void Suggestions::ShowHintText(const HintText& hint, Place place) {
    MakeHint();
    mHint->setFont(mPane.Widget().font());
    mHint->setText(Marked(hint));
    mHint->adjustSize();
    PutBeside(*mHint, place, false);
}

void Suggestions::HideHintText() {
    mHint->hide();
    Watch();
}

} // namespace tessaly::qt
