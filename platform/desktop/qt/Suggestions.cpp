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

// Measured by the font: a list that has not been shown yet knows no sizes. Its frame and blanks come on top.
QSize SizeFor(const std::vector<SuggestedName>& names, QTreeWidget& list, int widest) {
    const QFontMetrics font = list.fontMetrics();
    const int blank = 2 * font.horizontalAdvance(u'0');
    int name = 0;
    int declaration = 0;
    for (const SuggestedName& each : names) {
        name = std::max(name, font.horizontalAdvance(ToQt(each.name)) + blank);
        declaration = std::max(declaration, font.horizontalAdvance(ToQt(each.declaration)) + blank);
    }
    list.setColumnWidth(0, name);
    list.setColumnWidth(1, declaration);
    const int rows = std::min(static_cast<int>(names.size()), MostRowsInView);
    const int bar = list.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int frame = 2 * list.frameWidth();
    return {std::min(name + declaration + bar + frame, widest),
            rows * std::max(list.sizeHintForRow(0), font.height()) + frame};
}

QString Marked(const HintText& hint) {
    const std::string_view text = hint.text;
    const auto part = [text](std::size_t begin, std::size_t end) {
        return ToQt(text.substr(begin, end - begin)).toHtmlEscaped();
    };
    return part(0, hint.begin) + "<b>" + part(hint.begin, hint.end) + "</b>" + part(hint.end, text.size());
}

void BeTip(QWidget& widget, QWidget& window) {
    widget.setParent(&window, Qt::ToolTip);
    widget.setAttribute(Qt::WA_ShowWithoutActivating);
    widget.setFocusPolicy(Qt::NoFocus);
}

} // namespace

Suggestions::Suggestions(Window& window, RichTextBox& pane) : mWindow(window), mPane(pane) {
    mPane.Widget().installEventFilter(this); // the margin is in its edge
    mPane.Widget().viewport()->installEventFilter(this);
}

// A text is shown as it stands, whatever is in it.
void Suggestions::ShowTip(const QHelpEvent& event) {
    const QPoint mouse = mPane.Widget().viewport()->mapFromGlobal(event.globalPos());
    const std::optional<Place> place = mPane.PlaceUnder(mouse);
    const std::string tip = place ? AskTip(*place, mouse.x() < 0) : "";
    const QString text = ToolTip(ToQt(tip));
    QToolTip::showText(event.globalPos(), text, mPane.Widget().viewport());
}

void Suggestions::MakeList() {
    if (mList) {
        return;
    }
    mList = std::make_unique<QTreeWidget>();
    BeTip(*mList, mWindow);
    mList->setColumnCount(2);
    mList->setHeaderHidden(true);
    mList->setRootIsDecorated(false);
    mList->setUniformRowHeights(true);
    mList->setAllColumnsShowFocus(true);
    mList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mList->header()->setMinimumSectionSize(1);
    QObject::connect(mList.get(), &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        TellPick(static_cast<std::size_t>(mList->indexOfTopLevelItem(item)));
    });
}

void Suggestions::MakeHint() {
    if (mHint) {
        return;
    }
    mHint = std::make_unique<QLabel>();
    BeTip(*mHint, mWindow);
    mHint->setTextFormat(Qt::RichText);
    mHint->setPalette(QToolTip::palette());
    mHint->setAutoFillBackground(true);
    mHint->setFrameStyle(QFrame::Box | QFrame::Plain);
    mHint->setMargin(2);
}

bool Suggestions::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::ToolTip && (object == &mPane.Widget() || object == mPane.Widget().viewport())) {
        ShowTip(*static_cast<QHelpEvent*>(event));
        return true;
    }
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

void Suggestions::PutBeside(QWidget& what, Place place, Beside wished) {
    const auto area = [](const QRect& rect) {
        return ScreenArea{rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1};
    };
    const auto [x, y] = PlaceBeside(area(mPane.CharacterPlace(place)), area(mWindow.screen()->availableGeometry()),
                                    what.width(), what.height(), wished);
    what.move(x, y);
    what.show();
    Watch();
}

void Suggestions::ShowNames(const std::vector<SuggestedName>& names, Place place) {
    if (names.empty()) {
        mList->hide();
        Watch();
        return;
    }
    MakeList();
    mList->clear();
    mList->setFont(mPane.Widget().font());
    QList<QTreeWidgetItem*> items;
    for (const SuggestedName& name : names) {
        items.append(new QTreeWidgetItem({ToQt(name.name), ToQt(name.declaration)})); // the list's own from here on
    }
    mList->addTopLevelItems(items);
    mList->resize(SizeFor(names, *mList, mWindow.screen()->availableGeometry().width() * 2 / 3));
    PutBeside(*mList, place, Beside::Below);
}

void Suggestions::ShowSelected(std::size_t row) {
    mList->setCurrentItem(mList->topLevelItem(static_cast<int>(row)));
}

void Suggestions::ShowHintText(const HintText& hint, Place place) {
    if (hint.text.empty()) {
        mHint->hide();
        Watch();
        return;
    }
    MakeHint();
    mHint->setFont(mPane.Widget().font());
    mHint->setText(Marked(hint));
    mHint->adjustSize();
    PutBeside(*mHint, place, Beside::Above);
}

} // namespace tessaly::qt
