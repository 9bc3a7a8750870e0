// A tool bar. It stands below the menu until it is given a place.
#pragma once

#include "platform/desktop/ToolBar.h"
#include "platform/desktop/win32/Control.h"

#include <string>
#include <vector>

namespace tessaly::win32 {

class ImageList final : public tessaly::ImageList {
public:
    explicit ImageList(int dpi) { Rescale(dpi); }

    std::string Tag(std::int32_t number) const override;

    std::int32_t Count() const;

    // In pixels, for the resolution that was told last.
    int Size() const { return mSize; }
    void Rescale(int dpi);

    // The pictures, which are resources of this program. They are loaded when they are asked for: an empty bar has
    // none.
    HIMAGELIST Images();

private:
    int mSize = 0;
    ImageListOwner mImages;
};

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    ToolBar(Parent& parent, ImageList& images);

    void Clear() override;
    void AddButton(std::int32_t image, std::string_view tag) override;
    void SetButtonTip(std::int32_t number, std::string_view tip) override;
    std::int32_t ButtonCount() const override { return static_cast<std::int32_t>(mTags.size()); }
    float PreferredHeight() const override;
    std::string ButtonTag(std::int32_t number) const override;

    bool CanHaveFocus() const override { return true; }
    void Command(int id, int code) override;
    void Rescale() override;

    // Stands at the top of the window again if it was given no place.
    void Dock();

private:
    void SizeButtons();

    ImageList& mImages;
    std::vector<std::string> mTags;
};

} // namespace tessaly::win32
