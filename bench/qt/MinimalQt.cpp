// A Qt window with the same controls, and nothing in or behind them. That is the least that such a program does. What
// Tessaly's start takes longer than this one's is its own.
#include <QApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <memory>
#include <utility>

namespace {

// Qt's own: a parent deletes its children.
template <class Type, class... Arguments>
Type& Make(Arguments&&... arguments) {
    return *std::make_unique<Type>(std::forward<Arguments>(arguments)...).release();
}

void AddMenus(QMainWindow& window) {
    struct Menu {
        const char* title;
        int items;
    };
    for (const Menu& each : {Menu{"&File", 5}, Menu{"&Compile", 1}, Menu{"&Language", 2}, Menu{"&Help", 3}}) {
        QMenu& menu = *window.menuBar()->addMenu(each.title);
        for (int item = 0; item < each.items; ++item) {
            menu.addAction("&Item");
        }
    }
}

void FillTree(QTreeWidget& tree) {
    tree.setHeaderHidden(true);
    for (const char* text : {"References", "Functions", "Events"}) {
        tree.addTopLevelItem(&Make<QTreeWidgetItem>(QStringList(text)));
    }
    for (int event = 0; event < 9; ++event) {
        tree.topLevelItem(2)->addChild(&Make<QTreeWidgetItem>(QStringList("Event")));
    }
    tree.expandAll();
}

QWidget& Side(const char* label, QWidget& below) {
    QWidget& side = Make<QWidget>();
    QVBoxLayout& layout = Make<QVBoxLayout>(&side);
    layout.addWidget(&Make<QLabel>(label));
    layout.addWidget(&below);
    return side;
}

} // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QMainWindow window;
    window.setWindowTitle("Minimal Qt");
    window.resize(960, 660);
    AddMenus(window);
    QToolBar& toolBar = *window.addToolBar("Tools");
    toolBar.addAction("Add");
    toolBar.addAction("Delete");
    window.statusBar()->addWidget(&Make<QLabel>("File="), 1);
    window.statusBar()->addWidget(&Make<QLabel>("Ready"), 1);
    QTreeWidget& tree = Make<QTreeWidget>();
    FillTree(tree);
    QPlainTextEdit& pane = Make<QPlainTextEdit>();
    pane.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QSplitter& sides = Make<QSplitter>();
    sides.addWidget(&Side("Tree", tree));
    sides.addWidget(&Side("Text", pane));
    window.setCentralWidget(&sides);
    window.show();
    return QApplication::exec();
}
