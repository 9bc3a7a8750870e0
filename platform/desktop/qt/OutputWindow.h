// Shows the output of a started process from its file, in place of a console window. It comes up with the first output,
// without taking the focus, and goes with the main window. A process that writes nothing shows nothing.
#pragma once

#include <QFileSystemWatcher>
#include <QPlainTextEdit>
#include <string>

namespace tessaly::qt {

class OutputWindow {
public:
    explicit OutputWindow(QWidget& owner);

    // Shows the file `path` from now on, in place of the one before. The window of the one before goes.
    void Follow(const std::string& path);

    QPlainTextEdit& Widget() { return mText; }

private:
    void Read();

    QPlainTextEdit mText;
    QFileSystemWatcher mWatcher;
    QString mPath;
};

} // namespace tessaly::qt
