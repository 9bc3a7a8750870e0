// Only on Linux: keys as Qt brings them, the language of the help, the output of started programs.
#include "platform/desktop/qt/Keys.h"
#include "tests/contract/qt/QtDriver.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidgetItem>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tessaly {
namespace {

class QtDesktopTest : public testing::Test {
protected:
    QtDriver user{Launch{}};
};

int Virtual(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return qt::VirtualKey(QKeyEvent(QEvent::KeyPress, key, modifiers));
}

TEST(QtKeysTest, KeysHaveTheNumbersOfWindows) {
    EXPECT_EQ(Virtual(Qt::Key_F1), 112);
    EXPECT_EQ(Virtual(Qt::Key_F10), 121);
    EXPECT_EQ(Virtual(Qt::Key_F24), 135);
    EXPECT_EQ(Virtual(Qt::Key_A), 'A');
    EXPECT_EQ(Virtual(Qt::Key_9), '9');
    EXPECT_EQ(Virtual(Qt::Key_9, Qt::KeypadModifier), 105);
    EXPECT_EQ(Virtual(Qt::Key_Backtab, Qt::ShiftModifier), 9);
    EXPECT_EQ(Virtual(Qt::Key_Enter), 13);
    EXPECT_EQ(Virtual(Qt::Key_Plus), KeyPlus);
    EXPECT_EQ(Virtual(Qt::Key_Minus), KeyMinus);
    EXPECT_EQ(Virtual(Qt::Key_Plus, Qt::KeypadModifier), KeyAdd);
    EXPECT_EQ(Virtual(Qt::Key_Minus, Qt::KeypadModifier), KeySubtract);
    EXPECT_EQ(Virtual(Qt::Key_Delete), 46);
    EXPECT_EQ(Virtual(Qt::Key_Udiaeresis), 255);
    EXPECT_EQ(qt::ShiftState(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier), 7);
}

TEST_F(QtDesktopTest, AButtonThatTheTabKeyLeadsToShowsIt) {
    const BarControls& bar = user.Qt().Bar();
    user.Qt().window.Show();
    for (Button* const button : {&bar.matchCase, &bar.next}) {
        bar.Hide();
        bar.wanted.SetVisible(true);
        button->SetExtent({4500, 1200, 2400, 450});
        button->SetVisible(true);
        user.Click(bar.wanted);
        auto& widget = static_cast<qt::Button*>(button)->Widget();
        const QImage before = widget.grab().toImage();
        user.PressKey(KeyTab, 0);
        EXPECT_TRUE(widget.hasFocus());
        EXPECT_NE(widget.grab().toImage(), before);
        user.Click(bar.wanted);
        EXPECT_EQ(widget.grab().toImage(), before);
    }
}

TEST_F(QtDesktopTest, TheToolTipOfAnItemThatIsCutOffHasItsName) {
    user.Qt().window.Show();
    const std::string cutOff = "<b>" + std::string(200, 'x');
    qt::TreeView& tree = user.Qt().tree;
    for (const std::string& text : {std::string("short"), cutOff}) {
        tree.Add(TreeItem::None, text, text);
        QTreeWidgetItem& node = *tree.Widget().topLevelItem(text == cutOff ? 1 : 0);
        const auto tip = [&] {
            QWidget& view = *tree.Widget().viewport();
            const QPoint point = tree.Widget().visualItemRect(&node).center();
            QHelpEvent rest(QEvent::ToolTip, point, view.mapToGlobal(point));
            QCoreApplication::sendEvent(&view, &rest);
            return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText().toStdString();
        };
        EXPECT_EQ(tip(), text == cutOff ? text : "");
        node.setToolTip(0, "a message");
        EXPECT_EQ(tip(), text == cutOff ? text + "\na message" : "a message");
    }
}

TEST_F(QtDesktopTest, F10IsAKeyLikeAnyOther) {
    user.Qt().AddMenu(nullptr, "mnuFile");
    user.Qt().window.Show();
    std::vector<int> keys;
    user.Qt().window.onKeyDown = [&keys](int key, int) { keys.push_back(key); };
    user.PressKey(KeyF10, 0);
    user.PressKey(KeyF10, 1);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), KeyF10), 2);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(QtDesktopTest, KeysInAnOpenMenuAreTheMenus) {
    MenuItem& file = user.Qt().AddMenu(nullptr, "mnuFile");
    user.Qt().AddMenu(&file, "mnuOpen");
    user.Qt().window.Show();
    int keys = 0;
    user.Qt().window.onKeyDown = [&keys](int, int) { ++keys; };
    QMenu& menu = static_cast<qt::MenuItem&>(file).DropDown();
    menu.popup(user.Qt().window.pos());
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    user.PressKey(KeyF5, 0);
    EXPECT_EQ(keys, 0);
    menu.close();
    user.PressKey(KeyF5, 0);
    EXPECT_EQ(keys, 1);
}

