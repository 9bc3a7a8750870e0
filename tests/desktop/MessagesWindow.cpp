// What a user does in the messages window.
#include "tests/desktop/MessagesWindow.h"

#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

namespace tessaly::memory {

void MessagesWindow::ShowTexts(const MessageTexts& texts) {
    mFaults.Count();
    mTexts = texts;
}

void MessagesWindow::ShowRows(const std::vector<MessageRow>& rows) {
    mFaults.Count();
    mRows = rows;
}

void MessagesWindow::ShowSelected(std::size_t row) {
    mFaults.Count();
    mSelected = row;
}

void MessagesWindow::ShowPrinted(std::string_view text, std::size_t unchanged) {
    mFaults.Count();
    mPrinted.resize(unchanged);
    mPrinted += text.substr(unchanged);
}

void MessagesWindow::ShowPage(Page page) {
    mFaults.Count();
    mPage = page;
}

std::optional<MessagesWindow::Surroundings> MessagesWindow::Around() const {
    return Surroundings{work, mFrame.Place(), mFrame.ClientPlace(), {}, mPlace};
}

// The keyboard goes back to where it was.
void MessagesWindow::ShowFrame(bool isVisible) {
    mFaults.Count();
    if (!isVisible) {
        mFrame.focus.LeaveMessages();
    }
}

void MessagesWindow::GoThere(std::string_view action) {
    mFrame.focus.CheckReachable(action);
    if (!IsVisible()) {
        throw ImpossibleAction(std::string(action) + " in the messages window, which is not shown");
    }
    mFrame.focus.GoToMessages();
}

void MessagesWindow::Click(std::size_t row) {
    GoThere("a click");
    mSelected = row;
    TellSelected(row);
}

void MessagesWindow::DoubleClick(std::size_t row) {
    Click(row);
    TellDoubleClick(row);
}

// Ctrl with Tab turns the page, and the arrow keys move the selection.
void MessagesWindow::PressKey(int keyCode, int shift) {
    constexpr int keyUp = 38;
    constexpr int keyDown = 40;
    GoThere("a key");
    if (const std::optional<std::string> text = CopiedBy(keyCode, shift)) {
        mFrame.focus.clipboard = *text;
        return;
    }
    if (keyCode == KeyTab && shift == Ctrl) {
        mPage = mPage == Page::Printed ? Page::Messages : Page::Printed;
        TellPage(mPage);
        return;
    }
    if (TellKey(keyCode, shift) || !HasKeyboard() || mPage == Page::Printed) {
        return;
    }
    if (keyCode == keyUp && mSelected > 0) {
        TellSelected(--mSelected);
    } else if (keyCode == keyDown && mSelected + 1 < mRows.size()) {
        TellSelected(++mSelected);
    }
}

void MessagesWindow::CloseByUser() {
    GoThere("the closing");
    Hide();
}

void MessagesWindow::Resize(const Size& size) {
    GoThere("a change of the size");
    mPlace.width = size.width;
    mPlace.height = size.height;
}

} // namespace tessaly::memory
