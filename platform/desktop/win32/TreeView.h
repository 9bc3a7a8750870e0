// The tree. Texts and order are kept here, too: the control cuts long texts and knows no indices.
#pragma once

#include "platform/desktop/TreeView.h"
#include "platform/desktop/win32/Control.h"

#include <functional>
#include <map>
#include <string>

namespace tessaly::win32 {

class TreeView final : public Control<tessaly::TreeView> {
public:
    explicit TreeView(win32::Parent& parent);

    void Clear() override;
    TreeItem Add(TreeItem parent, std::string_view key, std::string_view text) override;
    void Remove(std::int32_t index) override;
    std::int32_t Count() const override { return static_cast<std::int32_t>(mItems.size()); }
    TreeItem Find(std::string_view key) const override;
    TreeItem At(std::int32_t index) const override { return Position(index)->first; }
    std::string Key(TreeItem item) const override { return mItems.at(item).key; }
    std::string Text(TreeItem item) const override { return mItems.at(item).text; }
    void SetText(TreeItem item, std::string_view text) override;
    std::string Tag(TreeItem item) const override { return mItems.at(item).tag; }
    void SetTag(TreeItem item, std::string_view tag) override { mItems.at(item).tag = tag; }
    std::int32_t Index(TreeItem item) const override;
    TreeItem Parent(TreeItem item) const override { return mItems.at(item).parent; }
    void Expand(TreeItem item) override;
    bool IsExpanded(TreeItem item) const override { return mItems.at(item).isExpanded; }
    void Select(TreeItem item) override;
    TreeItem Selected() const override { return mSelected; }

    bool CanHaveFocus() const override { return true; }
    LRESULT Notify(NMHDR& header) override;

    // The item as the control knows it.
    HTREEITEM ShownItem(TreeItem item) const { return mItems.at(item).shown; }

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Item {
        TreeItem parent = TreeItem::None;
        std::string key;
        std::string text;
        std::string tag;
        HTREEITEM shown = nullptr;
        bool isExpanded = false; // also wished for, before there are children
    };
    using Items = std::map<TreeItem, Item>; // in the order of adding

    Items::const_iterator Position(std::int32_t index) const;
    HTREEITEM Insert(TreeItem parent, TreeItem item, std::string_view text);
    void HoldDrawing();
    void ShowAdded();
    void SelectShown(HTREEITEM item);
    void ExpandShown(HTREEITEM item);
    void RaiseClick(TreeItem item);
    LRESULT Draw(NMTVCUSTOMDRAW& drawing) const;
    void Clicked();
    void FollowSelection();

    Items mItems;
    std::map<std::string, TreeItem, std::less<>> mKeys;
    TreeItem mLastItem = TreeItem::None;
    TreeItem mSelected = TreeItem::None;
    bool mIsDrawingHeld = false;   // until the items that are being added are all there
    bool mHasToolTips = false;     // for texts that are cut off
    POINT mClick = {};             // where the mouse was pressed last
    bool mIsProgramAtWork = false; // what the control tells meanwhile is not the user's doing
};

} // namespace tessaly::win32
