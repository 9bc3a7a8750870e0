// The program on Linux. A second copy ends before it asks for a display.
#include "app/Catalogue.h"
#include "app/Module1.h"
#include "platform/desktop/qt/Desktop.h"
#include "platform/desktop/qt/Session.h"
#include "platform/desktop/qt/Texts.h"
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/posix/PreviousInstance.h"
#include "platform/system/posix/SequentialFiles.h"
#include "ui/VornMainFrm.h"

#include <QApplication>
#include <QIcon>
#include <array>
#include <optional>
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

} // namespace

int main(int argumentCount, char** arguments) {
    tessaly::posix::ReportFileSizeLimit();
    const tessaly::posix::PreviousInstanceTest lock(tessaly::posix::InstanceLockPath(tessaly::ProcessEnvironment));
    // None of the arguments is Qt's: what looks like an option may be the name of a file.
    int ownCount = 1;
    std::array<char*, 2> own = {arguments[0], nullptr};
    std::optional<QApplication> application;
    tessaly::posix::SequentialFiles files;
    std::optional<tessaly::SettingsRegistry> settings;
    std::optional<tessaly::qt::Desktop> desktop;
    std::optional<tessaly::qt::Session> session;
    std::optional<tessaly::VornMainFrm> window;
    const auto isGerman = [&window] { return window && window->mLanguage == tessaly::GermanLanguage; };
    tessaly::qt::Texts ownTexts(isGerman);
    tessaly::StartUp(lock, [&] {
        application.emplace(ownCount, own.data());
        QApplication::setQuitOnLastWindowClosed(false);
        QGuiApplication::setDesktopFileName("tessaly");
        QCoreApplication::installTranslator(&ownTexts);
        settings.emplace(files, tessaly::ProcessEnvironment);
        desktop.emplace(CommandLine(argumentCount, arguments), tessaly::ProcessEnvironment, *settings);
        desktop->frame.setWindowIcon(OwnIcon());
        desktop->app.helpLanguage = [isGerman] { return isGerman() ? "de" : "en"; };
        desktop->window.onEnded = [] { QCoreApplication::exit(0); };
        session.emplace(*desktop);
        window.emplace(*desktop).Show();
    });
    return window && !desktop->window.HasEnded() ? QApplication::exec() : 0;
}
