// The tree. All nodes are HTREEITEMs, which hold the number of their item.
#pragma once

#include "platform/desktop/TreeView.h"
#include "platform/desktop/win32/Child.h"

#include <string_view>

namespace tessaly::win32 {

class TreeView final : public Control<tessaly::TreeView> {
public:
    explicit TreeView(win32::Parent& parent);

    LRESULT Notify(NMHDR& header) override;
    void Rescale() override;
    void ColoursChanged() override;
    bool HasMenu() const override { return true; }
    std::optional<POINT> MenuPlace() const override;

private:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    void* Insert(TreeItem item, TreeItem parent, std::string_view text) override;
    void RemoveNode(void* node, bool isSelected) override;
    void ShowLook(void* node, const Look& look) override;
    void ExpandNode(void* node) override;
    void SelectNode(void* node) override;
    void ShowPictures();
    void ExpandShown(void* node);
    void DrawAgain() override;
    void HoldLayout();
    void LayOut();
    LRESULT Draw(NMTVCUSTOMDRAW& drawing);
    HFONT ItalicFont();
    void Describe(NMTVGETINFOTIPW& tip) const;
    void ClickLater(); // on the selected item
    void Clicked();
    void RightPressed(POINT place);
    HTREEITEM NodeAt(POINT place) const;
    std::optional<RECT> PlaceOf(void* node, bool ofText) const; // of its text or its line
    void FollowSelection();

    ImageListOwner mPictures;      // of marks
    FontOwner mItalicFont;         // once it is needed
    bool mIsLayoutHeld = false;    // until the items that are being added are all there
    bool mHasToolTips = false;     // for texts that are cut off
    POINT mClick = {};             // where the mouse was pressed last
    bool mIsProgramAtWork = false; // what the control tells meanwhile is not the user's doing
};

} // namespace tessaly::win32
