#include "platform/desktop/qt/Desktop.h"

#include "platform/desktop/qt/ModalWindows.h"
#include "platform/desktop/qt/Spoken.h"
#include "platform/desktop/qt/Text.h"
#include "platform/system/CodePages.h"

#include <QApplication>
#include <QIcon>
#include <QShortcut>
#include <QUrl>

namespace tessaly::qt {

namespace {

constexpr QSize HelpSize(820, 680);

// The program's own icon: for the window until the settings name another one.
QIcon OwnIcon() {
    QIcon icon;
    for (const char* const size : {"16x16", "48x48", "64x64", "128x128"}) {
        icon.addFile(QString(":/hicolor/") + size + "/apps/tessaly.png");
    }
    return icon;
}

} // namespace

Desktop::Desktop(const std::string& commandLine, const Environment& environment, Registry& settings)
    : app(environment),
      mCodePage(MakeSystemCodePage()) {
    mParts = {&window, &treeLabel, &tree,        &paneLabel, &pane, &suggestions, &popup,  &toolBar,
              &status, &mMenus,    &mFileDialog, &mMsgBox,   &app,  &settings,    &mFiles, mCodePage.get()};
    app.commandLine = commandLine;
    window.setWindowIcon(OwnIcon());
    SpeakMarks();
    window.onEnded = [] { QCoreApplication::exit(0); };
    treeLabel.SetBuddy(tree.Widget());
    paneLabel.SetBuddy(pane.Widget());
    app.onSendF1 = [this] { window.SendKey(Qt::Key_F1); };
    app.onShowHelp = [this](const std::string& path) { ShowHelp(path); };
}

// A control that goes passes the focus on to the next one.
Desktop::~Desktop() {
    window.StopWatching();
}

// It has no owner: what stands in front of the main window would block it, too.
void Desktop::ShowHelp(const std::string& path) {
    if (!help) {
        help = std::make_unique<QTextBrowser>();
        help->resize(SizeOnScreen(*help, HelpSize));
        help->setWindowIcon(window.windowIcon());
        help->setOpenExternalLinks(true);
        const auto* const escape = new QShortcut(QKeySequence(QKeySequence::Cancel), help.get()); // the window's own
        QObject::connect(escape, &QShortcut::activated, help.get(), &QWidget::close);
        QObject::connect(help.get(), &QTextBrowser::sourceChanged, help.get(),
                         [this] { help->setWindowTitle(help->documentTitle()); });
    }
    help->setSource(QUrl::fromLocalFile(ToQt(path)));
    help->show();
    help->raise();
    help->activateWindow();
}

std::unique_ptr<tessaly::NameWindow> Desktop::NewNameWindow() {
    return std::make_unique<NameWindow>(window, [this] { app.OpenHelp(); });
}

std::unique_ptr<tessaly::SplashWindow> Desktop::NewSplashWindow() {
    return std::make_unique<SplashWindow>(window, [this] { app.OpenHelp(); });
}

int Desktop::Run() {
    return window.HasEnded() ? 0 : QApplication::exec();
}

void Desktop::EndSession(bool mayAsk) {
    if (!mayAsk) {
        mMsgBox.AskNoMore();
    }
    window.Unload();
}

} // namespace tessaly::qt
