// A static control.
#include "platform/desktop/win32/Label.h"

#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

// An ampersand in it is one: a label has no access key here.
Label::Label(Parent& parent, int id) : Control(parent, {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0, id}) {}

void Label::SetCaption(std::string_view caption) {
    for (HWND named : {Handle(), mNamed}) {
        if (named != nullptr) {
            SetWindowTextW(named, ToWide(caption).c_str());
        }
    }
}

float Label::PreferredHeight() const {
    return ToTwips(MeasureFont(ParentWindow().Font()).tmHeight, ParentWindow().Dpi());
}

} // namespace tessaly::win32
