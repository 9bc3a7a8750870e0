// What a user does goes in as the window system would bring it, through the window and not to a control directly.
#include "tests/contract/qt/QtDriver.h"

#include "platform/desktop/qt/Pictures.h"
#include "platform/system/posix/Process.h"
#include "tests/contract/qt/Drawn.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDropEvent>
#include <QImage>
#include <QLayout>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTreeWidgetItemIterator>
#include <QUrl>
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>

namespace tessaly {

namespace {

struct KeyPair {
    int virtualKey;
    Qt::Key key;
    const char* text;
};

constexpr KeyPair SpecialKeys[] = {{8, Qt::Key_Backspace, "\b"}, {9, Qt::Key_Tab, "\t"},    {13, Qt::Key_Return, "\r"},
                                   {27, Qt::Key_Escape, ""},     {32, Qt::Key_Space, " "},  {33, Qt::Key_PageUp, ""},
                                   {34, Qt::Key_PageDown, ""},   {35, Qt::Key_End, ""},     {37, Qt::Key_Left, ""},
                                   {38, Qt::Key_Up, ""},         {40, Qt::Key_Down, ""},    {93, Qt::Key_Menu, ""},
                                   {107, Qt::Key_Plus, "+"},     {109, Qt::Key_Minus, "-"}, {187, Qt::Key_Plus, "+"},
                                   {189, Qt::Key_Minus, "-"},    {191, Qt::Key_Slash, "/"}};

Qt::KeyboardModifiers Modifiers(int shift) {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    modifiers.setFlag(Qt::ShiftModifier, (shift & 1) != 0);
    modifiers.setFlag(Qt::ControlModifier, (shift & 2) != 0);
    modifiers.setFlag(Qt::AltModifier, (shift & 4) != 0);
    return modifiers;
}

} // namespace

QtDriver::QtDriver(const Launch& launch) : mPath(qgetenv("PATH")) {
    MakeProgram(FilePath("bin/xdg-open"), "\"$@\" >>'" + FilePath("opened") + "'");
    MakeProgram(FilePath("bin/xdg-mime"), "\"\" >/dev/null"); // knows no browser, whatever this machine has
    MakeProgram(FilePath("a program"), "\"$0\" \"$@\" >>'" + FilePath("started") + "'");
    qputenv("PATH", QByteArray::fromStdString(FilePath("bin")) + ":" + mPath);
    const Environment environment = [this](const std::string& name) { return Variable(name); };
    mSettings.emplace(mFiles, environment);
    mDesktop = std::make_unique<qt::Desktop>(launch.commandLine, environment, *mSettings);
    PlaceControls();
    mDesktop->window.onEnded = nullptr; // nobody runs the event loop here
}

QtDriver::~QtDriver() {
    EXPECT_EQ(mDialogs.AnswersLeft(), 0U);
    mDesktop.reset();
    qputenv("PATH", mPath);
}

// As a program would, so that the user can reach everything.
void QtDriver::PlaceControls() {
    mDesktop->tree.SetExtent({0, 1000, 4000, 5000});
    mDesktop->pane.SetExtent({4500, 1000, 8000, 5000});
}

// This platform has no window manager, which would give the keyboard back when a dialog goes.
void QtDriver::Settle() {
    QCoreApplication::processEvents();
    if (IsShown() && TakesInput() && !mOtherWindow && !mIsInMessages && !mDesktop->window.isActiveWindow()) {
        mDesktop->window.activateWindow();
    }
    for (int round = 0; round < 5; ++round) { // what is done may send something again
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
    for (int round = 0; round < 3; ++round) { // would wait, and so is idle first
        QCoreApplication::eventDispatcher()->wakeUp();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    mIsInMessages = mIsInMessages && !mDesktop->window.isActiveWindow();
}

void QtDriver::PressKey(int keyCode, int shift) {
    PressKeyAt(MainHandle(), keyCode, shift);
}

void QtDriver::PressKeyAt(QWindow* window, int keyCode, int shift) {
    const auto press = [&](Qt::Key key, const QString& text) {
        QTest::sendKeyEvent(QTest::Click, window, key, text, Modifiers(shift));
    };
    const auto special = std::find_if(std::begin(SpecialKeys), std::end(SpecialKeys),
                                      [keyCode](const KeyPair& pair) { return pair.virtualKey == keyCode; });
    if (special != std::end(SpecialKeys)) {
        press(special->key, QString::fromUtf8(special->text));
    } else if (keyCode >= KeyF1) {
        press(static_cast<Qt::Key>(Qt::Key_F1 + (keyCode - KeyF1)), {});
    } else {
        const QString capital = QChar(keyCode);
        press(static_cast<Qt::Key>(keyCode), (shift & 1) != 0 ? capital : capital.toLower());
    }
}

void QtDriver::Resize(float width, float height) {
    qt::Window& frame = mDesktop->window;
    frame.resize(frame.width() + qt::ToPixels(width - mDesktop->window.Width()),
                 frame.height() + qt::ToPixels(height - mDesktop->window.Height()));
    Settle();
}

void QtDriver::CloseByUser() {
    mDesktop->window.close();
    Settle();
}

// Qt's platform for tests has no X server, so its event is made here.
void QtDriver::DestroyFromOutside() {
    const auto window = static_cast<quint32>(mDesktop->window.winId());
    std::array<quint32, 8> event = {17, window, window}; // DestroyNotify
    qintptr result = 0;
    QCoreApplication::eventDispatcher()->filterNativeEvent("xcb_generic_event_t", event.data(), &result);
    Settle();
}

void QtDriver::GoToAnotherWindow() {
    mOtherWindow = std::make_unique<QWidget>();
    mOtherWindow->show();
    mOtherWindow->activateWindow();
    Settle();
}

void QtDriver::ComeBack() {
    mOtherWindow.reset();
    Settle();
}

// No display takes the keyboard here, so its word is given here.
void QtDriver::GoToAnotherProgram() {
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    Settle();
}

void QtDriver::DropFile(const std::string& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(qt::ToQt(path))});
    qt::Window& frame = mDesktop->window;
    const QPoint place = frame.rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&frame, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&frame, &drop);
    Settle();
}

