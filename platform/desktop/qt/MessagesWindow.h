// The messages window over Qt's list and text. The window manager puts it where it is asked to, except on Wayland.
#pragma once

#include "platform/desktop/MessagesWindow.h"
#include "platform/desktop/qt/Window.h"

#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>

namespace tessaly::qt {

class MessagesWindow final : public QWidget, public tessaly::MessagesWindow {
public:
    MessagesWindow(Window& owner, const tessaly::Control& pane);
    MessagesWindow(const MessagesWindow&) = delete;
    MessagesWindow& operator=(const MessagesWindow&) = delete;
    ~MessagesWindow() override = default;

    // Sees keys before the controls do.
    bool eventFilter(QObject* object, QEvent* event) override;

    QTabWidget& Pages() { return *mPages; }
    QTreeWidget& Rows() { return *mRows; }
    QPlainTextEdit& Printed() { return *mPrinted; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowTexts(const MessageTexts& texts) override;
    void ShowRows(const std::vector<MessageRow>& rows) override;
    void ShowSelected(std::size_t row) override;
    void ShowPrinted(std::string_view text, std::size_t unchanged) override;
    void ShowPage(Page page) override;
    std::optional<Surroundings> Around() const override;
    void MoveTo(const Extent& place) override;
    void ShowFrame(bool isVisible) override;
    QMargins Frame() const;

    Window& mWindow;
    QTabWidget* mPages; // children of this window or of each other
    QTreeWidget* mRows;
    QPlainTextEdit* mPrinted;
};

} // namespace tessaly::qt
