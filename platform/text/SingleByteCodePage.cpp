// Single-byte code pages. Runs of ASCII are copied whole; only the rest is looked up.
#include "platform/text/SingleByteCodePage.h"

#include "platform/text/Utf8.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

namespace {

// In memory an unassigned byte is the C1 control of the same number, as on Windows. Above those it is a private-use
// character. So the byte is there again when the file is saved.
char32_t StandIn(unsigned byte) {
    return byte < 0xA0 ? static_cast<char32_t>(byte) : static_cast<char32_t>(0xF700 + byte);
}

// Bytes 80 to 9F of Windows-1252; from A0 on it is Latin-1, where byte and character are the same number.
constexpr char32_t Windows1252C1[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

SingleByteCodePage::HighHalf MakeWindows1252() {
    SingleByteCodePage::HighHalf table;
    for (unsigned i = 0; i < table.size(); ++i) {
        table[i] = i < std::size(Windows1252C1) ? Windows1252C1[i] : static_cast<char32_t>(0x80 + i);
    }
    return table;
}

} // namespace

SingleByteCodePage::SingleByteCodePage(const HighHalf& highHalf) {
    for (unsigned i = 0; i < highHalf.size(); ++i) {
        if (highHalf[i] > 0xFFFF) {
            throw std::invalid_argument(
                "a single-byte code page holds characters of the Basic Multilingual Plane only");
        }
        const char32_t character = highHalf[i] != 0 ? highHalf[i] : StandIn(0x80 + i);
        std::string utf8;
        AppendUtf8(character, utf8);
        mDecoded[i] = {};
        std::copy(utf8.begin(), utf8.end(), mDecoded[i].bytes.begin());
        mDecoded[i].length = static_cast<std::uint8_t>(utf8.size());
        mPlaces.push_back({character, static_cast<char>(0x80 + i)});
    }
    mLowPlaces.fill('?');
    for (const Place& place : mPlaces) {
        if (place.character < mLowPlaces.size()) {
            mLowPlaces[place.character] = place.byte;
        }
    }
    std::sort(mPlaces.begin(), mPlaces.end(), [](const Place& a, const Place& b) { return a.character < b.character; });
}

// Three bytes of UTF-8 are copied whatever the length: what is too much is written over.
void SingleByteCodePage::AppendDecoded(std::string_view bytes, std::string& text) const {
    std::array<char, 1024> decoded; // three times the bytes of a piece, and an ASCII block too many
    constexpr std::size_t piece = decoded.size() / 4;
    std::size_t position = AsciiPrefix(bytes);
    text.append(bytes.substr(0, position));
    while (position < bytes.size()) {
        const std::string_view part = bytes.substr(position, piece);
        char* to = decoded.data();
        for (std::size_t i = 0; i < part.size();) {
            if (const auto byte = static_cast<unsigned char>(part[i]); byte >= 0x80) {
                const Utf8Character& character = mDecoded[byte - 0x80U];
                to = std::copy(character.bytes.begin(), character.bytes.end(), to) - 3 + character.length;
                ++i;
                continue;
            }
            const std::size_t run = CopyAscii(part.substr(i), to);
            i += run;
            to += run;
        }
        text.append(decoded.data(), static_cast<std::size_t>(to - decoded.data()));
        position += part.size();
    }
}

char* SingleByteCodePage::Encode(std::string_view text, char* to) const {
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t run = CopyAscii(text.substr(position), to);
        position += run;
        to += run;
        for (; position < text.size() && static_cast<unsigned char>(text[position]) >= 0x80; ++to) {
            *to = EncodeCharacter(ReadUtf8(text, position));
        }
    }
    return to;
}

char SingleByteCodePage::EncodeCharacter(char32_t character) const {
    if (character < mLowPlaces.size()) {
        return mLowPlaces[character];
    }
    const auto place = std::lower_bound(mPlaces.begin(), mPlaces.end(), character,
                                        [](const Place& entry, char32_t wanted) { return entry.character < wanted; });
    return place != mPlaces.end() && place->character == character ? place->byte : '?';
}

const SingleByteCodePage::HighHalf& Windows1252HighHalf() {
    static const SingleByteCodePage::HighHalf table = MakeWindows1252();
    return table;
}

} // namespace tessaly