bool QtDriver::TakesInput() const {
    return QApplication::activeModalWidget() == nullptr;
}

std::string QtDriver::Icon() const {
    return std::to_string(mDesktop->window.windowIcon().cacheKey());
}

Extent QtDriver::Shown(Control& control) const {
    const QRect place = WidgetOf(control).geometry();
    return {qt::ToTwips(place.x()), qt::ToTwips(place.y()), qt::ToTwips(place.width()), qt::ToTwips(place.height())};
}

std::vector<std::pair<Control*, QWidget*>> QtDriver::Widgets() const {
    qt::Desktop& desktop = *mDesktop;
    std::vector<std::pair<Control*, QWidget*>> widgets;
    const auto add = [&widgets](auto&... controls) { (widgets.emplace_back(&controls, &controls.Widget()), ...); };
    add(desktop.treeLabel, desktop.tree, desktop.paneLabel, desktop.pane, desktop.toolBar, desktop.status);
    qt::PaneBar& bar = desktop.OwnBar();
    add(bar.wantedLabel, bar.wanted, bar.count, bar.matchCase, bar.wholeWord, bar.previous, bar.next, bar.close,
        bar.replacementLabel, bar.replacement, bar.replaceOne, bar.replaceAll);
    return widgets;
}

QWidget& QtDriver::WidgetOf(Control& control) const {
    const std::vector<std::pair<Control*, QWidget*>> widgets = Widgets();
    return *std::find_if(widgets.begin(), widgets.end(), [&control](const auto& pair) {
                return pair.first == &control;
            })->second;
}

