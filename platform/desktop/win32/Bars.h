// The tool bar and the status bar.
#pragma once

#include "platform/desktop/Bars.h"
#include "platform/desktop/win32/Child.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    explicit ToolBar(Parent& parent);

    Size PreferredSize() const override;
    void Command(int id, int code) override;
    void Rescale() override;

private:
    void Show(const Extent& place) override;
    void Dock(const Size& /*client*/) override { Send(TB_AUTOSIZE); }
    void RemoveButtons() override;
    void ShowButton(std::int32_t image, std::string_view tag) override;
    void ShowTip(std::int32_t number, std::string_view tip) override;
    void ShowPictures();
    void SizeButtons();

    int mPictureSize = 0;
    ImageListOwner mPictures; // which are resources of this program; null for an empty bar
};

class StatusBar final : public Control<tessaly::StatusBar> {
public:
    explicit StatusBar(Parent& parent);

    Size PreferredSize() const override;
    void Rescale() override;

private:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Dock(const Size& /*client*/) override { Send(WM_SIZE); }
    void ShowPanels() override;
    void ShowEdges();
    void MakeToolTips();
    void SendToolTips(UINT message) const;

    HWND mToolTips = nullptr; // goes with the bar
    std::wstring mToolTip;    // the one that is shown
    std::vector<int> mEdges;  // of the panels on the right, as the control knows them
};

} // namespace tessaly::win32
