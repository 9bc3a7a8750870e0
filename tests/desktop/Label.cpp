// A label in memory.
#include "tests/desktop/Label.h"

namespace tessaly {

std::string MemoryLabel::Caption() const {
    CountCall();
    return mCaption;
}

void MemoryLabel::SetCaption(std::string_view caption) {
    CountCall();
    mCaption = caption;
}

float MemoryLabel::PreferredHeight() const {
    CountCall();
    return 240;
}

} // namespace tessaly
