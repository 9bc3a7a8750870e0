// A label in memory.
#pragma once

#include "platform/Label.h"
#include "platform/memory/MemoryControl.h"

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
