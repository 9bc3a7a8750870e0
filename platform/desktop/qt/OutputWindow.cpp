// The system tells of changes of the file; the process itself is left to itself.
#include "platform/desktop/qt/OutputWindow.h"

#include "platform/desktop/qt/Text.h"

#include <QFile>
#include <QFontDatabase>
#include <QScrollBar>
#include <algorithm>

namespace tessaly::qt {

namespace {

constexpr QSize OutputSize(720, 260);

// Of a longer output only the end is shown; the file has it all.
constexpr qint64 MostBytes = qint64{1024} * 1024;

} // namespace

OutputWindow::OutputWindow(QWidget& owner) : mText(&owner) {
    mText.setWindowFlags(Qt::Window);
    mText.setAttribute(Qt::WA_ShowWithoutActivating);
    mText.setReadOnly(true);
    mText.setUndoRedoEnabled(false);
    mText.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    mText.resize(OutputSize);
    QObject::connect(&mWatcher, &QFileSystemWatcher::fileChanged, &mText, [this] { Read(); });
}

void OutputWindow::Follow(const std::string& path) {
    if (!mPath.isEmpty()) {
        mWatcher.removePath(mPath);
    }
    mText.hide();
    mText.clear();
    mPath = ToQt(path);
    mText.setWindowTitle(mPath);
    mWatcher.addPath(mPath);
    Read();
}

void OutputWindow::Read() {
    QFile file(mPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    file.seek(std::max<qint64>(file.size() - MostBytes, 0));
    const QByteArray bytes = file.readAll();
    if (!bytes.isEmpty()) {
        mText.setPlainText(QString::fromUtf8(bytes));
        mText.verticalScrollBar()->setValue(mText.verticalScrollBar()->maximum());
        mText.show();
    }
}

} // namespace tessaly::qt
