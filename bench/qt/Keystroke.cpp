// Types into a pane with 10,000 lines in a real window. Prints for each keystroke how many lines change their colours,
// "one" or "all" in view, and the milliseconds until the pane is drawn. A comment is opened in front of all that is
// seen and closed again: no keystroke changes more colours.
#include "platform/desktop/qt/RichTextBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

namespace {

constexpr int Lines = 10000;
constexpr int Rounds = 50;

std::string Program() {
    std::string text;
    for (int line = 0; line < Lines; ++line) {
        text +=
            "    total += samples[" + std::to_string(line) + "] * 0x1F; // step \"" + std::to_string(line) + "\"\r\n";
    }
    return text;
}

// Notices that the pane was drawn.
class Drawing : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        isDone = isDone || event->type() == QEvent::Paint;
        return false;
    }

    bool isDone = false;
};

struct Key {
    int code;
    const char* text;
    const char* changed;
};

// The whole way of a key: the text changes, its colours are made anew and it is drawn.
double Type(QPlainTextEdit& pane, Drawing& drawing, const Key& key) {
    const auto start = std::chrono::steady_clock::now();
    const QString text = QString::fromLatin1(key.text);
    QKeyEvent press(QEvent::KeyPress, key.code, Qt::NoModifier, text);
    QKeyEvent release(QEvent::KeyRelease, key.code, Qt::NoModifier, text);
    drawing.isDone = false;
    QCoreApplication::sendEvent(&pane, &press);
    QCoreApplication::sendEvent(&pane, &release);
    while (!drawing.isDone) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Opens a comment in front of everything that is seen, types in it and takes it away again.
constexpr std::array<Key, 6> Keys = {{
    {Qt::Key_Slash, "/", "one"},
    {Qt::Key_Asterisk, "*", "all"},
    {Qt::Key_A, "a", "one"},
    {Qt::Key_Backspace, "\b", "one"},
    {Qt::Key_Backspace, "\b", "all"},
    {Qt::Key_Backspace, "\b", "one"},
}};

// Returns whether every key has changed the text.
bool TypeAll(tessaly::qt::RichTextBox& box) {
    QPlainTextEdit& pane = box.Widget();
    Drawing drawing;
    pane.viewport()->installEventFilter(&drawing);
    int changes = 0;
    box.onChange = [&changes] { ++changes; };
    for (int round = 0; round < Rounds; ++round) {
        for (const Key& key : Keys) {
            std::printf("%s %.3f\n", key.changed, Type(pane, drawing, key));
        }
    }
    pane.viewport()->removeEventFilter(&drawing);
    return changes == Rounds * static_cast<int>(Keys.size());
}

} // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QMainWindow window;
    window.resize(960, 660);
    tessaly::qt::Focus focus(window);
    tessaly::qt::RichTextBox box(&window, focus);
    QPlainTextEdit& pane = box.Widget();
    pane.setGeometry(0, 0, 960, 660);
    box.SetText(Program());
    box.SetFuncBodyAvailable(true);
    window.show();
    pane.setFocus();
    pane.setTextCursor(QTextCursor(pane.document()->findBlockByNumber(Lines / 2))); // lines in front and behind it
    QTimer::singleShot(0, &pane, [&box] {
        QPlainTextEdit& shown = box.Widget();
        shown.verticalScrollBar()->setValue(Lines / 2); // in lines: all that is seen stands behind the caret
        const bool isInPlace = shown.cursorRect().top() < shown.cursorRect().height();
        const bool isTyped = isInPlace && TypeAll(box);
        if (!isTyped) {
            std::fputs(isInPlace ? "keystroke: the keys did not change the text\n"
                                 : "keystroke: the caret's line is not the first in view\n",
                       stderr);
        }
        QCoreApplication::exit(isTyped ? 0 : 1);
    });
    return QApplication::exec();
}
