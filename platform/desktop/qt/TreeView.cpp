// Items get rising numbers, so that a map keeps them in the order of adding and parents before their children.
#include "platform/desktop/qt/TreeView.h"

#include "platform/desktop/qt/Colours.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <algorithm>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tessaly::qt {

namespace {

constexpr int ItemRole = Qt::UserRole;

} // namespace

// What is collapsed is selected in place of what it hides, which Qt would leave selected.
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

TreeView::TreeView(QWidget* parent, Focus& focus) : Control(&focus, mTree, Keyboard::Used), mTree(parent) {
    mTree.setHeaderHidden(true);
    mTree.setHeaderLabel({});         // a screen reader would say a number
    mTree.setUniformRowHeights(true); // or a large tree would be measured item by item
    mTree.setSelectionMode(QAbstractItemView::SingleSelection);
    mTree.setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTree.onUserSelect = [this](const QTreeWidgetItem* node) { RaiseClick(node); };
}

void TreeView::Clear() {
    mTree.SelectNothing();
    mTree.clear();
    mItems.clear();
    mKeys.clear();
}

TreeItem TreeView::Add(TreeItem parent, std::string_view key, std::string_view text) {
    if (mKeys.contains(key)) {
        throw std::invalid_argument("the key is taken");
    }
    if (parent != TreeItem::None && !mItems.contains(parent)) {
        throw std::invalid_argument("there is no such parent");
    }
    mLastItem = static_cast<TreeItem>(static_cast<std::uint32_t>(mLastItem) + 1);
    auto node = std::make_unique<QTreeWidgetItem>();
    node->setText(0, ToQt(text));
    node->setData(0, ItemRole, static_cast<std::uint32_t>(mLastItem));
    mItems[mLastItem] = {parent, std::string(key), std::string(text), {}, node.get()};
    mKeys.emplace(key, mLastItem);
    QTreeWidgetItem* const above = parent == TreeItem::None ? mTree.invisibleRootItem() : mItems.at(parent).node;
    above->addChild(node.release());
    return mLastItem;
}

void TreeView::Remove(std::int32_t index) {
    std::vector<TreeItem> removed = {Position(index)->first};
    for (const auto& [item, content] : mItems) {
        if (std::find(removed.begin(), removed.end(), content.parent) != removed.end()) {
            removed.push_back(item);
        }
    }
    // Qt would select a neighbour of what goes.
    if (std::find(removed.begin(), removed.end(), Selected()) != removed.end()) {
        mTree.SelectNothing();
    }
    const std::unique_ptr<QTreeWidgetItem> node(mItems.at(removed.front()).node);
    for (const TreeItem item : removed) {
        mKeys.erase(mItems.at(item).key);
        mItems.erase(item);
    }
}

TreeItem TreeView::Find(std::string_view key) const {
    const auto found = mKeys.find(key);
    if (found == mKeys.end()) {
        throw std::out_of_range("no item has this key");
    }
    return found->second;
}

TreeItem TreeView::At(std::int32_t index) const {
    return Position(index)->first;
}

void TreeView::SetText(TreeItem item, std::string_view text) {
    Item& content = mItems.at(item);
    content.text = text;
    content.node->setText(0, ToQt(text));
}

std::int32_t TreeView::Index(TreeItem item) const {
    const auto position = mItems.find(item);
    if (position == mItems.end()) {
        throw std::out_of_range("the item is not in the tree");
    }
    return static_cast<std::int32_t>(std::distance(mItems.begin(), position)) + 1;
}

TreeView::Items::const_iterator TreeView::Position(std::int32_t index) const {
    if (index < 1 || static_cast<std::size_t>(index) > mItems.size()) {
        throw std::out_of_range("no item has this index");
    }
    return std::next(mItems.begin(), index - 1);
}

TreeItem TreeView::ItemOf(const QTreeWidgetItem* node) {
    return node == nullptr ? TreeItem::None : static_cast<TreeItem>(node->data(0, ItemRole).toUInt());
}

void TreeView::RaiseClick(const QTreeWidgetItem* node) {
    const TreeItem item = ItemOf(node);
    WindowFocus().UpdateInUse();
    const FocusEvents::Command command(WindowFocus().events, FocusEvents::Keyboard::Stays);
    if (onNodeClick) {
        onNodeClick(item);
    }
}

} // namespace tessaly::qt
