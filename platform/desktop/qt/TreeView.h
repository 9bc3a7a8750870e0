// The tree. All nodes are QTreeWidgetItems, which hold the number of their item as Qt::UserRole.
#pragma once

#include "platform/desktop/TreeView.h"
#include "platform/desktop/qt/Control.h"

#include <QTreeWidget>
#include <functional>
#include <string_view>

namespace tessaly::qt {

// Tells of what the user selects, and of nothing else.
class TreeWidget final : public QTreeWidget {
public:
    explicit TreeWidget(QWidget* parent);

    std::function<void(QTreeWidgetItem* item)> onUserSelect;
    std::function<void()> onColoursChanged;
    std::function<void(QPoint place)> onMenu; // asked for there on the screen

    // What is selected, null when nothing is.
    QTreeWidgetItem* Selected() const;
    void SelectNothing();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    void TellIfChanged(const QTreeWidgetItem* before);
    void TellCollapse();

    bool mIsCollapseToTell = false; // which has moved the selection
};

class TreeView final : public Control<tessaly::TreeView> {
public:
    explicit TreeView(Window& window);

    TreeWidget& Widget() { return mTree; }

private:
    void* Insert(TreeItem item, TreeItem parent, std::string_view text) override;
    void RemoveNode(void* node, bool isSelected) override;
    void ShowLook(void* node, const Look& look) override;
    void ExpandNode(void* node) override;
    void SelectNode(void* node) override;

    TreeWidget mTree;
};

} // namespace tessaly::qt
