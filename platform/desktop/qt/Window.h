// The main window as a frame. The frame around it belongs to the window manager. So its outer size here is the
// program's own part and a constant allowance for the frame.
#pragma once

#include "platform/desktop/Window.h"

#include <QFocusFrame>
#include <QMainWindow>
#include <QSize>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly::qt {

// A frame in the colour of selections round the control that has the keyboard. Many styles show little of that. Qt
// keeps it round its control and above it, and the mouse goes through.
class FocusFrame final : public QFocusFrame {
public:
    using QFocusFrame::QFocusFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Notices when all events are done. Qt says that it is about to wait in front of each round of events, also when some
// of them wait already. So it is idle when a round has brought none.
class IdleWatch final : public QObject {
public:
    // `onIdle` is called once before each wait for events, on the thread of the application.
    explicit IdleWatch(std::function<void()> onIdle);

    // Counts the events of the application.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void AboutToWait();

    std::function<void()> mOnIdle;
    unsigned mEvents = 0;
    unsigned mEventsBefore = 0; // the last round
    bool mIsIdle = false;       // since that many
};

// It also finds out which control has the keyboard. Qt keeps the focus where it was while a menu, a dialog or another
// program has the keyboard, and tells of a dialog only when the window system has given it the keyboard.
class Window final : public QMainWindow, public tessaly::Window {
public:
    explicit Window(tessaly::Application& application);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() override;

    void SetCaption(std::string_view caption) override;
    Sizes CurrentSizes() const override;
    void SetMinimumSize(float width, float height) override;
    void SetIcon(const std::string& path) override;

    // What the controls stand in.
    QWidget& Area() { return *centralWidget(); }

    // The focus of `widget`, and of what is in it, is that of the control.
    void Watch(tessaly::Control& control, QWidget& widget);

    // The controls are made, and those that came later than the window was shown.
    void WatchEvents();

    // The controls go.
    void StopWatching();

    // The keyboard is to be here, and not in the messages window, if that has it.
    void TakeKeyboard();

    // Raises the events for where the keyboard is, when a key, a click or an edit has just shown that it is in the
    // window, whether that is the active one or not: some window systems do not tell.
    void UpdateFocusInUse();

    // Sends a key as if the user had pressed it, when everything before it is done.
    void SendKey(int key);

    // Raised when the window has gone. Whoever runs the event loop ends it.
    std::function<void()> onEnded;

    // Sees what the window system sends to the window before menus and controls do; it always goes on to them.
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void ShowFrame() override;
    void CloseFrame() override;
    void ShowFocus(QWidget* focus);
    void MoveFocus(const QWidget* focus);
    void UpdateFocus();

    FocusFrame mFocusFrame{this};
    std::vector<std::pair<QWidget*, tessaly::Control*>> mWidgets;
    QSize mLastSize;
    IdleWatch mIdleWatch{[this] { TellIdle(); }};
};

} // namespace tessaly::qt
