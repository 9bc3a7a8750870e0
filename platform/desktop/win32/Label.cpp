#include "platform/desktop/win32/Label.h"

#include "platform/system/win32/Text.h"

namespace tessaly {

// An ampersand in it is one: a label has no access key here.
Win32Label::Win32Label(Win32Parent& parent, int id)
    : Win32Control(parent, {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0, id}) {}

void Win32Label::SetCaption(std::string_view caption) {
    mCaption = caption;
    for (HWND named : {Handle(), mNamed}) {
        if (named != nullptr) {
            SetWindowTextW(named, ToWide(caption).c_str());
        }
    }
}

float Win32Label::PreferredHeight() const {
    return ToTwips(MeasureFont(Parent().Font()).tmHeight, Parent().Dpi());
}

} // namespace tessaly
