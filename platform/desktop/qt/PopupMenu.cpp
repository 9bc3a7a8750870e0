#include "platform/desktop/qt/PopupMenu.h"

#include "platform/desktop/qt/Text.h"

#include <algorithm>

namespace tessaly::qt {

QPoint PlaceForMenu(const QWidget& shown, QPoint wanted) {
    return shown.mapToGlobal(QPoint(std::clamp(wanted.x(), 0, std::max(shown.width() - 1, 0)),
                                    std::clamp(wanted.y(), 0, std::max(shown.height() - 1, 0))));
}

// The rows of the menu before stay until the next one: it is still at work when one of them is chosen.
void PopupMenu::ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) {
    mMenu.clear();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].text.empty()) {
            mMenu.addSeparator();
            continue;
        }
        const QString keys = rows[row].keys.empty() ? QString() : "\t" + ToQt(rows[row].keys);
        QAction* const action = mMenu.addAction(ToQt(rows[row].text) + keys);
        action->setEnabled(rows[row].isEnabled);
        QObject::connect(action, &QAction::triggered, &mMenu, [this, row] { TellChoice(row); });
    }
    mMenu.popup({place.x, place.y});
}

} // namespace tessaly::qt