TEST_F(QtDesktopTest, TextDroppedIntoThePaneIsAnEditThere) {
    user.Qt().window.Show();
    user.Qt().tree.SetFocus();
    user.Settle();
    std::vector<std::string> events;
    user.Qt().pane.onGotFocus = [&events] { events.emplace_back("got focus"); };
    user.Qt().pane.onChange = [&events] { events.emplace_back("change"); };
    QMimeData data;
    data.setText("dropped");
    QWidget& text = *user.Qt().pane.Widget().viewport();
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&text, &enter);
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&text, &drop);
    EXPECT_EQ(user.PaneShown(), "dropped");
    EXPECT_EQ(events, (std::vector<std::string>{"got focus", "change"}));
}

TEST_F(QtDesktopTest, AHelpFolderIsOpenedInTheLanguageOfTheProgramOrAsItIs) {
    const std::string folder = user.FilePath("help");
    std::filesystem::create_directories(folder + "/de");
    std::ofstream(folder + "/de/index.html") << "";
    std::string language;
    user.Qt().app.helpLanguage = [&language]() -> std::string_view { return language; };
    const auto opened = [&](const std::string& file, const std::string& in) {
        user.Qt().app.helpFile = file;
        language = in;
        user.Qt().app.OpenHelp();
        return qt::FromQt(user.Qt().help->source().toLocalFile());
    };
    EXPECT_EQ(opened(folder, "de"), folder + "/de/index.html");
    EXPECT_EQ(opened(folder, "fr"), folder + "/index.html");
    EXPECT_EQ(opened(folder + "/de/index.html", "fr"), folder + "/de/index.html");
}

TEST_F(QtDesktopTest, OnlyHtmlThatABrowserTakesIsLeftToTheSystem) {
    const std::string asked = user.FilePath("bin/xdg-mime");
    const std::string applications = user.FilePath(".local/share/applications");
    const std::string page = user.FilePath("page.html");
    std::ofstream(page) << "<title>A page</title><p>text";
    std::ofstream(asked) << "#!/bin/sh\ncat \"" << user.FilePath("opener") << "\"\n";
    ASSERT_EQ(::chmod(asked.c_str(), 0700), 0);
    std::filesystem::create_directories(applications);
    std::ofstream(applications + "/editor.desktop") << "[Desktop Entry]\nCategories=Utility;TextEditor;\n";
    std::ofstream(applications + "/browser.desktop") << "[Desktop Entry]\nCategories=Network;WebBrowser;\n";
    user.Qt().app.helpFile = page;
    const auto isShownBy = [&](const std::string& opener) {
        std::ofstream(user.FilePath("opener")) << opener;
        user.Qt().help.reset();
        user.Qt().app.OpenHelp();
        return user.Qt().help != nullptr && user.Qt().help->isVisible();
    };
    EXPECT_FALSE(isShownBy("browser.desktop\n"));
    for (const char* const other : {"editor.desktop\n", "missing.desktop\n", ""}) {
        EXPECT_TRUE(isShownBy(other)) << other;
        EXPECT_EQ(user.Qt().help->windowTitle(), "A page");
    }
    user.Qt().app.helpFile = user.FilePath("page.pdf");
    EXPECT_FALSE(isShownBy("editor.desktop\n"));
}

TEST_F(QtDesktopTest, TheWindowOfTheHelpFitsOnTheScreenAndHasTheIcon) {
    user.Qt().app.onShowHelp(user.FilePath("page.html"));
    const QWidget& help = *user.Qt().help;
    const QSize screen = help.screen()->availableSize();
    EXPECT_LT(help.width(), screen.width());
    EXPECT_LT(help.height(), screen.height());
    EXPECT_FALSE(help.windowIcon().isNull());
}

TEST_F(QtDesktopTest, WhatAProcessWritesComesIntoTheFileThatIsFollowed) {
    const std::string program = user.FilePath("writes");
    std::ofstream(program) << "#!/bin/sh\necho \"for $1\"\necho mistake >&2\n";
    ASSERT_EQ(::chmod(program.c_str(), 0700), 0);
    qt::Application& application = user.Qt().app;
    const std::string path = application.OutputPath("");
    EXPECT_EQ(path, user.FilePath(".local/state/tessaly/build.log"));
    std::string content;
    application.onFollowed = [&] {
        std::ifstream file(path);
        content.assign(std::istreambuf_iterator<char>(file), {});
    };
    application.StartProcess(program + " \"a b\"", MaximizedWithFocus);
    application.Follow(path);
    application.onFollowed(); // it may be through already
    EXPECT_TRUE(QTest::qWaitFor([&content] { return content == "for a b\nmistake\n"; }, 20000));
}

