// A label in memory.
#pragma once

#include "platform/desktop/Label.h"
#include "tests/desktop/Control.h"

namespace tessaly {

class MemoryLabel final : public MemoryControl<Label> {
public:
    MemoryLabel(MemoryFaults& faults, MemoryFocus& focus) : MemoryControl(faults, focus, MemoryKeyboard::Unused) {}

    std::string Caption() const override;
    void SetCaption(std::string_view caption) override;
    float PreferredHeight() const override;

private:
    std::string mCaption;
};

} // namespace tessaly