void QtDriver::Click(Control& control) {
    Settle();
    const QWidget& widget = WidgetOf(control);
    const bool isCheckBox = qobject_cast<const QCheckBox*>(&widget) != nullptr; // which is no wider than its caption
    Click(widget, isCheckBox ? QPoint(8, widget.height() / 2) : widget.rect().center());
    Settle();
}

std::string QtDriver::WordsOn(Control& control) const {
    QWidget& widget = WidgetOf(control);
    if (const auto* const line = qobject_cast<QLineEdit*>(&widget)) {
        return qt::FromQt(line->text());
    }
    if (const auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        return qt::FromQt(button->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
    }
    return LabelText(dynamic_cast<Label&>(control));
}

// The ampersands of a label with a buddy are doubled.
std::string QtDriver::LabelText(Label& label) const {
    return qt::FromQt(
        static_cast<qt::Label&>(label).Widget().text().replace(QStringLiteral("&&"), QStringLiteral("&")));
}

QTreeWidgetItem& QtDriver::NodeOf(TreeItem item) const {
    QTreeWidgetItemIterator node(&mDesktop->tree.Widget());
    while ((*node)->data(0, Qt::UserRole).toUInt() != static_cast<unsigned>(item)) {
        ++node;
    }
    return **node;
}

bool QtDriver::IsExpanded(TreeItem item) const {
    return NodeOf(item).isExpanded();
}

std::vector<std::string> QtDriver::TreeShown() const {
    std::vector<std::string> lines;
    for (QTreeWidgetItemIterator node(&mDesktop->tree.Widget()); *node != nullptr; ++node) {
        std::string line = qt::FromQt((*node)->text(0)) + ((*node)->isSelected() ? "*" : "");
        for (const QTreeWidgetItem* above = (*node)->parent(); above != nullptr; above = above->parent()) {
            line.insert(0, "  ");
        }
        lines.push_back(line);
    }
    return lines;
}

QPoint QtDriver::PlaceOfItem(TreeItem item) {
    qt::TreeWidget& tree = mDesktop->tree.Widget();
    QTreeWidgetItem& node = NodeOf(item);
    tree.scrollToItem(&node);
    const QRect place = tree.visualItemRect(&node);
    EXPECT_TRUE(place.isValid()) << "a click on a tree item that cannot be seen";
    return place.center();
}

void QtDriver::ClickItem(TreeItem item) {
    Click(*mDesktop->tree.Widget().viewport(), PlaceOfItem(item));
}

QRect QtDriver::CaretAt(std::size_t position) const {
    const qt::PlainTextEdit& pane = mDesktop->pane.Widget();
    QTextCursor cursor = pane.textCursor();
    cursor.setPosition(static_cast<int>(qt::ToQt(std::string_view(PaneShown()).substr(0, position)).size()));
    return pane.cursorRect(cursor);
}

float QtDriver::LeftOf(std::size_t position) {
    Settle();
    return qt::ToTwips(CaretAt(position).left());
}

void QtDriver::MoveSelectionDown() {
    Key(Qt::Key_Down);
}

// The arrow stands in front of the item.
void QtDriver::CollapseItem(TreeItem item) {
    const qt::TreeWidget& tree = mDesktop->tree.Widget();
    const QRect place = tree.visualItemRect(&NodeOf(item));
    Click(*tree.viewport(), {place.left() - tree.indentation() / 2, place.center().y()});
    EXPECT_FALSE(IsExpanded(item));
}

// As the tree draws it, and as a screen reader and the tool tip tell it.
std::string QtDriver::MarkShown(TreeItem item) {
    const QTreeWidgetItem& node = NodeOf(item);
    const QString description = node.data(0, Qt::AccessibleDescriptionRole).toString();
    EXPECT_EQ(node.toolTip(0), description);
    const QSize size = mDesktop->tree.Widget().iconSize();
    const Mark mark = node.icon(0).isNull() ? Mark::None : MarkOf(node.icon(0).pixmap(size).toImage());
    return LookShown(mark, node.font(0).italic(), qt::FromQt(description));
}

// They differ in shape: the colours are left out.
Mark QtDriver::MarkOf(const QImage& picture) const {
    for (const Mark mark : {Mark::Warning, Mark::Error}) {
        const QImage expected = qt::Picture(mark, picture.width(), 1, QPalette());
        if (expected.convertToFormat(QImage::Format_Alpha8) == picture.convertToFormat(QImage::Format_Alpha8)) {
            return mark;
        }
    }
    ADD_FAILURE() << "a picture of nothing that is known";
    return Mark::None;
}

void QtDriver::ClickPane() {
    const QWidget& text = *mDesktop->pane.Widget().viewport();
    Click(text, text.rect().center());
}

void QtDriver::SetCaret(std::size_t position) {
    QTextCursor cursor = mDesktop->pane.Widget().textCursor();
    cursor.setPosition(static_cast<int>(qt::ToQt(std::string_view(PaneShown()).substr(0, position)).size()));
    mDesktop->pane.Widget().setTextCursor(cursor);
}

void QtDriver::SelectAll() {
    Key(Qt::Key_A, Qt::ControlModifier);
}

void QtDriver::Type(std::string_view text) {
    const QString characters = qt::ToQt(text);
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const qsizetype length = characters[i].isHighSurrogate() ? 2 : 1;
        Key(Qt::Key_unknown, Qt::NoModifier, characters.mid(i, length));
        i += length - 1;
    }
}

