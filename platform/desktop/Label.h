// A text that the user cannot change.
#pragma once

#include "platform/desktop/Control.h"

#include <string>
#include <string_view>

namespace tessaly {

class Label : public Control {
public:
    virtual std::string Caption() const = 0;
    virtual void SetCaption(std::string_view caption) = 0;

    // What one line of text needs in the user's font, in twips.
    virtual float PreferredHeight() const = 0;
};

} // namespace tessaly
