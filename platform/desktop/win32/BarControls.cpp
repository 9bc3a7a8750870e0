// A press is told later: what it leads to may hide the button, which is still at work with it.
#include "platform/desktop/win32/BarControls.h"

#include "platform/desktop/Flagged.h"
#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

namespace {

// Around a caption, in twips, with the picture of a check box.
constexpr float BesideCaption = 240;
constexpr float BesideCheckBox = 420;
constexpr float AroundLine = 120;

std::wstring WithoutAccessKey(std::string_view caption) {
    std::wstring text;
    for (const wchar_t unit : ToWide(caption)) {
        text.append(unit == L'&' ? 2 : 1, unit);
    }
    return text;
}

} // namespace

TextBox::TextBox(Parent& parent, int id)
    : Control(parent, {WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, id}) {}

std::string TextBox::Text() const {
    return ToUtf8(WindowText(Handle()));
}

void TextBox::ShowText(std::string_view text) {
    const Flagged setting(mIsSetting);
    SetWindowTextW(Handle(), ToWide(text).c_str());
    Send(EM_SETSEL, 0, -1);
}

Size TextBox::PreferredSize() const {
    return {0, ToTwips(MeasureFont(ParentWindow().Font()).tmHeight, ParentWindow().Dpi()) + AroundLine};
}

void TextBox::Command(int /*id*/, int code) {
    if (code == EN_CHANGE && !mIsSetting) {
        Raise(onChange);
    }
}

Button::Button(Parent& parent, int id, ButtonKind kind)
    : Control(parent,
              {WC_BUTTONW, (kind == ButtonKind::Check ? DWORD{BS_AUTOCHECKBOX} : DWORD{BS_PUSHBUTTON}) | WS_TABSTOP, 0,
               id}),
      mKind(kind) {}

void Button::SetCaption(std::string_view caption) {
    SetWindowTextW(Handle(), WithoutAccessKey(caption).c_str());
}

Size Button::PreferredSize() const {
    const int dpi = ParentWindow().Dpi();
    const std::wstring caption = WindowText(Handle());
    RECT rect = {};
    HDC screen = GetDC(nullptr);
    HGDIOBJ before = SelectObject(screen, ParentWindow().Font());
    DrawTextW(screen, caption.c_str(), -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return {ToTwips(rect.right, dpi) + (mKind == ButtonKind::Check ? BesideCheckBox : BesideCaption),
            ToTwips(rect.bottom, dpi) + AroundLine};
}

void Button::Command(int /*id*/, int code) {
    if (code == BN_CLICKED) {
        ParentWindow().loop.Later([this] { TellClick(); });
    }
}

} // namespace tessaly::win32
