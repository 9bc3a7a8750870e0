// The user beside the caret of the pane.
#include "platform/desktop/qt/Text.h"
#include "tests/contract/qt/QtDriver.h"

#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QWindow>

namespace tessaly {

std::vector<std::string> QtDriver::NamesSuggested() {
    Settle();
    std::vector<std::string> rows;
    const QTreeWidget* const list = mDesktop->suggestions.List();
    for (int row = 0; list != nullptr && list->isVisible() && row < list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = list->topLevelItem(row);
        rows.push_back(qt::FromQt(item->text(0) + "|" + item->text(1) + (item->isSelected() ? "*" : "")));
    }
    return rows;
}

bool QtDriver::IsSuggestionInView(std::size_t row) {
    Settle();
    const QTreeWidget& list = *mDesktop->suggestions.List();
    const QRect place = list.visualItemRect(list.topLevelItem(static_cast<int>(row)));
    return list.viewport()->rect().contains(place.center());
}

void QtDriver::ClickSuggestion(std::size_t row) {
    Settle();
    const QTreeWidget& list = *mDesktop->suggestions.List();
    const QRect item = list.visualItemRect(list.topLevelItem(static_cast<int>(row)));
    const QPoint place(item.left() + 5, item.center().y());
    QTest::mouseClick(list.windowHandle(), Qt::LeftButton, Qt::NoModifier, list.viewport()->mapTo(&list, place));
    Settle();
}

std::string QtDriver::HintShown() {
    Settle();
    const QLabel* const hint = mDesktop->suggestions.Hint();
    const bool isShown = hint != nullptr && hint->isVisible();
    return isShown ? qt::FromQt(QTextDocumentFragment::fromHtml(hint->text()).toPlainText()) : "";
}

std::string QtDriver::TipOver(QWidget& view, const QPoint& screen) {
    QHelpEvent rest(QEvent::ToolTip, view.mapFromGlobal(screen), screen);
    QCoreApplication::sendEvent(&view, &rest);
    Settle();
    return qt::FromQt(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText());
}

std::string QtDriver::TipShown(Place place) {
    Settle();
    const QRect character = mDesktop->pane.CharacterPlace(place);
    return TipOver(*mDesktop->pane.Widget().viewport(), {character.left() + 1, character.center().y()});
}

std::string QtDriver::MarginTipShown(std::size_t line) {
    Settle();
    QWidget& pane = mDesktop->pane.Widget();
    const int middle = mDesktop->pane.CharacterPlace({line, 0}).center().y();
    return TipOver(pane, {pane.mapToGlobal(MarginPlace().center()).x(), middle});
}

} // namespace tessaly
