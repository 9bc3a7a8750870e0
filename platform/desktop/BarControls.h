// What stands on the bar over the pane: lines of text, buttons and labels. None of them is visible at first.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/Raise.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

// One line of text that the user edits.
class TextBox : public Control {
public:
    explicit TextBox(Controls& controls) : Control(controls, Keyboard::Used) {}

    // Raised after each change by the user.
    std::function<void()> onChange;

    // UTF-8. One that is set ends in front of its first line break, is selected, and raises nothing.
    virtual std::string Text() const = 0;
    void SetText(std::string_view text) { ShowText(text.substr(0, text.find_first_of("\r\n"))); }

protected:
    virtual void ShowText(std::string_view text) = 0;
};

enum class ButtonKind { Push, Check };

class Button : public Captioned {
public:
    explicit Button(Controls& controls) : Captioned(controls, Keyboard::Used) {}

    // Raised when the user has pressed it; a check box is checked, or not any more, by then.
    std::function<void()> onClick;

    // Of a check box; false for others.
    virtual bool IsChecked() const = 0;

protected:
    void TellClick() {
        const FocusEvents::Command command(mControls.focus, FocusEvents::Keyboard::Stays);
        Raise(onClick);
    }
};

// All of them, in the order of the Tab key. Whoever makes them hides them.
struct BarControls {
    Label& wantedLabel;
    TextBox& wanted;
    Label& count;
    Button& matchCase; // a check box, as the next one
    Button& wholeWord;
    Button& previous;
    Button& next;
    Button& close;
    Label& replacementLabel;
    TextBox& replacement;
    Button& replaceOne;
    Button& replaceAll;

    std::array<Control*, 12> All() const {
        return {&wantedLabel, &wanted,           &count,       &matchCase,  &wholeWord, &previous, &next,
                &close,       &replacementLabel, &replacement, &replaceOne, &replaceAll};
    }

    void Hide() const {
        for (Control* const control : All()) {
            control->SetVisible(false);
        }
    }
};

} // namespace tessaly
