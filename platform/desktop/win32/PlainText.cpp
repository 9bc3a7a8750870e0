// Control characters that mean something to the control are shown by the pictures that Unicode has for them.
#include "platform/desktop/win32/PlainText.h"

#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

namespace {

constexpr wchar_t FirstPicture = 0x2400;

bool IsShownByPicture(int character) {
    return character == 0x00 || character == 0x07 || character == 0x0B || character == 0x0C;
}

} // namespace

bool ShowControlCharacters(std::wstring& text) {
    bool hasPictures = false;
    for (wchar_t& character : text) {
        if (character == L'\n') {
            character = L'\r';
        } else if (IsShownByPicture(character)) {
            character = static_cast<wchar_t>(FirstPicture + character);
            hasPictures = true;
        }
    }
    return hasPictures;
}

std::u16string ToUnits(std::wstring_view text, bool hasPictures) {
    std::u16string units(text.begin(), text.end());
    for (char16_t& character : units) {
        if (character == u'\r') {
            character = u'\n';
        } else if (hasPictures && IsShownByPicture(character - FirstPicture)) {
            character = static_cast<char16_t>(character - FirstPicture);
        }
    }
    return units;
}

std::string PlainText(std::wstring_view text, bool hasPictures) {
    const std::u16string units = ToUnits(text, hasPictures);
    return ToUtf8(std::wstring(units.begin(), units.end()));
}

} // namespace tessaly::win32