TEST_F(QtDesktopTest, WithoutAFolderForTheStateOutputGoesIntoATemporaryOne) {
    std::filesystem::create_directories(user.FilePath(".local/state"));
    std::ofstream(user.FilePath(".local/state/tessaly")) << "in the way";
    const std::string path = user.Qt().app.OutputPath("");
    EXPECT_TRUE(path.starts_with("/tmp/tessaly-")) << path;
    EXPECT_TRUE(path.ends_with("/build.log")) << path;
}

TEST_F(QtDesktopTest, TheMessagesWindowDoesNotAskForTheKeyboard) {
    const qt::MessagesWindow& messages = user.Qt().Messages();
    EXPECT_TRUE(messages.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(messages.parentWidget(), &user.Qt().window);
}

TEST_F(QtDesktopTest, ATitleOfADialogIsNeverTheNameOfTheProgram) {
    const std::unique_ptr<SplashWindow> splash = user.Qt().NewSplashWindow();
    splash->onKeyPress = [&splash] { splash->Hide(); };
    QString title;
    user.WillUseSplash([&title](SplashWindowUser& window) {
        title = QApplication::activeModalWidget()->windowTitle();
        window.PressKey('A');
    });
    user.Qt().window.Show();
    splash->ShowModal();
    EXPECT_EQ(title, " ");
}

TEST_F(QtDesktopTest, AFrameTellsWhichControlHasTheKeyboard) {
    user.Qt().window.Show();
    QWidget& tree = user.Qt().tree.Widget();
    QWidget& pane = user.Qt().pane.Widget();
    tree.move(20, 80);
    pane.move(320, 80);
    const QColor framed = tree.palette().color(QPalette::Highlight);
    const auto edge = [this](const QWidget& control) {
        user.Settle();
        const QImage seen = user.Qt().window.grab().toImage();
        return seen.pixelColor(control.mapTo(&user.Qt().window, QPoint(-1, control.height() / 2)));
    };
    ASSERT_TRUE(QTest::qWaitForWindowActive(&user.Qt().window));
    user.Qt().tree.SetFocus();
    EXPECT_EQ(edge(tree), framed);
    EXPECT_NE(edge(pane), framed);
    user.Qt().pane.SetFocus();
    EXPECT_NE(edge(tree), framed);
    EXPECT_EQ(edge(pane), framed);
}

TEST_F(QtDesktopTest, TheSelectedItemIsSeenAlsoWithoutTheFocus) {
    user.Qt().window.Show();
    TreeView& tree = user.Qt().tree;
    tree.Select(tree.Add(TreeItem::None, "a", "."));
    tree.Add(TreeItem::None, "b", ".");
    qt::TreeWidget& widget = user.Qt().tree.Widget();
    const auto colour = [&](const char* key) {
        user.Settle();
        const QRect place = widget.visualItemRect(&user.NodeOf(tree.Find(key)));
        return widget.viewport()->grab().toImage().pixelColor(place.right() - 3, place.center().y());
    };
    QPalette unaware = widget.palette(); // some styles make no difference
    unaware.setColor(QPalette::Inactive, QPalette::Highlight, unaware.color(QPalette::Active, QPalette::Highlight));
    widget.setPalette(unaware);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&user.Qt().window));
    user.Qt().pane.SetFocus();
    EXPECT_NE(colour("a"), unaware.color(QPalette::Active, QPalette::Highlight));
    EXPECT_GT(std::abs(colour("a").lightness() - colour("b").lightness()), 30);
}

// What a message box looks like while it is shown.
struct BoxShown {
    int width = 0;
    bool isWrapped = false;
};

BoxShown ShowBox(QtDriver& user, std::string_view text, std::string_view caption) {
    BoxShown shown;
    QTimer::singleShot(0, [&shown] {
        const QWidget& box = *QApplication::activeModalWidget();
        const auto& label = *box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const auto lines = static_cast<int>(label.text().count(u'\n')) + 1;
        shown.width = box.width();
        shown.isWrapped =
            label.heightForWidth(label.width()) > (lines + 1) * label.fontMetrics().lineSpacing() ||
            (label.wordWrap() && label.width() < label.fontMetrics().size(Qt::TextExpandTabs, label.text()).width());
    });
    user.WillPress(MsgResult::Ok);
    user.Qt().MessageBoxes().Show(text, caption, MsgButtons::Ok, MsgIcon::Information);
    return shown;
}

