// The menu that comes up where the user asks for one, in memory, and the user who chooses from it.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <optional>
#include <vector>

namespace tessaly::memory {

class PopupMenu final : public tessaly::PopupMenu {
public:
    PopupMenu(Faults& faults, Focus& focus)
        : tessaly::PopupMenu(focus.controls.focus),
          mFaults(faults),
          mFocus(focus) {}

    bool IsOpen() const { return mOpen.has_value(); }

    // Those that were shown last.
    const std::vector<PopupRow>& Rows() const { return mRows; }

    // The user chooses a row, or leaves the menu. Throws ImpossibleAction when none is open, and for a row that nobody
    // can choose.
    void Choose(std::size_t row) {
        if (row >= mRows.size() || mRows[row].text.empty() || !mRows[row].isEnabled) {
            throw ImpossibleAction("the choice of a row that cannot be chosen");
        }
        // The keyboard is back before the command ends, and waits for that.
        const FocusEvents::Command whole(mFocus.controls.focus, FocusEvents::Keyboard::Stays);
        Leave();
        TellChoice(row);
    }
    void Leave() {
        if (!IsOpen()) {
            throw ImpossibleAction("leaving a menu that is not open");
        }
        mOpen.reset();
    }

private:
    void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace /*place*/) override {
        mFaults.Count();
        mRows = rows;
        mOpen.emplace(mFocus);
    }

    Faults& mFaults;
    Focus& mFocus;
    std::vector<PopupRow> mRows;
    std::optional<Block> mOpen;
};

} // namespace tessaly::memory
