// Where it stands, what is selected and whose a key is are the same on every desktop.
#include "platform/desktop/MessagesWindow.h"

#include "platform/desktop/Flagged.h"
#include "platform/desktop/Raise.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaly {

namespace {

// In twips. Less room than that shows too little of it; less than the second shows nothing.
constexpr Size LeastSize = {5400, 2700};
constexpr Size SmallestSize = {3000, 1200};
constexpr float FirstHeight = 3600;

// Of a main window that has to give room of its own.
constexpr float LargestPart = 0.4F;

// What a system may round away.
constexpr float Rounding = 40;

float Right(const Extent& extent) {
    return extent.left + extent.width;
}

float Bottom(const Extent& extent) {
    return extent.top + extent.height;
}

Extent Common(const Extent& one, const Extent& other) {
    const float left = std::max(one.left, other.left);
    const float top = std::max(one.top, other.top);
    return {left, top, std::min(Right(one), Right(other)) - left, std::min(Bottom(one), Bottom(other)) - top};
}

// The first place beside the main window with at least so much room.
std::optional<Extent> FindOutside(const MessagesWindow::Surroundings& around, const MessagesWindow::WishedSize& wish,
                                  const Size& least) {
    const Extent& work = around.work;
    const Extent& owner = around.owner;
    const float below = Bottom(work) - Bottom(owner);
    const float onTheRight = Right(work) - Right(owner);
    const float onTheLeft = owner.left - work.left;
    const float above = owner.top - work.top;
    const float width = std::min(wish.width.value_or(owner.width), work.width);
    const float height = wish.height.value_or(FirstHeight);
    const float left = std::clamp(owner.left, work.left, Right(work) - width);
    const float tall = std::min(wish.height.value_or(owner.height), work.height);
    const float top = std::clamp(owner.top, work.top, Bottom(work) - tall);
    if (below >= least.height) {
        return Extent{left, Bottom(owner), width, std::min(height, below)};
    }
    if (onTheRight >= least.width) {
        const float wide = std::min(wish.width.value_or(onTheRight), onTheRight);
        return Extent{Right(owner), top, wide, tall};
    }
    if (onTheLeft >= least.width) {
        const float wide = std::min(wish.width.value_or(onTheLeft), onTheLeft);
        return Extent{owner.left - wide, top, wide, tall};
    }
    if (above >= least.height) {
        const float high = std::min(height, above);
        return Extent{left, owner.top - high, width, high};
    }
    return std::nullopt;
}

} // namespace

MessagesWindow::MessagesWindow(Window& owner, const Control& pane) : mOwner(owner), mPane(pane) {
    mOwner.onMoved = [this] {
        if (mIsVisible) {
            mOwner.MakeRoom(TakePlace());
        }
    };
}

MessagesWindow::~MessagesWindow() {
    mOwner.onMoved = nullptr;
}

void MessagesWindow::SetTexts(const MessageTexts& texts) {
    if (texts != mTexts) {
        ShowTexts(texts);
        mTexts = texts;
    }
}

void MessagesWindow::SetRows(std::vector<MessageRow> rows) {
    if (rows == mRows) {
        return;
    }
    const auto chosen = mIsChosen ? std::find(rows.begin(), rows.end(), mRows[mSelected]) : rows.end();
    mIsChosen = false;
    {
        const Flagged byControl(mIsSelecting);
        ShowRows(rows);
    }
    const auto selected = static_cast<std::size_t>(chosen - rows.begin());
    mIsChosen = selected < rows.size();
    const bool comeOrGo = rows.empty() != mRows.empty();
    mRows = std::move(rows);
    mSelected = 0;
    if (!mRows.empty()) {
        Select(mIsChosen ? selected : 0);
    }
    if (comeOrGo) {
        SetPage(mRows.empty() ? Page::Printed : Page::Messages);
    }
}

void MessagesWindow::SetPrinted(std::string_view text) {
    if (text != mPrinted) {
        ShowPrinted(text, text.starts_with(mPrinted) ? mPrinted.size() : 0);
        mPrinted = text;
    }
}

void MessagesWindow::Choose(std::size_t row) {
    static_cast<void>(mRows.at(row));
    Select(row);
    mIsChosen = true;
    SetPage(Page::Messages);
}

