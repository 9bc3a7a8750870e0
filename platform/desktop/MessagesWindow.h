// The window with what a build has said, beside the main window: messages in rows, and behind them all that was
// printed. It comes and goes without the keyboard, which it has once the user goes there.
#pragma once

#include "platform/desktop/Window.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

enum class MessageKind { Error, Warning, Note };

struct MessageRow {
    MessageKind kind = MessageKind::Error; // its picture
    std::array<std::string, 4> cells;      // the kind in words, where, the line there, what

    bool operator==(const MessageRow&) const = default;
};

struct MessageTexts {
    std::string caption;              // of the window
    std::array<std::string, 4> heads; // of the columns
    std::string messagesPage;
    std::string printedPage;

    bool operator==(const MessageTexts&) const = default;
};

class MessagesWindow {
public:
    // `owner` is the main window, and `pane` the control in it that this one may lie over rather than nowhere. Both
    // must outlive this one.
    MessagesWindow(Window& owner, const Control& pane);
    MessagesWindow(const MessagesWindow&) = delete;
    MessagesWindow& operator=(const MessagesWindow&) = delete;
    virtual ~MessagesWindow();

    // Raised when the user goes where a row leads: by Enter or a double click. Ctrl+C copies the cells of the selected
    // row, with tabs between them, and Esc hides the window. Every other key also is one of the main window's
    // onKeyDown.
    std::function<void(std::size_t row)> onGo;

    // Puts this in place of what it holds. Of rows one is always selected, and in view: the first, or as long as it is
    // still there the one that was chosen. The page of the rows is in front when rows come, else that of the print.
    void SetTexts(const MessageTexts& texts);
    void SetRows(std::vector<MessageRow> rows);
    void SetPrinted(std::string_view text); // with LF between lines

    // Chooses a row and brings it into view, with its page. Throws std::out_of_range when there is none.
    void Choose(std::size_t row);

    // No value when there are no rows.
    std::optional<std::size_t> Selected() const;

    // Comes up where FindPlace says, in the size that the user gave it last. Hiding it gives the keyboard back to the
    // main window if it was here. What it holds stays.
    void Show();
    void Hide();
    bool IsVisible() const { return mIsVisible; }

    // Where things are on the screen, in twips, and which part of it windows may take.
    struct Surroundings {
        Extent work;
        Extent owner;     // the main window with its frame
        Extent client;    // in the frame, below the menus and above the footer
        Extent pane = {}; // in the client area
        Extent own = {};  // the messages window with its frame
    };

    // A size in one direction is none until the user has chosen it.
    struct WishedSize {
        std::optional<float> width;
        std::optional<float> height;
    };

    // Below the main window, beside it or above it, whatever has room enough first. Where nothing has, as round a
    // maximised window, at the bottom of its client area: the main window is to keep that part free. Where that would
    // leave nothing of the tree, outside and small; and at last over the lower end of the pane. Never over the tree or
    // the footer.
    struct Spot {
        Extent place;
        float room = 0; // of the client area, that the main window is to keep free
    };
    static Spot FindSpot(const Surroundings& around, const WishedSize& wish);

protected:
    virtual void ShowTexts(const MessageTexts& texts) = 0;
    virtual void ShowRows(const std::vector<MessageRow>& rows) = 0;
    virtual void ShowSelected(std::size_t row) = 0;

    // The first `unchanged` bytes of the text are there already, and nothing behind them.
    virtual void ShowPrinted(std::string_view text, std::size_t unchanged) = 0;

    enum class Page { Messages, Printed }; // the second is in front at first
    virtual void ShowPage(Page page) = 0;

    // No value where the system finds the places of windows itself.
    virtual std::optional<Surroundings> Around() const = 0;

    // With its frame.
    virtual void MoveTo(const Extent& place) = 0;

    // The keyboard does not come along, and goes back to the main window if it is here.
    virtual void ShowFrame(bool isVisible) = 0;

    // What a key puts on the clipboard. Such a key is not told, and no control gets it. No value for all others.
    std::optional<std::string> CopiedBy(int keyCode, int shift) const;

    // The user did this. A key is told before a control gets it, and is done with when this returns true.
    bool TellKey(int keyCode, int shift);
    void TellSelected(std::size_t row);
    void TellDoubleClick(std::size_t row);
    void TellPage(Page page) { mPage = page; }

    Window& mOwner;

private:
    void SetPage(Page page);
    void Select(std::size_t row);
    void Go(std::size_t row);
    void NoteWish(const std::optional<Surroundings>& around);
    float TakePlace();

    MessageTexts mTexts;
    std::vector<MessageRow> mRows;
    std::string mPrinted;
    std::size_t mSelected = 0;
    bool mIsChosen = false;    // the row that is selected, by the user or by Choose
    bool mIsSelecting = false; // the program selects
    Page mPage = Page::Printed;
    bool mIsVisible = false;
    WishedSize mWish;
    std::optional<Extent> mPlace; // as it was moved last
    const Control& mPane;
};

} // namespace tessaly
