// The messages window in memory, and what a user can do with it. It stands on a screen with room below the main window.
#pragma once

#include "platform/desktop/MessagesWindow.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"
#include "tests/desktop/Window.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class MessagesWindow final : public tessaly::MessagesWindow {
public:
    MessagesWindow(Faults& faults, Window& owner, const tessaly::Control& pane)
        : tessaly::MessagesWindow(owner, pane),
          mFaults(faults),
          mFrame(owner) {}

    // The user goes there if the keyboard is elsewhere, and does this. All of these throw ImpossibleAction while the
    // window is not shown or is blocked.
    void Click(std::size_t row);
    void DoubleClick(std::size_t row);
    void PressKey(int keyCode, int shift = 0);
    void CloseByUser();
    void Resize(const Size& size);

    // What the user sees.
    const MessageTexts& Texts() const { return mTexts; }
    const std::vector<MessageRow>& Rows() const { return mRows; }
    std::size_t SelectedRow() const { return mSelected; }
    const std::string& Printed() const { return mPrinted; }
    bool IsPrintedInFront() const { return mPage == Page::Printed; }
    bool HasKeyboard() const { return mFrame.focus.isWithMessages; }
    const Extent& Place() const { return mPlace; }

    // Of the screen, where the main window stands in the upper left corner; see Surroundings.
    Extent work = {0, 0, 24000, 18000};

private:
    void ShowTexts(const MessageTexts& texts) override;
    void ShowRows(const std::vector<MessageRow>& rows) override;
    void ShowSelected(std::size_t row) override;
    void ShowPrinted(std::string_view text, std::size_t unchanged) override;
    void ShowPage(Page page) override;
    std::optional<Surroundings> Around() const override;
    void MoveTo(const Extent& place) override { mPlace = place; }
    void ShowFrame(bool isVisible) override;
    void GoThere(std::string_view action);

    Faults& mFaults;
    Window& mFrame;
    MessageTexts mTexts;
    std::vector<MessageRow> mRows;
    std::size_t mSelected = 0;
    std::string mPrinted;
    Page mPage = Page::Printed;
    Extent mPlace;
};

} // namespace tessaly::memory
