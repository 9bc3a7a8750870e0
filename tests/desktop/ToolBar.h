// A tool bar in memory with its image list, and what a user can do with it.
#pragma once

#include "platform/desktop/ToolBar.h"
#include "tests/desktop/Control.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class ImageList final : public tessaly::ImageList {
public:
    explicit ImageList(Faults& faults) : mFaults(faults) {}

    std::string Tag(std::int32_t number) const override;

    // The tags of the images; a test may change them.
    std::vector<std::string> tags = {"Add", "Delete"};

private:
    Faults& mFaults;
};

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    ToolBar(Faults& faults, Focus& focus, const ImageList& images)
        : Control(faults, focus, Keyboard::Used),
          mImages(images) {}

    void Clear() override;
    void AddButton(std::int32_t image, std::string_view tag) override;
    float PreferredHeight() const override;
    void SetButtonTip(std::int32_t number, std::string_view tip) override;
    std::int32_t ButtonCount() const override;
    std::string ButtonTag(std::int32_t number) const override;

    // The user presses button `number`. Throws ImpossibleAction when there is none.
    void Press(std::int32_t number);

    // What the user sees of a button. Both throw std::out_of_range when there is none.
    std::int32_t ButtonImage(std::int32_t number) const;
    std::string ButtonTip(std::int32_t number) const;

    // Whether a press moves the focus to the bar. Desktops differ, so a program has to work either way.
    bool takesFocus = false;

private:
    struct Button {
        std::int32_t image = 0;
        std::string tag;
        std::string tip;
    };

    const ImageList& mImages;
    std::vector<Button> mButtons;
};

} // namespace tessaly::memory
