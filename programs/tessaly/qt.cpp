// The program on Linux. A second copy ends before it asks for a display.
#include "app/Catalogue.h"
#include "app/Module1.h"
#include "platform/desktop/qt/Desktop.h"
#include "platform/desktop/qt/Session.h"
#include "platform/desktop/qt/Texts.h"
#include "platform/settings/SettingsRegistry.h"
#include "platform/system/PreviousInstance.h"
#include "platform/system/posix/Process.h"
#include "ui/VornMainFrm.h"

#include <QApplication>
#include <QMessageBox>
#include <array>
#include <csignal>
#include <exception>
#include <functional>
#include <iostream>
#include <optional>

namespace {

// Returns the exit code of the program. `makeApplication` gets the display, which everything of Qt needs.
int Run(int argumentCount, char** arguments, const std::function<void()>& makeApplication) {
    using tessaly::ProcessEnvironment;
    const tessaly::PreviousInstanceTest previous(tessaly::InstanceName(ProcessEnvironment));
    tessaly::SystemFiles files;
    tessaly::SystemPrivateFiles ownFiles;
    std::optional<tessaly::SettingsRegistry> settings;
    std::optional<tessaly::qt::Desktop> desktop;
    std::optional<tessaly::qt::Session> session;
    std::optional<tessaly::VornMainFrm> window;
    const auto language = [&window] {
        return tessaly::LanguageTag(window ? window->mLanguage : tessaly::EnglishLanguage);
    };
    tessaly::qt::Texts texts(language);
    tessaly::StartUp(previous.PreviousInstance(), [&] {
        makeApplication();
        QCoreApplication::installTranslator(&texts);
        settings.emplace(files, ProcessEnvironment);
        desktop.emplace(tessaly::posix::CommandLine(argumentCount, arguments), ProcessEnvironment, *settings);
        desktop->app.helpLanguage = language;
        session.emplace(*desktop);
        window.emplace(*desktop, tessaly::SystemRecoveryHost(ownFiles, files, ProcessEnvironment)).Show();
    });
    return window ? desktop->Run() : 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit for the size of files fails like any other
    // None of the arguments is Qt's: what looks like an option may be the name of a file.
    int ownCount = 1;
    std::array<char*, 2> own = {arguments[0], nullptr};
    std::optional<QApplication> application;
    try {
        return Run(argumentCount, arguments, [&] {
            application.emplace(ownCount, own.data());
            QApplication::setQuitOnLastWindowClosed(false);
            QGuiApplication::setDesktopFileName("tessaly");
        });
    } catch (const std::exception& error) {
        std::cerr << "tessaly: " << error.what() << '\n';
        if (application) {
            QMessageBox::critical(nullptr, "Tessaly", error.what());
        }
        return 1;
    }
}
