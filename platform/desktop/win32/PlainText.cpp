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

std::string PlainText(std::wstring text, bool hasPictures) {
    for (wchar_t& character : text) {
        if (character == L'\r') {
            character = L'\n';
        } else if (hasPictures && IsShownByPicture(character - FirstPicture)) {
            character = static_cast<wchar_t>(character - FirstPicture);
        }
    }
    return ToUtf8(text);
}

} // namespace tessaly::win32
