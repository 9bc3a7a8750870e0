// Keys are seen on their way from the window system to the window, in front of menus and controls, and always go on.
#include "platform/desktop/qt/Window.h"

#include "platform/desktop/Raise.h"
#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/Text.h"

#include <QAbstractEventDispatcher>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImageReader>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

namespace tessaly::qt {

namespace {

// About the height that a window manager's frame adds. The real one is known only after the window is shown, and on
// some systems never.
constexpr int FrameHeight = 30;

bool HasFiles(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

bool IsAtWorkElsewhere() {
    return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

} // namespace

void FocusFrame::paintEvent(QPaintEvent*) {
    constexpr int width = 2;
    QPainter painter(this);
    const QRect round = rect();
    const QRect inner = round.adjusted(width, width, -width, -width);
    painter.setClipRegion(QRegion(round) - inner);
    painter.fillRect(round, palette().color(QPalette::Highlight));
}

IdleWatch::IdleWatch(std::function<void()> onIdle) : mOnIdle(std::move(onIdle)) {
    QCoreApplication::instance()->installEventFilter(this);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                     [this] { AboutToWait(); });
}

bool IdleWatch::eventFilter(QObject* object, QEvent* event) {
    ++mEvents;
    return QObject::eventFilter(object, event);
}

void IdleWatch::AboutToWait() {
    if (std::exchange(mEventsBefore, mEvents) != mEvents) {
        mIsIdle = false;
        QAbstractEventDispatcher::instance()->wakeUp(); // for one more round, which does not wait
    } else if (!std::exchange(mIsIdle, true)) {
        mOnIdle();
        mEventsBefore = mEvents; // its own are no work
    }
}

Window::Window(tessaly::Application& application) : tessaly::Window(application) {
    setCentralWidget(std::make_unique<QWidget>().release()); // the window's own from here on
    centralWidget()->installEventFilter(this);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    const QSize room = screen()->availableSize();
    const Size first = FirstSize({ToTwips(room.width()), ToTwips(room.height())});
    resize(ToPixels(first.width), ToPixels(first.height) - FrameHeight);
    mLastSize = size();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        ShowFocus(now);
        MoveFocus(now);
    });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) {
            Suspend();
        }
    });
    winId(); // so that there is a window to see the keys of
    windowHandle()->installEventFilter(this);
}

// The focus goes from control to control while they are destroyed.
Window::~Window() {
    disconnect(qApp, nullptr, this, nullptr);
}

void Window::Watch(tessaly::Control& control, QWidget& widget) {
    mWidgets.emplace_back(&widget, &control);
}

void Window::WatchEvents() {
    for (const auto& watched : mWidgets) {
        watched.first->installEventFilter(this);
    }
}

void Window::StopWatching() {
    mWidgets.clear();
    controls.focus.End();
}

void Window::ShowFocus(QWidget* focus) {
    while (focus != nullptr && focus->parentWidget() != centralWidget()) {
        focus = focus->parentWidget();
    }
    mFocusFrame.setWidget(dynamic_cast<QAbstractScrollArea*>(focus)); // buttons show it themselves
}

void Window::MoveFocus(const QWidget* focus) {
    const auto found = std::find_if(mWidgets.begin(), mWidgets.end(), [focus](const auto& each) {
        return each.first == focus || (focus != nullptr && each.first->isAncestorOf(focus));
    });
    if (HasEnded()) {
        return;
    }
    if (found != mWidgets.end() && !IsAtWorkElsewhere()) {
        controls.focus.MovedTo(*found->second);
    } else {
        controls.focus.Taken();
    }
}

void Window::UpdateFocus() {
    MoveFocus(QApplication::focusWidget());
}

void Window::TakeKeyboard() {
    const QWidget* const active = QApplication::activeWindow();
    if (active != nullptr && active->parentWidget() == this && !active->isModal()) {
        activateWindow();
    }
}

void Window::UpdateFocusInUse() {
    MoveFocus(focusWidget());
}

// Among the events of controls, the first menu that opens and the last one that closes send some, although the focus
// does not move.
bool Window::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (object != windowHandle()) { // which is told before its controls are
            UpdateFocus();
        }
        break;
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
        UpdateFocus();
        break;
    case QEvent::Resize:
        if (object == centralWidget()) {
            LayOut(CurrentSizes().client);
        }
        break;
    case QEvent::KeyPress:
        if (object == windowHandle() && QApplication::activePopupWidget() == nullptr &&
            QApplication::activeModalWidget() == nullptr) {
            const auto& key = static_cast<const QKeyEvent&>(*event);
            UpdateFocusInUse();
            if (TellKey(VirtualKey(key), ShiftState(key.modifiers()))) {
                return true;
            }
        }
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(object, event);
}

void Window::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}

void Window::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    Raise(onMoved);
}

void Window::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (!HasEnded() && size() != std::exchange(mLastSize, size())) {
        Raise(onResize);
    }
}

void Window::dragEnterEvent(QDragEnterEvent* event) {
    if (HasFiles(*event->mimeData())) {
        event->acceptProposedAction();
    }
}

// The program that the files come from waits for the end of the drop, so what they mean comes behind it.
void Window::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    Post(*this, [this, urls = event->mimeData()->urls()] {
        for (const QUrl& url : urls) {
            if (url.isLocalFile() && QApplication::activeModalWidget() == nullptr) {
                TellDrop(FromQt(url.toLocalFile()));
            }
        }
    });
}

bool Window::focusNextPrevChild(bool next) {
    tessaly::Control* const stop = controls.NextStop(!next);
    if (stop != nullptr) {
        setAttribute(Qt::WA_KeyboardFocusChange); // or a button would not show that it has the keyboard
        stop->TakeKeyboard();
    }
    return stop != nullptr;
}

// Where no control has the focus yet, the first one gets it.
void Window::ShowFrame() {
    WatchEvents();
    if (tessaly::Control* const first = controls.ToReturnTo(); first != nullptr && controls.Owner() == nullptr) {
        first->TakeKeyboard();
    }
    show();
}

void Window::CloseFrame() {
    hide();
    Raise(onEnded);
}

void Window::SetCaption(std::string_view caption) {
    setWindowTitle(ToQt(caption));
}

Window::Sizes Window::CurrentSizes() const {
    return {{ToTwips(width()), ToTwips(height() + FrameHeight)},
            {ToTwips(width()), ToTwips(height() - menuBar()->heightForWidth(width()))}};
}

void Window::SetMinimumSize(float width, float height) {
    setMinimumSize(ToPixels(width), ToPixels(height) - FrameHeight);
}

void Window::SetIcon(const std::string& path) {
    QImageReader reader;
    reader.setFileName(ToQt(path));
    reader.setDecideFormatFromContent(true);
    const QPixmap picture = path.empty() ? QPixmap() : QPixmap::fromImageReader(&reader);
    if (picture.isNull()) {
        throw std::runtime_error("the icon cannot be loaded");
    }
    setWindowIcon(QIcon(picture));
}

void Window::SendKey(int key) {
    Post(*this, [this, key] {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(windowHandle(), &event);
        }
    });
}

} // namespace tessaly::qt
