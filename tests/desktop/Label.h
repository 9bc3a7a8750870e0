// A label in memory.
#pragma once

#include "platform/desktop/Label.h"
#include "tests/desktop/Control.h"

namespace tessaly::memory {

class Label final : public Control<tessaly::Label> {
public:
    Label(Faults& faults, Focus& focus) : Control(faults, focus, Keyboard::Unused) {}

    std::string Caption() const override;
    void SetCaption(std::string_view caption) override;
    float PreferredHeight() const override;

private:
    std::string mCaption;
};

} // namespace tessaly::memory
