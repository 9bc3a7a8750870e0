// Message boxes that a test has answered beforehand.
#pragma once

#include "platform/desktop/Dialogs.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::memory {

class MsgBox final : public tessaly::MsgBox {
public:
    // A box that was shown.
    struct Record {
        std::string text;
        std::string caption;
        MsgButtons buttons = MsgButtons::Ok;
        MsgIcon icon = MsgIcon::None;

        bool operator==(const Record&) const = default;
    };

    MsgBox(Faults& faults, Focus& focus) : mFaults(faults), mFocus(focus) {}

    // Prepares the user's answer to the next box that has none yet. An attempt to close a Yes/No box comes to nothing,
    // and the box takes the next answer, too.
    void WillPress(MsgResult button) { mAnswers.emplace_back(button); }
    void WillClose() { mAnswers.emplace_back(std::nullopt); }

    // If set, the user's answer to a box for which none was prepared.
    std::function<MsgResult(const Record&)> decide;

    // How many prepared answers were not used.
    std::size_t AnswersLeft() const { return mAnswers.size(); }

    std::vector<Record> records;

private:
    // Throws UnexpectedDialog when no answer is left, ImpossibleAction when the box has not the button.
    MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) override;

    Faults& mFaults;
    Focus& mFocus;                                 // of the window behind it
    std::deque<std::optional<MsgResult>> mAnswers; // nothing = closed
};

} // namespace tessaly::memory
