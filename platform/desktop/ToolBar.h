// A tool bar and the image list that its buttons take their pictures from. Buttons and images count from 1.
#pragma once

#include "platform/desktop/Control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tessaly {

class ImageList {
public:
    virtual ~ImageList() = default;

    // The tag of image `number`. Throws std::out_of_range when there is none.
    virtual std::string Tag(std::int32_t number) const = 0;
};

class ToolBar : public Control {
public:
    // Raised when the user presses button `number`.
    std::function<void(std::int32_t number)> onButtonClick;

    // Removes all buttons.
    virtual void Clear() = 0;

    // Adds a button at the end, with a picture of the image list that belongs to this bar. Throws std::out_of_range,
    // and adds nothing, when there is no image `image`.
    virtual void AddButton(std::int32_t image, std::string_view tag) = 0;

    // What the bar needs for buttons, whether there are any or not, in twips. It stands at the top of the client area.
    virtual float PreferredHeight() const = 0;

    // Says what a button does, as its tool tip and to a screen reader: at first its tag. Throws std::out_of_range when
    // there is no such button.
    virtual void SetButtonTip(std::int32_t number, std::string_view tip) = 0;

    virtual std::int32_t ButtonCount() const = 0;

    // The tag of a button. Throws std::out_of_range when there is none.
    virtual std::string ButtonTag(std::int32_t number) const = 0;
};

} // namespace tessaly
