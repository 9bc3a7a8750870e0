// A label in memory.
#include "tests/desktop/Label.h"

namespace tessaly::memory {

std::string Label::Caption() const {
    CountCall();
    return mCaption;
}

void Label::SetCaption(std::string_view caption) {
    CountCall();
    mCaption = caption;
}

float Label::PreferredHeight() const {
    CountCall();
    return 240;
}

} // namespace tessaly::memory
