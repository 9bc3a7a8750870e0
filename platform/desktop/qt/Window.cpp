// Keys are seen on their way from the window system to the window, in front of menus and controls, and always go on.
#include "platform/desktop/qt/Window.h"

#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/Post.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImageReader>
#include <QMenuBar>
#include <QMimeData>
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

// What a window manager's frame adds to the height, more or less: how much it really is nobody knows before the window
// is shown, and on some systems never.
constexpr int FrameHeight = 30;

// Calls a function when it goes, also by way of an exception.
class AtEnd {
public:
    explicit AtEnd(std::function<void()> function) : mFunction(std::move(function)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() { mFunction(); }

private:
    std::function<void()> mFunction;
};

bool HasFiles(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

} // namespace

Frame::Frame() {
    setCentralWidget(std::make_unique<QWidget>().release()); // the window's own from here on
    centralWidget()->installEventFilter(this);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    const QSize room = screen()->availableSize();
    const Extent first = FirstExtent({0, 0, ToTwips(room.width()), ToTwips(room.height())});
    resize(ToPixels(first.width), ToPixels(first.height) - FrameHeight);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { ShowFocus(now); });
    winId(); // so that there is a window to see the keys of
    windowHandle()->installEventFilter(this);
}

// The focus goes from control to control while they are destroyed.
Frame::~Frame() {
    disconnect(qApp, nullptr, this, nullptr);
}

void Frame::ShowFocus(QWidget* focus) {
    while (focus != nullptr && focus->parentWidget() != centralWidget()) {
        focus = focus->parentWidget();
    }
    mFocusFrame.setWidget(dynamic_cast<QAbstractScrollArea*>(focus)); // buttons show it themselves
}

bool Frame::eventFilter(QObject* object, QEvent* event) {
    if (object == centralWidget() && event->type() == QEvent::Resize && onClientSize) {
        onClientSize();
    }
    if ((event->type() == QEvent::WindowBlocked || event->type() == QEvent::WindowUnblocked) && onBlocked) {
        onBlocked();
    }
    const bool isKey = object == windowHandle() && event->type() == QEvent::KeyPress;
    if (isKey && onKey && QApplication::activePopupWidget() == nullptr &&
        QApplication::activeModalWidget() == nullptr) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        onKey(VirtualKey(key), ShiftState(key.modifiers()));
    }
    return QMainWindow::eventFilter(object, event);
}

void Frame::closeEvent(QCloseEvent* event) {
    event->accept();
    if (onCloseRequest) {
        onCloseRequest();
    }
}

void Frame::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (onSize) {
        onSize();
    }
}

void Frame::dragEnterEvent(QDragEnterEvent* event) {
    if (HasFiles(*event->mimeData())) {
        event->acceptProposedAction();
    }
}

// The program that the files come from waits for the end of the drop, so what they mean comes behind it.
void Frame::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    Post(*this, [this, urls = event->mimeData()->urls()] {
        for (const QUrl& url : urls) {
            if (url.isLocalFile() && onDrop) {
                onDrop(FromQt(url.toLocalFile()));
            }
        }
    });
}

Window::Window(Frame& frame, Focus& focus, std::function<void()> onF1)
    : mFrame(frame),
      mFocus(focus),
      mOnF1(std::move(onF1)),
      mLastSize(frame.size()) {
    mFrame.onCloseRequest = [this] { Unload(); };
    mFrame.onSize = [this] { Resized(); };
    mFrame.onKey = [this](int keyCode, int shift) { KeyPressed(keyCode, shift); };
    mFrame.onDrop = [this](const std::string& path) {
        if (onFileDropped && QApplication::activeModalWidget() == nullptr) {
            const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::IsTaken);
            onFileDropped(path);
        }
    };
    mFrame.onBlocked = [this] { mFocus.Update(); };
}

void Window::Show() {
    if (!std::exchange(mIsLoaded, true) && onLoad) {
        onLoad();
    }
    if (!mIsClosed) {
        mFocus.Begin();
        mFrame.show();
    }
}

// The window is gone before the event, so that closing it again in there raises nothing.
void Window::Unload() {
    if (std::exchange(mIsClosed, true)) {
        return;
    }
    mFocus.End();
    const AtEnd atEnd([this] {
        mFrame.hide();
        if (onEnded) {
            onEnded();
        }
    });
    if (onUnload) {
        onUnload();
    }
}

float Window::Width() const {
    return ToTwips(mFrame.width());
}

float Window::Height() const {
    return ToTwips(mFrame.height() + FrameHeight);
}

float Window::ClientWidth() const {
    return ToTwips(mFrame.width());
}

float Window::ClientHeight() const {
    return ToTwips(mFrame.height() - mFrame.menuBar()->heightForWidth(mFrame.width()));
}

void Window::SetMinimumSize(float width, float height) {
    mFrame.setMinimumSize(ToPixels(width), ToPixels(height) - FrameHeight);
}

void Window::SetFooter(float height) {
    mFooter = height;
    mFrame.onClientSize();
}

void Window::SetIcon(const std::string& path) {
    QImageReader reader;
    reader.setFileName(ToQt(path));
    reader.setDecideFormatFromContent(true);
    const QPixmap picture = path.empty() ? QPixmap() : QPixmap::fromImageReader(&reader);
    if (picture.isNull()) {
        throw std::runtime_error("the icon cannot be loaded");
    }
    mFrame.setWindowIcon(QIcon(picture));
}

void Window::SendKey(int key) {
    Post(mFrame, [&frame = mFrame, key] {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(frame.windowHandle(), &event);
        }
    });
}

void Window::Resized() {
    if (mIsClosed || mFrame.size() == mLastSize) {
        return;
    }
    mLastSize = mFrame.size();
    if (mIsLoaded && onResize) {
        onResize();
    }
}

void Window::KeyPressed(int keyCode, int shift) {
    if (mIsClosed) {
        return;
    }
    mFocus.UpdateInUse();
    if (onKeyDown) {
        const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::Stays);
        onKeyDown(keyCode, shift);
    }
    if (keyCode == KeyF1 && !mIsClosed) {
        mOnF1();
    }
}

} // namespace tessaly::qt
