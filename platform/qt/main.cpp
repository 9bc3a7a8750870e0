// The program on Linux.
#include "app/Module1.h"
#include "platform/qt/QtDesktop.h"
#include "ui/VornMainFrm.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QSessionManager>
#include <QTranslator>
#include <array>
#include <string>

namespace {

// A path with blanks is one argument or several: the program takes all of its command line for one path.
std::string CommandLine(int count, char** arguments) {
    std::string line;
    for (int i = 1; i < count; ++i) {
        line += (i > 1 ? " " : "") + std::string(arguments[i]);
    }
    return line;
}

// The program's own icon: for the window until the settings name another one.
QIcon OwnIcon() {
    QIcon icon;
    for (const char* const size : {"16x16", "48x48", "64x64", "128x128"}) {
        icon.addFile(QString(":/hicolor/") + size + "/apps/tessaly.png");
    }
    return icon;
}

void CloseAtEndOfSession(QApplication& application, tessaly::Window& window) {
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &application,
        [&window](QSessionManager& session) {
            session.setRestartHint(QSessionManager::RestartNever);
            if (session.allowsInteraction()) {
                window.Unload();
                session.release();
            }
        },
        Qt::DirectConnection);
}

} // namespace

int main(int argumentCount, char** arguments) {
    // None of the arguments is Qt's: what looks like an option may be the name of a file.
    int ownCount = 1;
    std::array<char*, 2> own = {arguments[0], nullptr};
    QApplication application(ownCount, own.data());
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName("tessaly");

    // What Qt itself says, as in the file dialogs, is in the language of the system, where that is installed.
    QTranslator ownTexts;
    if (QLocale().language() != QLocale::C && QLocale().language() != QLocale::English &&
        ownTexts.load(QLocale(), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&ownTexts);
    }

    tessaly::QtDesktop desktop(CommandLine(argumentCount, arguments), tessaly::ProcessEnvironment);
    desktop.frame.setWindowIcon(OwnIcon());
    tessaly::VornMainFrm window(desktop);
    desktop.app.helpLanguage = [&window] { return window.mLanguage == 1 ? "de" : "en"; };
    desktop.window.onEnded = [] { QCoreApplication::exit(0); };
    CloseAtEndOfSession(application, desktop.window);

    bool isShown = false;
    tessaly::StartUp(desktop.App(), [&window, &isShown] {
        window.Show();
        isShown = true;
    });
    return isShown && !desktop.window.HasEnded() ? QApplication::exec() : 0;
}