std::optional<std::size_t> MessagesWindow::Selected() const {
    return mRows.empty() ? std::nullopt : std::optional(mSelected);
}

void MessagesWindow::Select(std::size_t row) {
    const Flagged byProgram(mIsSelecting);
    ShowSelected(row);
    mSelected = row;
}

void MessagesWindow::SetPage(Page page) {
    if (page != mPage) {
        ShowPage(page);
        mPage = page;
    }
}

void MessagesWindow::TellSelected(std::size_t row) {
    if (!mIsSelecting && row < mRows.size()) {
        mSelected = row;
        mIsChosen = true;
    }
}

bool MessagesWindow::TellKey(int keyCode, int shift) {
    if (keyCode == KeyEscape) {
        Hide();
        return true;
    }
    if (keyCode == KeyEnter && mPage == Page::Messages && !mRows.empty()) {
        Go(mSelected);
        return true;
    }
    return mOwner.TellKey(keyCode, shift);
}

std::optional<std::string> MessagesWindow::CopiedBy(int keyCode, int shift) const {
    if (keyCode != 'C' || shift != 2 || mPage != Page::Messages || mRows.empty()) {
        return std::nullopt;
    }
    const auto& [kind, place, line, text] = mRows[mSelected].cells;
    return kind + "\t" + place + "\t" + line + "\t" + text;
}

void MessagesWindow::TellDoubleClick(std::size_t row) {
    TellSelected(row);
    Go(mSelected);
}

void MessagesWindow::Go(std::size_t row) {
    const FocusEvents::Command command(mOwner.controls.focus, FocusEvents::Keyboard::Stays);
    Raise(onGo, row);
}

void MessagesWindow::Show() {
    if (!mIsVisible) {
        const float room = TakePlace();
        ShowFrame(true);
        mIsVisible = true;
        mOwner.MakeRoom(room);
    }
}

void MessagesWindow::Hide() {
    if (mIsVisible) {
        NoteWish(Around());
        ShowFrame(false);
        mIsVisible = false;
        mOwner.MakeRoom(0);
    }
}

// The size is another one than it was given: the user has changed it.
void MessagesWindow::NoteWish(const std::optional<Surroundings>& around) {
    if (!mPlace || !around) {
        return;
    }
    const Extent& place = around->own;
    if (std::abs(place.width - mPlace->width) > Rounding) {
        mWish.width = place.width;
    }
    if (std::abs(place.height - mPlace->height) > Rounding) {
        mWish.height = place.height;
    }
    mPlace.reset();
}

// How much of the main window it takes, from the footer upwards.
float MessagesWindow::TakePlace() {
    std::optional<Surroundings> around = Around();
    NoteWish(around);
    if (!around) {
        return 0;
    }
    Extent& client = around->client;
    client.height -= mOwner.Footer();
    const Extent pane = mPane.GetExtent();
    around->pane = {client.left + pane.left, client.top + pane.top, pane.width, pane.height};
    const Spot spot = FindSpot(*around, mWish);
    MoveTo(spot.place);
    mPlace = spot.place;
    return spot.room;
}

MessagesWindow::Spot MessagesWindow::FindSpot(const Surroundings& around, const WishedSize& wish) {
    if (const std::optional<Extent> place = FindOutside(around, wish, LeastSize)) {
        return {*place};
    }
    const Extent client = Common(around.client, around.work);
    const float width = std::min(wish.width.value_or(client.width), client.width);
    if (client.height * LargestPart >= SmallestSize.height) {
        const float inside = std::min(wish.height.value_or(FirstHeight), client.height * LargestPart);
        const float top = Bottom(client) - inside;
        return {{client.left, top, width, inside}, Bottom(around.client) - top};
    }
    if (const std::optional<Extent> place = FindOutside(around, wish, SmallestSize)) {
        return {*place};
    }
    const float left = std::max(around.pane.left, client.left);
    const float high = std::min(wish.height.value_or(SmallestSize.height), Bottom(client) - around.work.top);
    return {{left, Bottom(client) - high, std::min(width, Right(client) - left), high}};
}

} // namespace tessaly