void QtDriver::PressEnter() {
    Key(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
}

void QtDriver::Backspace() {
    Key(Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
}

void QtDriver::Paste(std::string_view text) {
    QGuiApplication::clipboard()->setText(qt::ToQt(text));
    Key(Qt::Key_V, Qt::ControlModifier);
}

void QtDriver::Undo() {
    Key(Qt::Key_Z, Qt::ControlModifier);
}

std::string QtDriver::PaneShown() const {
    return qt::FromQt(mDesktop->pane.Widget().document()->toRawText().replace(u'\x2029', u'\n'));
}

QRect QtDriver::MarginPlace() const {
    const qt::PlainTextEdit& pane = mDesktop->pane.Widget();
    const QRect text = pane.viewport()->geometry();
    const int left = pane.contentsRect().left();
    return {left, text.top(), text.left() - left, text.height()};
}

std::vector<std::string> QtDriver::MarginShown() {
    Settle();
    const Drawn drawn = DrawnBy(mDesktop->pane.Widget(), MarginPlace());
    std::vector<std::string> lines;
    for (const Drawn::Text& text : drawn.texts) {
        lines.push_back(qt::FromQt(text.text));
        for (const Drawn::Picture& picture : drawn.pictures) {
            if (picture.top < text.baseline && picture.top + picture.image.height() > text.baseline - 2) {
                lines.back() += " " + NameOf(MarkOf(picture.image));
            }
        }
    }
    return lines;
}

std::vector<std::string> QtDriver::Underlined() {
    Settle();
    std::vector<std::string> texts;
    for (const QTextEdit::ExtraSelection& each : mDesktop->pane.Widget().extraSelections()) {
        if (each.format.underlineStyle() == QTextCharFormat::WaveUnderline) {
            texts.push_back(qt::FromQt(each.cursor.selectedText()));
        }
    }
    return texts;
}

// Most of its cell.
std::string QtDriver::PaneSaid() {
    return qt::FromQt(QAccessible::queryAccessibleInterface(&mDesktop->pane.Widget())->text(QAccessible::Description));
}

std::uint32_t QtDriver::ColourBehind(std::size_t position) {
    Settle();
    qt::PlainTextEdit& pane = mDesktop->pane.Widget();
    const QRect begin = CaretAt(position);
    const int width = pane.fontMetrics().horizontalAdvance(u'0');
    const QImage shown = pane.viewport()->grab().toImage();
    std::map<std::uint32_t, int> counts;
    for (int x = begin.left() + 1; x < begin.left() + width; ++x) {
        for (int y = begin.top() + 1; y < begin.bottom(); ++y) {
            ++counts[shown.pixel(x, y) & 0xFFFFFFU];
        }
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most->first;
}

void QtDriver::ClickMargin() {
    Click(mDesktop->pane.Widget(), MarginPlace().center());
}

SeenMessages QtDriver::Messages() const {
    qt::MessagesWindow& window = mDesktop->Messages();
    QTreeWidget& list = window.Rows();
    SeenMessages seen;
    seen.isVisible = window.isVisible();
    seen.caption = qt::FromQt(window.windowTitle());
    for (int page = 0; page < window.Pages().count(); ++page) {
        const bool isInFront = page == window.Pages().currentIndex();
        seen.pages.push_back(qt::FromQt(window.Pages().tabText(page)) + (isInFront ? "*" : ""));
    }
    for (int column = 0; column < list.columnCount(); ++column) {
        seen.heads.push_back(qt::FromQt(list.headerItem()->text(column)));
    }
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
        const QTreeWidgetItem& item = *list.topLevelItem(row);
        seen.rows.push_back(qt::FromQt(item.text(0) + '|' + item.text(1) + '|' + item.text(2) + '|' + item.text(3)) +
                            (item.isSelected() ? "*" : ""));
        if (item.isSelected()) {
            const QRect place = list.visualItemRect(&item);
            seen.isSelectedInView = list.viewport()->rect().contains(place.center().x(), place.center().y()) ||
                                    list.viewport()->rect().contains(QPoint(1, place.center().y()));
        }
    }
    seen.printed = qt::FromQt(window.Printed().toPlainText());
    seen.hasKeyboard = window.isActiveWindow();
    return seen;
}

void QtDriver::GoToMessages() {
    ASSERT_TRUE(mDesktop->Messages().isVisible()) << "an action in the messages window, which is not shown";
    mIsInMessages = true;
    mDesktop->Messages().activateWindow();
    Settle();
}

QPoint QtDriver::PlaceOfMessage(std::size_t row) const {
    QTreeWidget& list = mDesktop->Messages().Rows();
    QTreeWidgetItem* const item = list.topLevelItem(static_cast<int>(row));
    list.scrollToItem(item);
    return list.viewport()->mapTo(&mDesktop->Messages(), QPoint(5, list.visualItemRect(item).center().y()));
}

void QtDriver::ClickMessage(std::size_t row) {
    GoToMessages();
    QTest::mouseClick(mDesktop->Messages().windowHandle(), Qt::LeftButton, Qt::NoModifier, PlaceOfMessage(row));
    Settle();
}

void QtDriver::DoubleClickMessage(std::size_t row) {
    ClickMessage(row);
    QTest::mouseDClick(mDesktop->Messages().windowHandle(), Qt::LeftButton, Qt::NoModifier, PlaceOfMessage(row));
    Settle();
}

void QtDriver::PressKeyInMessages(int keyCode, int shift) {
    GoToMessages();
    PressKeyAt(mDesktop->Messages().windowHandle(), keyCode, shift);
    Settle();
}

void QtDriver::CloseMessages() {
    GoToMessages();
    mDesktop->Messages().close();
    Settle();
}

Size QtDriver::SizeOfMessages() const {
    const QSize size = mDesktop->Messages().size();
    return {qt::ToTwips(size.width()), qt::ToTwips(size.height())};
}

void QtDriver::ResizeMessages(const Size& size) {
    GoToMessages();
    mDesktop->Messages().resize(qt::ToPixels(size.width), qt::ToPixels(size.height));
    Settle();
}

bool QtDriver::IsCovered(Control& control) const {
    const QWidget& widget = WidgetOf(control);
    const QRect place(widget.mapToGlobal(QPoint(0, 0)), widget.size());
    return mDesktop->Messages().isVisible() && mDesktop->Messages().frameGeometry().intersects(place);
}

void QtDriver::FillScreen() {
    mDesktop->window.setGeometry(mDesktop->window.screen()->availableGeometry());
    Settle();
}

const QLabel& QtDriver::PanelOf(std::int32_t number) const {
    return *mDesktop->status.Widget().findChildren<QLabel*>().at(number - 1);
}

QWidget& QtDriver::ButtonOf(std::int32_t number) const {
    const QToolBar& bar = mDesktop->toolBar.Widget();
    return *bar.widgetForAction(bar.actions().at(number - 1));
}

float QtDriver::PanelWidth(std::int32_t number) const {
    QCoreApplication::sendPostedEvents(); // lays the panels out
    return qt::ToTwips(PanelOf(number).width());
}

// As it is shown: what looks like markup is none.
std::string QtDriver::PanelToolTip(std::int32_t number) const {
    QTextDocument shown;
    const QString tip = PanelOf(number).toolTip();
    Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
    return qt::FromQt(shown.toPlainText());
}

std::string QtDriver::ButtonTip(std::int32_t number) const {
    QWidget& button = ButtonOf(number);
    const QString name = QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Name);
    EXPECT_EQ(button.toolTip(), name);
    return qt::FromQt(name);
}

void QtDriver::PressButton(std::int32_t number) {
    Settle(); // a new button has no place before that
    const QWidget& button = ButtonOf(number);
    Click(button, button.rect().center());
    Settle();
}

std::string QtDriver::FilePath(std::string_view name) const {
    return FolderPath() + "/" + std::string(name);
}

std::string QtDriver::PicturePath() {
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::red);
    EXPECT_TRUE(picture.save(qt::ToQt(FilePath("icon.png"))));
    return FilePath("icon.png");
}

