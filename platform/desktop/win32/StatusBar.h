// A status bar. It stands at the bottom of the window until it is given a place.
#pragma once

#include "platform/desktop/StatusBar.h"
#include "platform/desktop/win32/Control.h"

#include <string>
#include <vector>

namespace tessaly::win32 {

class StatusBar final : public Control<tessaly::StatusBar> {
public:
    explicit StatusBar(Parent& parent);

    void AddPanel() override;
    std::int32_t PanelCount() const override { return static_cast<std::int32_t>(mPanels.size()); }
    float PreferredHeight() const override;
    void SetPanelSpring(std::int32_t number) override;
    std::string PanelText(std::int32_t number) const override { return Panel(number).text; }
    void SetPanelText(std::int32_t number, std::string_view text) override;

    bool HasTabStop() const override { return false; }

    // Stands at the bottom of the window again if it was given no place.
    void Dock();

    void Rescale() override;

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct OnePanel {
        std::string text;
        bool isSpring = false;
    };

    const OnePanel& Panel(std::int32_t number) const;
    OnePanel& Panel(std::int32_t number);
    void LayOut();
    void MakeToolTips();
    void SendToolTips(UINT message) const;
    void ShowText(std::size_t place);

    HWND mToolTips = nullptr; // goes with the bar
    std::wstring mToolTip;    // the one that is shown
    std::vector<OnePanel> mPanels;
    std::vector<int> mEdges; // of the panels on the right, as the control knows them
};

} // namespace tessaly::win32
