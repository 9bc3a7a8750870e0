// It has no owner: what stands in front of the main window would block it, too.
#include "platform/desktop/qt/HelpWindow.h"

#include "platform/desktop/qt/Text.h"

#include <QShortcut>
#include <QUrl>

namespace tessaly::qt {

namespace {

constexpr QSize HelpSize(820, 680);

} // namespace

HelpWindow::HelpWindow(const QIcon& icon) {
    mText.resize(SizeOnScreen(mText, HelpSize));
    mText.setWindowIcon(icon);
    mText.setOpenExternalLinks(true);
    const auto* const escape = new QShortcut(QKeySequence(QKeySequence::Cancel), &mText); // the window's own
    QObject::connect(escape, &QShortcut::activated, &mText, &QWidget::close);
    QObject::connect(&mText, &QTextBrowser::sourceChanged, &mText,
                     [this] { mText.setWindowTitle(mText.documentTitle()); });
}

void HelpWindow::Show(const std::string& path) {
    mText.setSource(QUrl::fromLocalFile(ToQt(path)));
    mText.show();
    mText.raise();
    mText.activateWindow();
}

} // namespace tessaly::qt
