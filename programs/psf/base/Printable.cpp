// Only characters that could change what the terminal does are taken out.
#include "programs/psf/base/Printable.h"

#include "platform/text/Utf8.h"

#include <algorithm>
#include <iterator>

namespace tessaly::psf {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The controls, DEL with those of 8 bits, and what orders the direction of a line or ends one.
constexpr Range Commands[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x061C, 0x061C},
                              {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

bool IsCommand(char32_t character) {
    return std::any_of(std::begin(Commands), std::end(Commands),
                       [character](const Range& range) { return character >= range.first && character <= range.last; });
}

} // namespace

std::string_view NextPrintable(std::string_view text, std::size_t& position) {
    const std::size_t start = position;
    char32_t character = ReadUtf8(text, position);
    if (character == NotACharacter) {
        character = static_cast<unsigned char>(text[start]);
    }
    return IsCommand(character) ? std::string_view("?") : text.substr(start, position - start);
}

std::string Printable(std::string_view text) {
    std::string shown;
    for (std::size_t position = 0; position < text.size();) {
        shown += NextPrintable(text, position);
    }
    return shown;
}

std::string PrintableLines(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::string_view rest = text.substr(position);
        const bool stays = rest.starts_with('\n') || rest.starts_with('\t') || rest.starts_with("\r\n");
        shown += stays ? text.substr(position++, 1) : NextPrintable(text, position);
    }
    return shown;
}

} // namespace tessaly::psf
