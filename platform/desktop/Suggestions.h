// What comes up beside the caret while the user types: names to choose from, and the parameters of a call. Neither
// takes the keyboard, by the mouse neither: the pane keeps it, and no event of a control is raised.
#pragma once

#include "editing/Text.h"
#include "platform/desktop/Control.h"
#include "platform/desktop/Raise.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly {

struct SuggestedName {
    std::string name;
    std::string declaration; // beside it; may be ""

    bool operator==(const SuggestedName&) const = default;
};

// A text of one line, of which a stretch stands out. In UTF-8, counted in bytes.
struct HintText {
    std::string text;
    std::size_t begin = 0;
    std::size_t end = 0; // the same as `begin` for no stretch

    bool operator==(const HintText&) const = default;
};

// A stretch of the screen, in its pixels; right and bottom are the first that are not in it.
struct ScreenArea {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// Where the upper left corner of a window of this size stands beside the line of `character`: from there on to the
// right, but in `screen` as long as it is not wider. It goes to the other side where there is room on that alone.
enum class Beside { Below, Above };
inline ScreenPlace PlaceBeside(const ScreenArea& character, const ScreenArea& screen, int width, int height,
                               Beside wished) {
    const int above = character.top - height;
    const bool fitsBelow = character.bottom + height <= screen.bottom;
    const bool fitsAbove = above >= screen.top;
    const bool isBelow = fitsBelow == fitsAbove ? wished == Beside::Below : fitsBelow;
    const int rightmost = std::max(screen.right - width, screen.left);
    return {std::clamp(character.left, screen.left, rightmost), isBelow ? character.bottom : above};
}

// Both are gone as soon as the user presses a button of the mouse elsewhere, turns its wheel there, or moves the window
// or changes its size.
class Suggestions {
public:
    Suggestions() = default;
    Suggestions(const Suggestions&) = delete;
    Suggestions& operator=(const Suggestions&) = delete;
    virtual ~Suggestions() = default;

    // Raised when the user clicks a name of the list.
    std::function<void(std::size_t row)> onPick;

    // Asked when the mouse rests on the text of the pane, or in its margin, where there is no column: what a tool tip
    // says of that place, in lines that LFs part, "" for none.
    std::function<std::string(std::size_t line, std::optional<std::size_t> column)> onTip;

    // Shows these names, of which there is one at least, and selects the first. They stand below the line of `place` in
    // the pane, from its column on, or above it where there is no room below.
    void ShowList(const std::vector<SuggestedName>& names, Place place) {
        ShowNames(names, place);
        mCount = names.size();
        Select(0);
    }
    void HideList() {
        if (mCount > 0) {
            ShowNames({}, {});
            mCount = 0;
        }
    }
    bool IsListShown() const { return mCount > 0; }

    // Selects the row, or the last one, and brings it into view.
    void Select(std::size_t row) {
        mSelected = std::min(row, mCount - 1);
        ShowSelected(mSelected);
    }
    std::size_t Selected() const { return mSelected; }

    // Shows this above the line of `place`, or below it where there is no room above.
    void ShowHint(const HintText& hint, Place place) {
        ShowHintText(hint, place);
        mIsHintShown = true;
    }
    void HideHint() {
        if (mIsHintShown) {
            ShowHintText({}, {});
            mIsHintShown = false;
        }
    }
    bool IsHintShown() const { return mIsHintShown; }

protected:
    // No names, or a hint without a text, take away what is shown.
    virtual void ShowNames(const std::vector<SuggestedName>& names, Place place) = 0;
    virtual void ShowSelected(std::size_t row) = 0;
    virtual void ShowHintText(const HintText& hint, Place place) = 0;

    // The user did this.
    void TellPick(std::size_t row) {
        if (row < mCount) {
            Raise(onPick, row);
        }
    }
    std::string AskTip(Place place, bool isMargin) {
        return Raise(onTip, place.line, isMargin ? std::nullopt : std::optional(place.column));
    }
    void TellElsewhere() {
        HideList();
        HideHint();
    }

private:
    std::size_t mCount = 0;
    std::size_t mSelected = 0;
    bool mIsHintShown = false;
};

} // namespace tessaly
