#include "platform/desktop/qt/TreeView.h"

#include "platform/desktop/qt/Keys.h"
#include "platform/desktop/qt/MenuItem.h"
#include "platform/desktop/qt/Pictures.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QToolTip>
#include <memory>
#include <utility>

namespace tessaly::qt {

namespace {

QTreeWidgetItem& ItemOf(void* node) {
    return *static_cast<QTreeWidgetItem*>(node);
}

} // namespace

// A collapsed item is selected in place of a hidden one. Qt would leave that selected.
TreeWidget::TreeWidget(QWidget* parent) : QTreeWidget(parent) {
    connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* collapsed) {
        const QTreeWidgetItem* above = Selected();
        while (above != nullptr && above != collapsed) {
            above = above->parent();
        }
        if (above != nullptr && above != Selected()) {
            setCurrentItem(collapsed);
            mIsCollapseToTell = true;
        }
    });
}

QTreeWidgetItem* TreeWidget::Selected() const {
    QTreeWidgetItem* const current = currentItem();
    return current != nullptr && current->isSelected() ? current : nullptr;
}

void TreeWidget::SelectNothing() {
    setCurrentItem(nullptr);
    clearSelection();
}

// A press on an item is told whether it was selected before or not; one on the arrow beside it is none.
void TreeWidget::mousePressEvent(QMouseEvent* event) {
    QTreeWidgetItem* pressed = nullptr;
    const QMetaObject::Connection connection =
        connect(this, &QTreeWidget::itemPressed, this, [&pressed](QTreeWidgetItem* item) { pressed = item; });
    QTreeWidget::mousePressEvent(event);
    disconnect(connection);
    if (pressed != nullptr && onUserSelect) {
        onUserSelect(pressed);
    }
    TellCollapse();
}

void TreeWidget::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    TellCollapse();
}

void TreeWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidget::mouseDoubleClickEvent(event);
    TellCollapse();
}

void TreeWidget::mouseMoveEvent(QMouseEvent* event) {
    const QTreeWidgetItem* const before = Selected();
    QTreeWidget::mouseMoveEvent(event);
    TellIfChanged(before);
}

void TreeWidget::keyPressEvent(QKeyEvent* event) {
    if (IsMenuKey(*event)) {
        const QTreeWidgetItem* const selected = Selected();
        onMenu(PlaceForMenu(*viewport(), selected != nullptr ? visualItemRect(selected).bottomLeft() : QPoint()));
        return;
    }
    const QTreeWidgetItem* const before = Selected();
    QTreeWidget::keyPressEvent(event);
    TellIfChanged(before);
}

// A tree without a selection makes its first item the current one here, and the next arrow key would pass it over.
void TreeWidget::focusInEvent(QFocusEvent* event) {
    const bool hadCurrent = currentItem() != nullptr;
    QTreeWidget::focusInEvent(event);
    if (!hadCurrent) {
        SelectNothing();
    }
}

void TreeWidget::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && onColoursChanged) {
        onColoursChanged();
    }
}

// The press in front of it has selected the item. Keys are seen to elsewhere.
void TreeWidget::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard) {
        onMenu(event->globalPos());
    }
}

// The whole name of an item that is cut off, in front of what its tool tip says anyway.
bool TreeWidget::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QTreeWidget::viewportEvent(event);
    }
    const auto& rest = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(rest.pos());
    QString tip = index.data(Qt::ToolTipRole).toString();
    const QRect place = visualRect(index);
    if (index.isValid() && sizeHintForIndex(index).width() > place.width()) {
        tip.prepend(index.data().toString() + (tip.isEmpty() ? QString() : QStringLiteral("\n")));
    }
    QToolTip::showText(rest.globalPos(), ToolTip(tip), viewport(), place);
    return true;
}

// Without the focus the selected item is set apart faintly, also where the style would not tell.
void TreeWidget::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeWidget::initViewItemOption(option);
    option->palette.setColor(QPalette::Inactive, QPalette::Highlight,
                             Between(palette(), QPalette::Base, QPalette::Text));
    option->palette.setColor(QPalette::Inactive, QPalette::HighlightedText, palette().color(QPalette::Text));
}

// Ctrl and a click take no selection away.
QItemSelectionModel::SelectionFlags TreeWidget::selectionCommand(const QModelIndex& index, const QEvent* event) const {
    const QItemSelectionModel::SelectionFlags command = QTreeWidget::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void TreeWidget::TellCollapse() {
    if (std::exchange(mIsCollapseToTell, false) && onUserSelect) {
        onUserSelect(Selected());
    }
}

void TreeWidget::TellIfChanged(const QTreeWidgetItem* before) {
    QTreeWidgetItem* const now = Selected();
    if (now != before && now != nullptr && onUserSelect) {
        onUserSelect(now);
    }
}

TreeView::TreeView(Window& window) : Control(window, mTree), mTree(&window.Area()) {
    mTree.setHeaderHidden(true);
    mTree.setHeaderLabel({});         // a screen reader would say a number
    mTree.setUniformRowHeights(true); // or a large tree would be measured item by item
    mTree.setSelectionMode(QAbstractItemView::SingleSelection);
    mTree.setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTree.onColoursChanged = [this] {
        for (const auto& [item, content] : AllItems()) {
            ShowLook(content.node, LookOf(content));
        }
    };
    mTree.onMenu = [this](QPoint place) {
        mWindow.UpdateFocusInUse();
        Raise(onMenu, ScreenPlace{place.x(), place.y()});
    };
    mTree.onUserSelect = [this](const QTreeWidgetItem* node) {
        SetSelected(static_cast<TreeItem>(node->data(0, Qt::UserRole).toUInt()));
        mWindow.UpdateFocusInUse();
        RaiseClick(Selected());
    };
}

void* TreeView::Insert(TreeItem item, TreeItem parent, std::string_view text) {
    auto node = std::make_unique<QTreeWidgetItem>();
    node->setText(0, ToQt(text));
    node->setData(0, Qt::UserRole, static_cast<std::uint32_t>(item));
    QTreeWidgetItem& above = parent == TreeItem::None ? *mTree.invisibleRootItem() : ItemOf(Node(parent));
    above.addChild(node.get());
    return node.release(); // the tree's own from here on
}

// Qt would select a neighbour of what goes.
void TreeView::RemoveNode(void* node, bool isSelected) {
    if (isSelected) {
        mTree.SelectNothing();
    }
    if (node == nullptr) {
        mTree.clear();
    } else {
        const std::unique_ptr<QTreeWidgetItem> removed(&ItemOf(node));
    }
}

// No line becomes higher by its picture.
void TreeView::ShowLook(void* node, const Look& look) {
    QTreeWidgetItem& item = ItemOf(node);
    item.setText(0, ToQt(look.text));
    item.setData(0, Qt::AccessibleDescriptionRole, ToQt(look.description));
    item.setToolTip(0, ToQt(look.description));
    QFont font;
    font.setItalic(look.isItalic);
    item.setData(0, Qt::FontRole, look.isItalic ? QVariant(font) : QVariant());
    const int side = mTree.fontMetrics().height() * 3 / 4;
    mTree.setIconSize({side, side});
    item.setIcon(0, Icon(look.mark, side, mTree.devicePixelRatioF(), mTree.palette()));
}

void TreeView::ExpandNode(void* node) {
    ItemOf(node).setExpanded(true);
}

void TreeView::SelectNode(void* node) {
    mTree.setCurrentItem(&ItemOf(node));
}

} // namespace tessaly::qt
