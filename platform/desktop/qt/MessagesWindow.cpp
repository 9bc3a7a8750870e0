// Its frame is taken to be like that of the main window: what it really is nobody knows before it is shown.
#include "platform/desktop/qt/MessagesWindow.h"

#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/Text.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QMenu>
#include <QScreen>
#include <QStyle>
#include <QTextCursor>
#include <QVBoxLayout>
#include <QWindow>

namespace tessaly::qt {

namespace {

constexpr int TextColumn = 3;

QStyle::StandardPixmap PictureOf(MessageKind kind) {
    switch (kind) {
    case MessageKind::Error:
        return QStyle::SP_MessageBoxCritical;
    case MessageKind::Warning:
        return QStyle::SP_MessageBoxWarning;
    default:
        return QStyle::SP_MessageBoxInformation;
    }
}

Extent InTwips(const QPoint& topLeft, const QSize& size) {
    return {ToTwips(topLeft.x()), ToTwips(topLeft.y()), ToTwips(size.width()), ToTwips(size.height())};
}

} // namespace

MessagesWindow::MessagesWindow(Window& owner, const tessaly::Control& pane)
    : QWidget(&owner, Qt::Dialog), // which a click in the main window does not put behind that
      tessaly::MessagesWindow(owner, pane),
      mWindow(owner),
      mPages(new QTabWidget(this)),
      mRows(new QTreeWidget(mPages)),
      mPrinted(new QPlainTextEdit(mPages)) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mPages);
    mPages->setDocumentMode(true);
    mPages->addTab(mRows, {});
    mPages->addTab(mPrinted, {});
    mPages->setCurrentWidget(mPrinted);

    mRows->setColumnCount(TextColumn + 1);
    mRows->setRootIsDecorated(false);
    mRows->setUniformRowHeights(true);
    mRows->setAllColumnsShowFocus(true);
    mPages->setMinimumSize(1, 1); // or its controls would have it grow over the main window's
    mRows->header()->setSectionsMovable(false);
    mRows->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    mPrinted->setReadOnly(true);
    mPrinted->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    mPrinted->setUndoRedoEnabled(false);
    mPrinted->setLineWrapMode(QPlainTextEdit::NoWrap);
    mPrinted->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    connect(mRows, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* now) { TellSelected(static_cast<std::size_t>(mRows->indexOfTopLevelItem(now))); });
    connect(mRows, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        TellDoubleClick(static_cast<std::size_t>(mRows->indexOfTopLevelItem(item)));
    });
    connect(mPages, &QTabWidget::currentChanged, this,
            [this](int page) { TellPage(page == 0 ? Page::Messages : Page::Printed); });
    winId(); // so that there is a window to see the keys of
    windowHandle()->installEventFilter(this);
}

bool MessagesWindow::eventFilter(QObject* object, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress && QApplication::activePopupWidget() == nullptr &&
                       QApplication::activeModalWidget() == nullptr;
    if (isKey) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const int keyCode = VirtualKey(key);
        const int shift = ShiftState(key.modifiers());
        if (const std::optional<std::string> text = CopiedBy(keyCode, shift)) {
            QGuiApplication::clipboard()->setText(ToQt(*text));
            return true;
        }
        return TellKey(keyCode, shift);
    }
    return QWidget::eventFilter(object, event);
}

void MessagesWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    Hide();
}

void MessagesWindow::ShowTexts(const MessageTexts& texts) {
    setWindowTitle(ToQt(texts.caption));
    for (int column = 0; column <= TextColumn; ++column) {
        mRows->headerItem()->setText(column, ToQt(texts.heads.at(static_cast<std::size_t>(column))));
    }
    const std::pair<QWidget*, QString> pages[] = {{mRows, ToQt(texts.messagesPage)},
                                                  {mPrinted, ToQt(texts.printedPage)}};
    for (const auto& [page, name] : pages) {
        mPages->setTabText(mPages->indexOf(page), name);
        page->setAccessibleName(name);
    }
}

void MessagesWindow::ShowRows(const std::vector<MessageRow>& rows) {
    mRows->clear();
    QList<QTreeWidgetItem*> items;
    for (const MessageRow& row : rows) {
        auto* const item = new QTreeWidgetItem; // the list's from addTopLevelItems on
        for (int column = 0; column <= TextColumn; ++column) {
            item->setText(column, ToQt(row.cells.at(static_cast<std::size_t>(column))));
        }
        item->setToolTip(TextColumn, item->text(TextColumn));
        item->setIcon(0, style()->standardIcon(PictureOf(row.kind), nullptr, this));
        items.append(item);
    }
    mRows->addTopLevelItems(items);
}

void MessagesWindow::ShowSelected(std::size_t row) {
    QTreeWidgetItem* const item = mRows->topLevelItem(static_cast<int>(row));
    mRows->setCurrentItem(item);
    mRows->scrollToItem(item);
}

void MessagesWindow::ShowPrinted(std::string_view text, std::size_t unchanged) {
    if (unchanged == 0) {
        mPrinted->setPlainText(ToQt(text));
    } else {
        QTextCursor end(mPrinted->document());
        end.movePosition(QTextCursor::End);
        end.insertText(ToQt(text.substr(unchanged)));
    }
}

void MessagesWindow::ShowPage(Page page) {
    mPages->setCurrentIndex(page == Page::Messages ? 0 : 1);
}

std::optional<tessaly::MessagesWindow::Surroundings> MessagesWindow::Around() const {
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland"))) {
        return std::nullopt;
    }
    const QRect work = mWindow.screen()->availableGeometry();
    const QRect owner = mWindow.frameGeometry();
    const QWidget& area = mWindow.Area();
    const QRect own = geometry().marginsAdded(Frame());
    return Surroundings{InTwips(work.topLeft(), work.size()),
                        InTwips(owner.topLeft(), owner.size()),
                        InTwips(area.mapToGlobal(QPoint(0, 0)), area.size()),
                        {},
                        InTwips(own.topLeft(), own.size())};
}

QMargins MessagesWindow::Frame() const {
    const QRect inner = mWindow.geometry();
    const QRect outer = mWindow.frameGeometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

// What is inside the frame: until the first show Qt takes the window's own frame to be none.
void MessagesWindow::MoveTo(const Extent& place) {
    const QRect whole(ToPixels(place.left), ToPixels(place.top), ToPixels(place.width), ToPixels(place.height));
    setGeometry(whole.marginsRemoved(Frame()));
}

// Qt closes an open menu when a window comes, so this one waits. No window manager gives the keyboard back everywhere.
void MessagesWindow::ShowFrame(bool isVisible) {
    const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu != nullptr && isVisible) {
        const auto goOn = [this] { ShowFrame(IsVisible()); };
        connect(
            menu, &QMenu::aboutToHide, this, [this, goOn] { Post(*this, goOn); }, Qt::SingleShotConnection);
        return;
    }
    const bool hadKeyboard = isActiveWindow();
    setVisible(isVisible);
    if (hadKeyboard && !isVisible) {
        mWindow.activateWindow();
    }
}

} // namespace tessaly::qt
