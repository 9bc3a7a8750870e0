// The ends that come from outside, in processes of their own: what the window was told is on their standard error.
#include "platform/desktop/qt/Session.h"
#include "platform/desktop/qt/Text.h"
#include "platform/settings/SettingsRegistry.h"

#include <QApplication>
#include <array>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {
namespace {

std::optional<std::string> NoVariable(const std::string&) {
    return std::nullopt;
}

// The program with its window shown.
struct Program {
    Program() {
        desktop.window.onSuspend = [] { std::cerr << "suspended "; };
        desktop.window.onUnload = [] { std::cerr << "unloaded "; };
        desktop.window.Show();
    }

    // Runs until the signals that come to it have ended it.
    [[noreturn]] void Run() {
        desktop.Run();
        std::exit(0);
    }

    SystemFiles files;
    SettingsRegistry settings{files, NoVariable};
    qt::Desktop desktop{"", NoVariable, settings};
    std::optional<qt::Session> session{desktop};
};

class QtSessionTest : public testing::Test {
protected:
    // Each case is a process of its own from the beginning. A job in a shell's background would have signals ignored.
    QtSessionTest() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
            std::signal(number, SIG_DFL);
        }
    }
};

TEST_F(QtSessionTest, ASignalEndsTheProgramWhenTheWindowHasBeenSuspended) {
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        const auto end = [number] {
            Program program;
            ::raise(number);
            program.Run();
        };
        EXPECT_EXIT(end(), testing::KilledBySignal(number), "(^|\n)suspended $");
    }
}

TEST_F(QtSessionTest, ASignalAlsoEndsAProgramThatAsks) {
    const auto end = [] {
        Program program;
        qt::Post(program.desktop.window, [] { ::raise(SIGTERM); });
        program.desktop.MessageBoxes().Show("text", "caption", MsgButtons::YesNo, MsgIcon::Question);
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGTERM), "(^|\n)suspended $");
}

TEST_F(QtSessionTest, ASignalFindsTheTextAlsoWhereTheWindowIsAboutToGo) {
    const auto end = [] {
        Program program;
        program.desktop.window.onUnload = [&program] {
            ::raise(SIGTERM);
            program.desktop.MessageBoxes().Show("Save?", "caption", MsgButtons::YesNoCancel, MsgIcon::Question);
        };
        program.desktop.window.close();
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGTERM), "(^|\n)suspended $");
}

TEST_F(QtSessionTest, OfSeveralSignalsTheFirstEndsTheProgram) {
    const auto end = [] {
        Program program;
        program.desktop.window.onSuspend = [] {
            std::cerr << "suspended ";
            ::raise(SIGTERM);
        };
        ::raise(SIGHUP);
        ::raise(SIGHUP);
        program.Run();
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGHUP), "(^|\n)suspended $");
}

TEST_F(QtSessionTest, ASignalThatWasIgnoredIsIgnoredFurther) {
    const auto end = [] {
        std::signal(SIGHUP, SIG_IGN);
        Program program;
        ::raise(SIGHUP);
        program.desktop.window.onIdle = [&program] { program.desktop.window.Unload(); };
        program.Run();
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "(^|\n)unloaded $");
}

TEST_F(QtSessionTest, TheWordToEndSuspendsTheWindowFirst) {
    const auto end = [] {
        Program program;
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "(^|\n)suspended unloaded $");
}

TEST_F(QtSessionTest, AnEndWithoutASessionTouchesNoWindow) {
    const auto end = [] {
        Program program;
        program.session.reset();
        std::cerr << "end ";
        std::exit(3);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(3), "(^|\n)end $");
}

// An X server of one's own. Returns its process, and in `display` its name.
pid_t StartDisplay(std::string& display) {
    std::array<int, 2> ends = {-1, -1};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const pid_t server = ::fork();
    if (server == 0) {
        const std::string number = std::to_string(ends[1]);
        ::execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-nolisten", "tcp", nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    char digit = 0;
    for (display = ":"; ::read(ends[0], &digit, 1) == 1 && digit != '\n';) {
        display += digit;
    }
    ::close(ends[0]);
    return server;
}

TEST_F(QtSessionTest, ALostDisplaySuspendsTheWindow) {
    constexpr const char* variable = "TESSALY_TEST_DISPLAY"; // so that the other process starts none
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    pid_t server = qEnvironmentVariableIntValue(variable);
    if (server == 0) {
        std::string display;
        server = StartDisplay(display);
        ASSERT_GT(display.size(), 1U) << "Xvfb did not start";
        qputenv("DISPLAY", display.c_str());
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv(variable, std::to_string(server).c_str());
    }
    const auto end = [server] {
        Program program;
        qt::Post(program.desktop.window, [server] { ::kill(server, SIGKILL); });
        program.Run();
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(1), "(^|\n)suspended $");
    ::kill(server, SIGKILL);
    ::waitpid(server, nullptr, 0);
    qunsetenv("DISPLAY");
    qunsetenv(variable);
    qputenv("QT_QPA_PLATFORM", platform);
}

} // namespace
} // namespace tessaly
