// A tool bar.
#pragma once

#include "platform/desktop/ToolBar.h"
#include "platform/desktop/win32/Child.h"

#include <string_view>

namespace tessaly::win32 {

class ToolBar final : public Control<tessaly::ToolBar> {
public:
    explicit ToolBar(Parent& parent);

    float PreferredHeight() const override;
    void Command(int id, int code) override;
    void Rescale() override;

private:
    void Show(const Extent& place) override;
    void Dock(const Size& /*client*/) override { Send(TB_AUTOSIZE); }
    void RemoveButtons() override;
    void ShowButton(std::int32_t image, std::string_view tag) override;
    void ShowTip(std::int32_t number, std::string_view tip) override;
    void ShowPictures();
    void SizeButtons();

    int mPictureSize = 0;
    ImageListOwner mPictures; // which are resources of this program; null for an empty bar
};

} // namespace tessaly::win32
