#include "platform/desktop/win32/PlainText.h"

#include "platform/text/ControlPictures.h"

namespace tessaly::win32 {

bool ShowControlCharacters(std::wstring& text) {
    bool hasPictures = false;
    for (wchar_t& character : text) {
        if (character == L'\n') {
            character = L'\r';
        } else if (HasControlPicture(character)) {
            character = ControlPicture(character);
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
        } else if (hasPictures) {
            character = WithoutControlPicture(character);
        }
    }
    return units;
}

} // namespace tessaly::win32
