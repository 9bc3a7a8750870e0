// The messages window: a list and a text on two pages, in a frame that the main window owns.
#pragma once

#include "platform/desktop/MessagesWindow.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/Window.h"

#include <string_view>
#include <vector>

namespace tessaly::win32 {

class MessagesWindow final : public tessaly::MessagesWindow, public Parent {
public:
    MessagesWindow(Window& owner, const tessaly::Control& pane);
    MessagesWindow(const MessagesWindow&) = delete;
    MessagesWindow& operator=(const MessagesWindow&) = delete;
    ~MessagesWindow() override;

private:
    void ShowTexts(const MessageTexts& texts) override;
    void ShowRows(const std::vector<MessageRow>& rows) override;
    void ShowSelected(std::size_t row) override;
    void ShowPrinted(std::string_view text, std::size_t unchanged) override;
    void ShowPage(Page page) override;
    std::optional<Surroundings> Around() const override;
    void MoveTo(const Extent& place) override;
    void ShowFrame(bool isVisible) override;

    EventLoop::Filter MakeFrame();
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Notified(const NMHDR& header);
    bool TakeKey(const MSG& message);
    void TurnPage();
    HWND PageInFront() const;
    void Rescale(int dpi);
    void Arrange();
    void FitColumns();

    Controls mControls;
    Window& mFrame;
    bool mIsComing = false;        // it was shown, and the user has done nothing since
    EventLoop::Filter mMainFilter; // as it was before this window came

    // Each label comes before its control: Windows takes the names of controls from that order.
    Part mRowsLabel;
    Part mRows;
    Part mPrintedLabel;
    Part mPrinted;
    Part mPages;
    FontOwner mCodeFont;
};

} // namespace tessaly::win32
