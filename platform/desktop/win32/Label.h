// A label: a static text.
#pragma once

#include "platform/desktop/Label.h"
#include "platform/desktop/win32/Control.h"

#include <string>

namespace tessaly::win32 {

class Label final : public Control<tessaly::Label> {
public:
    Label(Parent& parent, int id);

    std::string Caption() const override { return mCaption; }
    void SetCaption(std::string_view caption) override;
    float PreferredHeight() const override;

    // The caption is also the text of `control`, which shows none: it names the control for a screen reader. Others get
    // their name from the label in front of them.
    void SetNamed(HWND control) { mNamed = control; }

    bool HasTabStop() const override { return false; }

private:
    std::string mCaption;
    HWND mNamed = nullptr;
};

} // namespace tessaly::win32