TEST_F(QtDesktopTest, AMessageBoxIsWideEnoughForItsCaption) {
    user.Qt().window.Show();
    const std::string caption = "L\xC3\xB6schen function, and a good deal more of it";
    const int narrow = ShowBox(user, "X ?", "X").width;
    const int wide = ShowBox(user, "X ?", caption).width;
    EXPECT_GT(wide, narrow);
    EXPECT_GT(wide, QFontMetrics(QApplication::font()).horizontalAdvance(qt::ToQt(caption)) + 100);
}

TEST_F(QtDesktopTest, AListWithColumnsIsNotWrapped) {
    user.Qt().window.Show();
    const std::string line =
        "<F3>\tGlobale Referenzen ausw\xC3\xA4hlen, Funktionscode, Ereigniscode und noch vieles mehr";
    EXPECT_FALSE(ShowBox(user, "<F2>\tCode\n" + line + "\n\n<F4>\tmore", "Hot-Keys").isWrapped);
}

std::string SpokenName(QWidget& widget) {
    return qt::FromQt(QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name));
}

TEST_F(QtDesktopTest, AScreenReaderSaysTheLabelOfAControl) {
    user.Qt().window.Show();
    user.Qt().treeLabel.SetCaption("Code & Viewer");
    user.Qt().paneLabel.SetCaption("Funktionen");
    EXPECT_EQ(SpokenName(user.Qt().tree.Widget()), "Code & Viewer");
    EXPECT_EQ(SpokenName(user.Qt().pane.Widget()), "Funktionen");
    user.Qt().paneLabel.SetCaption("Ereignisse");
    EXPECT_EQ(SpokenName(user.Qt().pane.Widget()), "Ereignisse");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&user.Qt().status.Widget())->role(), QAccessible::StatusBar);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&user.Qt().toolBar.Widget())->role(), QAccessible::ToolBar);
}

TEST_F(QtDesktopTest, AScreenReaderSaysTheRequestForTheNameBox) {
    const std::unique_ptr<NameWindow> dialog = user.Qt().NewNameWindow();
    dialog->SetTexts({"", "Please type in the name", ""});
    dialog->onCancel = [&dialog] { dialog->Hide(); };
    std::string name;
    user.WillUseName([&name](NameWindowUser& window) {
        name = SpokenName(*QApplication::activeModalWidget()->findChild<QLineEdit*>());
        window.PressCancel();
    });
    user.Qt().window.Show();
    dialog->ShowModal();
    EXPECT_EQ(name, "Please type in the name");
}

// As the program does it, which waits when nothing is to be done.
void RunUntil(const bool& isDone) {
    while (!isDone) {
        QCoreApplication::eventDispatcher()->wakeUp();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

TEST_F(QtDesktopTest, TheWindowIsIdleBehindAllThatWaits) {
    user.Qt().window.Show();
    user.ClickPane();
    user.Settle();
    bool isIdle = false;
    std::string shown;
    user.Qt().window.onIdle = [&] {
        isIdle = true;
        shown = user.PaneShown();
    };
    qt::Post(user.Qt().window, [&] {
        qt::Post(user.Qt().window, [&] { user.Type("b"); });
        user.Type("a");
    });
    RunUntil(isIdle);
    EXPECT_EQ(shown, "ab");
}

TEST_F(QtDesktopTest, TheWindowIsPaintedBeforeItIsIdle) {
    class Painted final : public QObject {
    public:
        bool eventFilter(QObject* /*object*/, QEvent* event) override {
            isDone = isDone || event->type() == QEvent::Paint;
            return false;
        }
        bool isDone = false;
    } painted;
    user.Qt().window.Show();
    user.Settle();
    user.Qt().pane.Widget().viewport()->installEventFilter(&painted);
    bool isIdle = false;
    bool isPaintedFirst = false;
    user.Qt().window.onIdle = [&] {
        isIdle = true;
        isPaintedFirst = painted.isDone;
    };
    user.Qt().pane.SetText("text");
    RunUntil(isIdle);
    EXPECT_TRUE(isPaintedFirst);
}

TEST_F(QtDesktopTest, TheWindowIsNeverLargerThanTheScreen) {
    const QSize screen = user.Qt().window.screen()->availableSize();
    EXPECT_LE(user.Qt().window.width(), screen.width());
    EXPECT_LE(user.Qt().window.height(), screen.height());
}

} // namespace
} // namespace tessaly
