// A tool bar, the image list that its buttons take their pictures from, and a status bar. Buttons, images and panels
// count from 1.
#pragma once

#include "platform/desktop/Control.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

struct ImageList {
    // The tag of image `number`. Throws std::out_of_range when there is none.
    const std::string& Tag(std::int32_t number) const { return tags.at(static_cast<std::size_t>(number) - 1); }

    std::vector<std::string> tags = {"Add", "Delete"};
};

// It stands at the top of the client area until it is given a place. It needs as much without a button as with some.
class ToolBar : public Control {
public:
    explicit ToolBar(Controls& controls) : Control(controls, Keyboard::Used) {}

    ImageList images;

    // Raised when the user presses button `number`.
    std::function<void(std::int32_t number)> onButtonClick;

    // Removes all buttons.
    void Clear();

    // Adds a button at the end, with a picture of the image list. Throws std::out_of_range, and adds nothing, when
    // there is no image `image`.
    void AddButton(std::int32_t image, std::string_view tag);

    // Says what a button does, as its tool tip and to a screen reader: at first its tag. Throws std::out_of_range when
    // there is no such button.
    void SetButtonTip(std::int32_t number, std::string_view tip);

    std::int32_t ButtonCount() const { return static_cast<std::int32_t>(mTags.size()); }

    // The tag of a button. Throws std::out_of_range when there is none.
    const std::string& ButtonTag(std::int32_t number) const { return mTags.at(static_cast<std::size_t>(number) - 1); }

protected:
    virtual void RemoveButtons() = 0;
    virtual void ShowButton(std::int32_t image, std::string_view tag) = 0; // behind the others
    virtual void ShowTip(std::int32_t number, std::string_view tip) = 0;

    void Dock(const Size& client) override { Show({0, 0, client.width, PreferredHeight()}); }

    // The user has pressed a button; nothing is told of one that has gone in the meantime.
    void RaiseClick(std::int32_t number);

private:
    std::vector<std::string> mTags;
};

// It begins with no panel, and stands at the bottom of the client area with a line above it until it is given a place.
// The tool tip of a panel is its text, which may be cut off. It needs as much without a panel as with some.
class StatusBar : public Control {
public:
    explicit StatusBar(Controls& controls) : Control(controls, Keyboard::Unused) {}

    // Adds a panel at the end, with no text.
    void AddPanel();

    // Both throw std::out_of_range when there is no such panel. Springing panels share the width that the others leave.
    void SetPanelSpring(std::int32_t number);
    void SetPanelText(std::int32_t number, std::string_view text);

protected:
    struct Panel {
        std::string text;
        bool isSpring = false;
    };

    // There are other panels now, others of them spring, or they have other texts.
    virtual void ShowPanels() = 0;

    const std::vector<Panel>& Panels() const { return mPanels; }

    // Where each panel ends in a bar of this width, if one that does not spring is `fixed` wide.
    std::vector<int> Ends(int width, int fixed) const;
    static constexpr float FixedWidth = 1440; // in twips

    void Dock(const Size& client) override;

private:
    static Panel& At(std::vector<Panel>& panels, std::int32_t number);
    void Change(std::vector<Panel> panels);

    std::vector<Panel> mPanels;
};

} // namespace tessaly