std::vector<std::string> QtDriver::HelpOpened(std::size_t count) const {
    std::vector<std::string> opened;
    (void)QTest::qWaitFor(
        [&] {
            opened = Lines("opened");
            return opened.size() >= count;
        },
        20000);
    return opened;
}

// A process here has no window, and so no style.
bool QtDriver::HasStarted(const std::string& commandLine, std::int32_t /*windowStyle*/) const {
    const std::vector<std::string> arguments = posix::SplitCommandLine(commandLine, posix::IsRegularFile);
    return QTest::qWaitFor([&] { return Lines("started") == arguments; }, 20000);
}

std::vector<std::string> QtDriver::Lines(std::string_view name) const {
    std::ifstream file(FilePath(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string QtDriver::StartableCommand() const {
    return "\"" + FilePath("a program") + "\"  with  arguments ";
}

// The user's folders are all in the temporary one.
std::optional<std::string> QtDriver::Variable(const std::string& name) const {
    if (name == "TESSALY_SETTINGS") {
        return FilePath("settings.reg");
    }
    if (name == "HOME" || name == "XDG_RUNTIME_DIR") {
        return FolderPath();
    }
    return std::nullopt;
}

// It writes its arguments, each in a line.
void QtDriver::MakeProgram(const std::string& path, const std::string& whatToWhere) const {
    QDir(mFolder.path()).mkpath(QStringLiteral("bin"));
    std::ofstream(path) << "#!/bin/sh\nprintf '%s\\n' " + whatToWhere + "\n";
    EXPECT_EQ(::chmod(path.c_str(), 0700), 0);
}

void QtDriver::Click(const QWidget& widget, const QPoint& place, Qt::MouseButton button,
                     Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(MainHandle(), button, modifiers, widget.mapTo(&mDesktop->window, place));
}

void QtDriver::Key(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QTest::sendKeyEvent(QTest::Click, MainHandle(), key, text, modifiers);
}

} // namespace tessaly
