// Keystrokes on the Linux desktop.
#include "bench/Keystroke.h"

#include "platform/desktop/qt/Desktop.h"
#include "platform/settings/SettingsRegistry.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>
#include <cstdio>
#include <exception>

namespace {

// Notices that the pane was drawn.
class Drawing : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        isDone = isDone || event->type() == QEvent::Paint;
        return false;
    }

    bool isDone = false;
};

bool PutCaret(QPlainTextEdit& pane, int line) {
    pane.setFocus();
    pane.setTextCursor(QTextCursor(pane.document()->findBlockByNumber(line)));
    pane.verticalScrollBar()->setValue(line);
    return pane.cursorRect().top() < pane.cursorRect().height();
}

void Type(QPlainTextEdit& pane, Drawing& drawing, char character) {
    const int code = character == '\b' ? int{Qt::Key_Backspace} : int{QChar::fromLatin1(character).toUpper().unicode()};
    QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, QString(QChar::fromLatin1(character)));
    QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, QString(QChar::fromLatin1(character)));
    drawing.isDone = false;
    QCoreApplication::sendEvent(&pane, &press);
    QCoreApplication::sendEvent(&pane, &release);
    while (!drawing.isDone) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void Wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    try {
        tessaly::SystemFiles files;
        tessaly::SettingsRegistry settings(files, tessaly::ProcessEnvironment);
        tessaly::qt::Desktop desktop("", tessaly::ProcessEnvironment, settings);
        QPlainTextEdit& pane = desktop.pane.Widget();
        Drawing drawing;
        pane.viewport()->installEventFilter(&drawing);
        const tessaly::bench::Typist typist{[&](int line) { return PutCaret(pane, line); },
                                            [&](char key) { Type(pane, drawing, key); },
                                            [] { QCoreApplication::processEvents(); }, Wait};
        if (count > 2) {
            AddFunctions(desktop, typist, arguments[1]);
        } else if (count > 1) {
            TypeWithCopies(desktop, typist, arguments[1]);
        } else {
            TypeKeystrokes(desktop, typist);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "keystroke: %s\n", error.what());
        return 1;
    }
    return 0;
}
