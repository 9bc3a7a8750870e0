// The user of the menus of the Qt desktop, and of the mouse with Ctrl held.
#include "tests/contract/qt/QtDriver.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace tessaly {

void QtDriver::UseMenuOfItem(TreeItem item, std::optional<std::size_t> row) {
    Click(*mDesktop->tree.Widget().viewport(), PlaceOfItem(item), Qt::RightButton);
    UseMenu(row);
}

void QtDriver::UseMenuOfPane(std::size_t position, std::optional<std::size_t> row) {
    Click(*mDesktop->pane.Widget().viewport(), CaretAt(position).center() + QPoint(1, 0), Qt::RightButton);
    UseMenu(row);
}

void QtDriver::UseMenuByKey(int keyCode, int shift, std::optional<std::size_t> row) {
    PressKey(keyCode, shift);
    UseMenu(row);
}

void QtDriver::UseMenu(std::optional<std::size_t> row) {
    mMenuSeen.clear();
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) {
        return;
    }
    for (const QAction* const action : menu->actions()) {
        const QString text = action->text();
        mMenuSeen.push_back(action->isSeparator() ? "-"
                                                  : RowShown(qt::FromQt(text.section(u'\t', 0, 0)),
                                                             qt::FromQt(text.section(u'\t', 1)), action->isEnabled()));
    }
    if (row) {
        menu->setActiveAction(menu->actions().at(static_cast<qsizetype>(*row)));
    }
    QTest::keyClick(menu, row ? Qt::Key_Return : Qt::Key_Escape);
    Settle();
}

void QtDriver::CtrlClickPane(std::size_t position) {
    Click(*mDesktop->pane.Widget().viewport(), CaretAt(position).center() + QPoint(1, 0), Qt::LeftButton,
          Qt::ControlModifier);
    Settle();
}

void QtDriver::TurnCtrlWheel(int delta) {
    const QWidget& text = *mDesktop->pane.Widget().viewport();
    const QPoint place = text.mapTo(&mDesktop->window, text.rect().center());
    QWheelEvent event(place, mDesktop->window.mapToGlobal(place), {}, {0, delta}, Qt::NoButton, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(MainHandle(), &event);
    Settle();
}

void QtDriver::ChooseMenu(MenuItem& item) {
    auto& chosen = static_cast<qt::MenuItem&>(item);
    QAction& action = chosen.Action();
    auto* const menu = qobject_cast<QMenu*>(action.associatedObjects().constFirst());
    if (menu == nullptr || !IsShown()) {
        action.trigger();
    } else {
        Open(*menu->menuAction());
        menu->setActiveAction(&action);
        QTest::keyClick(menu, Qt::Key_Return);
    }
    Settle();
}

void QtDriver::OpenMenuAndLeave(MenuItem& menu) {
    Open(static_cast<qt::MenuItem&>(menu).Action());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    if (mDesktop->window.menuBar()->hasFocus()) {
        Key(Qt::Key_Escape);
    }
    Settle();
}

void QtDriver::Open(QAction& menu) {
    const QMenuBar& bar = *mDesktop->window.menuBar();
    Click(bar, bar.actionGeometry(&menu).center());
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
}

std::string QtDriver::MenuCaption(MenuItem& item) const {
    return qt::FromQt(static_cast<qt::MenuItem&>(item).Action().text());
}

bool QtDriver::IsChecked(MenuItem& item) const {
    return static_cast<qt::MenuItem&>(item).Action().isChecked();
}

std::vector<std::string> QtDriver::MenusIn(MenuItem* menu) const {
    const QList<QAction*> actions = menu == nullptr ? mDesktop->window.menuBar()->actions()
                                                    : static_cast<qt::MenuItem*>(menu)->DropDown().actions();
    std::vector<std::string> names;
    for (const QAction* const action : actions) {
        names.push_back(action->isSeparator() ? "-" : qt::FromQt(action->text()));
    }
    return names;
}

} // namespace tessaly
