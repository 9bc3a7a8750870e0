// The main window as a frame. On this desktop the frame around it belongs to the window manager, so that the outer size
// of the window is what the program itself draws and an allowance for that, the same at all times.
#pragma once

#include "platform/desktop/Window.h"
#include "platform/desktop/qt/Focus.h"
#include "platform/desktop/qt/FocusFrame.h"
#include "platform/desktop/qt/Text.h"

#include <QMainWindow>
#include <QSize>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly::qt {

// Qt's window, which passes on what happens to it.
class Frame final : public QMainWindow {
public:
    Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    ~Frame() override;

    QWidget& Client() { return *centralWidget(); }

    std::function<void()> onCloseRequest;
    std::function<void()> onSize;
    std::function<void()> onClientSize;
    std::function<void(int keyCode, int shift)> onKey;
    std::function<void(const std::string& path)> onDrop;
    std::function<void()> onBlocked; // a dialog comes or goes in front

    // Sees what the window system sends to the window before any control does.
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ShowFocus(QWidget* focus);

    FocusFrame mFocusFrame{this};
};

class Window final : public tessaly::Window {
public:
    // `onF1` is what the key F1 does behind the program's own handler.
    Window(Frame& frame, Focus& focus, std::function<void()> onF1);

    void Show() override;
    void Unload() override;
    std::string Caption() const override { return FromQt(mFrame.windowTitle()); }
    void SetCaption(std::string_view caption) override { mFrame.setWindowTitle(ToQt(caption)); }
    float Width() const override;
    float Height() const override;
    float ClientWidth() const override;
    float ClientHeight() const override;
    void SetMinimumSize(float width, float height) override;
    void SetFooter(float height) override;
    void SetIcon(const std::string& path) override;

    // From the top of the client area, in twips.
    float FooterTop() const { return ClientHeight() - mFooter; }

    // Sends a key as if the user had pressed it, when everything before it is done.
    void SendKey(int key);

    // Raised when the window has gone. Whoever runs the event loop ends it.
    std::function<void()> onEnded;

    bool HasEnded() const { return mIsClosed; }

private:
    void Resized();
    void KeyPressed(int keyCode, int shift);

    Frame& mFrame;
    Focus& mFocus;
    std::function<void()> mOnF1;
    QSize mLastSize;
    float mFooter = 0;
    bool mIsLoaded = false;
    bool mIsClosed = false;
};

} // namespace tessaly::qt
