// The controls of the bar over the pane.
#pragma once

#include "platform/desktop/BarControls.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/ControlIds.h"

#include <string>
#include <string_view>

namespace tessaly::win32 {

class TextBox final : public Control<tessaly::TextBox> {
public:
    TextBox(Parent& parent, int id);

    std::string Text() const override;
    Size PreferredSize() const override;

    void Command(int id, int code) override;

private:
    void ShowText(std::string_view text) override;

    bool mIsSetting = false; // the program is putting in a text
};

class Button final : public Control<tessaly::Button> {
public:
    Button(Parent& parent, int id, ButtonKind kind = ButtonKind::Push);

    void SetCaption(std::string_view caption) override;
    bool IsChecked() const override { return Send(BM_GETCHECK) == BST_CHECKED; }
    Size PreferredSize() const override;

    void Command(int id, int code) override;

private:
    ButtonKind mKind;
};

// Each label comes before its line of text: Windows takes the names of controls from that order.
struct PaneBar {
    explicit PaneBar(Parent& theParent) : parent(theParent) { controls.Hide(); }

    Parent& parent;
    Label wantedLabel{parent, ControlId::WantedLabel};
    TextBox wanted{parent, ControlId::Wanted};
    Label count{parent, ControlId::Count};
    Button matchCase{parent, ControlId::MatchCase, ButtonKind::Check};
    Button wholeWord{parent, ControlId::WholeWord, ButtonKind::Check};
    Button previous{parent, ControlId::Previous};
    Button next{parent, ControlId::Next};
    Button close{parent, ControlId::Close};
    Label replacementLabel{parent, ControlId::ReplacementLabel};
    TextBox replacement{parent, ControlId::Replacement};
    Button replaceOne{parent, ControlId::ReplaceOne};
    Button replaceAll{parent, ControlId::ReplaceAll};
    const BarControls controls{wantedLabel, wanted,           count,       matchCase,  wholeWord, previous, next,
                               close,       replacementLabel, replacement, replaceOne, replaceAll};
};

} // namespace tessaly::win32
