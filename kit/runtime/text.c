/* Windows-1252 from and to UTF-8; see text.h.
 * Our own table and not iconv: a program block must run where the C library brings no converters along. */
#include "text.h"

#include <stdint.h>

const char kit_blanks[] = " \t";

/* What 0x80-0x9F stand for; all other bytes stand for the character of the same number. */
static const uint16_t upper[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

size_t kit_text_character(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/* Decodes the character at the text's beginning and returns its length, or 0 when it is not valid. */
static size_t decode(const char* text, size_t length, uint32_t* point) {
    static const uint32_t least[5] = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned char* bytes = (const unsigned char*)text;
    size_t count = length > 0 ? kit_text_character(bytes[0]) : 0;
    if (count == 0 || count > length)
        return 0;
    uint32_t value = count == 1 ? bytes[0] : bytes[0] & (0x7FU >> count);
    for (size_t i = 1; i < count; ++i) {
        if ((bytes[i] & 0xC0U) != 0x80)
            return 0;
        value = value << 6 | (bytes[i] & 0x3FU);
    }
    if (value < least[count] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return 0;
    *point = value;
    return count;
}

bool kit_text_is_utf8(const char* text, size_t length) {
    uint32_t point = 0;
    for (size_t at = 0, step = 0; at < length; at += step) {
        step = decode(text + at, length - at, &point);
        if (step == 0)
            return false;
    }
    return true;
}

static unsigned char ansi_byte(uint32_t point) {
    if (point < 0x80 || (point >= 0xA0 && point <= 0xFF))
        return (unsigned char)point;
    for (unsigned i = 0; i < 32; ++i)
        if (upper[i] == point)
            return (unsigned char)(0x80 + i);
    return '?';
}

size_t kit_text_to_ansi(const char* text, size_t length, char* result) {
    size_t written = 0;
    uint32_t point = 0;
    for (size_t at = 0, step = 0; at < length; at += step) {
        step = decode(text + at, length - at, &point);
        if (step == 0)
            break;
        result[written++] = (char)ansi_byte(point);
    }
    return written;
}

size_t kit_text_to_utf8(const char* text, size_t length, char* result) {
    char* end = result;
    for (size_t i = 0; i < length; ++i) {
        unsigned char byte = (unsigned char)text[i];
        unsigned point = byte >= 0x80 && byte <= 0x9F ? upper[byte - 0x80] : byte;
        if (point < 0x80) {
            *end++ = (char)point;
        } else if (point < 0x800) {
            *end++ = (char)(0xC0 | point >> 6);
            *end++ = (char)(0x80 | (point & 0x3F));
        } else {
            *end++ = (char)(0xE0 | point >> 12);
            *end++ = (char)(0x80 | (point >> 6 & 0x3F));
            *end++ = (char)(0x80 | (point & 0x3F));
        }
    }
    return (size_t)(end - result);
}
