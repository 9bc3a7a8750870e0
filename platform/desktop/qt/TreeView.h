// The tree. Qt counts items within their parent; the order of adding over the whole tree is kept here.
#pragma once

#include "platform/desktop/TreeView.h"
#include "platform/desktop/qt/Control.h"

#include <QTreeWidget>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tessaly::qt {

// Tells of what the user selects, and of nothing else.
class TreeWidget final : public QTreeWidget {
public:
    explicit TreeWidget(QWidget* parent);

    std::function<void(QTreeWidgetItem* item)> onUserSelect;

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
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    void TellIfChanged(const QTreeWidgetItem* before);
    void TellCollapse();

    bool mIsCollapseToTell = false; // which has moved the selection
};

class TreeView final : public Control<tessaly::TreeView> {
public:
    TreeView(QWidget* parent, Focus& focus);

    void Clear() override;
    TreeItem Add(TreeItem parent, std::string_view key, std::string_view text) override;
    void Remove(std::int32_t index) override;
    std::int32_t Count() const override { return static_cast<std::int32_t>(mItems.size()); }
    TreeItem Find(std::string_view key) const override;
    TreeItem At(std::int32_t index) const override;
    std::string Key(TreeItem item) const override { return mItems.at(item).key; }
    std::string Text(TreeItem item) const override { return mItems.at(item).text; }
    void SetText(TreeItem item, std::string_view text) override;
    std::string Tag(TreeItem item) const override { return mItems.at(item).tag; }
    void SetTag(TreeItem item, std::string_view tag) override { mItems.at(item).tag = tag; }
    std::int32_t Index(TreeItem item) const override;
    TreeItem Parent(TreeItem item) const override { return mItems.at(item).parent; }
    void Expand(TreeItem item) override { mItems.at(item).node->setExpanded(true); }
    bool IsExpanded(TreeItem item) const override { return mItems.at(item).node->isExpanded(); }
    void Select(TreeItem item) override { mTree.setCurrentItem(mItems.at(item).node); }
    TreeItem Selected() const override { return ItemOf(mTree.Selected()); }

    TreeWidget& Widget() { return mTree; }

    // What Qt shows for an item. Throws std::out_of_range when there is no such item.
    QTreeWidgetItem& NodeOf(TreeItem item) const { return *mItems.at(item).node; }

private:
    struct Item {
        TreeItem parent = TreeItem::None;
        std::string key;
        std::string text;
        std::string tag;
        QTreeWidgetItem* node = nullptr; // the tree's own
    };
    using Items = std::map<TreeItem, Item>; // in the order of adding

    Items::const_iterator Position(std::int32_t index) const;
    static TreeItem ItemOf(const QTreeWidgetItem* node);
    void RaiseClick(const QTreeWidgetItem* node);

    TreeWidget mTree;
    Items mItems;
    std::map<std::string, TreeItem, std::less<>> mKeys;
    TreeItem mLastItem = TreeItem::None;
};

} // namespace tessaly::qt
