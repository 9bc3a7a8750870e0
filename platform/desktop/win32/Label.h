// A label: a static text.
#pragma once

#include "platform/desktop/win32/Child.h"

namespace tessaly::win32 {

class Label final : public Control<tessaly::Label> {
public:
    Label(Parent& parent, int id);

    void SetCaption(std::string_view caption) override;
    float PreferredHeight() const override;

    // The caption is also the text of `control`, which shows none: it names the control for a screen reader. Others get
    // their name from the label in front of them.
    void SetNamed(HWND control) { mNamed = control; }

private:
    HWND mNamed = nullptr;
};

} // namespace tessaly::win32
