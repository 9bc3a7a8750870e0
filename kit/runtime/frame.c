/* Frames as text; see frame.h.
 * The flags digit of an FD frame may carry the bit 4, "this is FD": some logs have it, and it tells nothing new. */
#include "frame.h"

#include <stdio.h>
#include <string.h>

enum { flag_brs = 1, flag_esi = 2, flags_known = 7 };

int kit_hex_digit(char character) {
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    return character >= 'A' && character <= 'F' ? character - 'A' + 10 : -1;
}

/* Reads the id in front of the '#'. */
static bool parse_id(const char* text, size_t digits, DataFrame* frame) {
    if (digits != 3 && digits != 8)
        return false;
    for (size_t i = 0; i < digits; ++i) {
        int digit = kit_hex_digit(text[i]);
        if (digit < 0)
            return false;
        frame->id = frame->id << 4 | (uint)digit;
    }
    frame->extended = digits == 8;
    return true;
}

/* Behind the 8 bytes of a classic frame a log may have "_9" to "_F": the length code on the wire, which is 8 all the
 * same. Returns the length of the text without it. */
static size_t without_code(const char* text, bool is_full) {
    size_t length = strlen(text);
    bool is_code = length > 2 && text[length - 2] == '_' && kit_hex_digit(text[length - 1]) > 8;
    return is_full && is_code ? length - 2 : length;
}

static const char* parse_data(const char* text, DataFrame* frame) {
    size_t digits = without_code(text, !frame->fd && strlen(text) == 18);
    for (size_t i = 0; i < digits; ++i)
        if (kit_hex_digit(text[i]) < 0)
            return "the data of a frame is hex digits only";
    if (digits % 2 != 0)
        return "the data of a frame has an odd number of hex digits";
    if (digits / 2 > (frame->fd ? 64 : 8))
        return frame->fd ? "an FD frame has at most 64 bytes" : "a frame has at most 8 bytes";
    frame->length = (uchar)(digits / 2);
    for (size_t i = 0; i < frame->length; ++i)
        frame->data[i] = (uchar)(kit_hex_digit(text[2 * i]) << 4 | kit_hex_digit(text[2 * i + 1]));
    return NULL;
}

static const char* parse_fd(const char* text, DataFrame* frame) {
    int flags = kit_hex_digit(text[0]);
    if (flags < 0)
        return "the flags of an FD frame are one hex digit";
    if (flags > flags_known)
        return "the flags of an FD frame are 0-7";
    frame->fd = 1;
    frame->brs = (flags & flag_brs) != 0;
    frame->esi = (flags & flag_esi) != 0;
    return parse_data(text + 1, frame);
}

static const char* parse_remote(const char* text, DataFrame* frame) {
    frame->remote = 1;
    if (text[0] == '\0')
        return NULL;
    if (text[0] < '0' || text[0] > '8' || without_code(text, text[0] == '8') != 1)
        return "the length of a remote frame is one digit, 0-8";
    frame->length = (uchar)(text[0] - '0');
    return NULL;
}

const char* kit_frame_parse(const char* text, DataFrame* frame) {
    memset(frame, 0, sizeof *frame);
    size_t digits = strcspn(text, "#");
    if (text[digits] == '\0')
        return "a frame needs a '#' after its ID";
    if (!parse_id(text, digits, frame))
        return "an id is 3 or 8 hex digits";
    const char* rest = text + digits + 1;
    const char* wrong = NULL;
    if (rest[0] == '#')
        wrong = parse_fd(rest + 1, frame);
    else if (rest[0] == 'R' || rest[0] == 'r')
        wrong = parse_remote(rest + 1, frame);
    else
        wrong = parse_data(rest, frame);
    if (wrong != NULL)
        return wrong;
    switch (kit_frame_check(frame)) {
    case VEX_OK:
        return NULL;
    case VEX_BAD_LENGTH:
        return "an FD frame has 0-8, 12, 16, 20, 24, 32, 48 or 64 bytes";
    default:
        return "an id is at most 7FF, or 1FFFFFFF with 8 digits";
    }
}

static bool is_fd_length(uchar length) {
    static const uchar longer[] = {12, 16, 20, 24, 32, 48, 64};
    return length <= 8 || memchr(longer, length, sizeof longer) != NULL;
}

int kit_frame_check(const DataFrame* frame) {
    if (frame->id > (frame->extended ? 0x1FFFFFFFU : 0x7FFU) || (frame->remote && frame->fd))
        return VEX_BAD_FRAME;
    if (frame->fd ? !is_fd_length(frame->length) : frame->length > 8)
        return VEX_BAD_LENGTH;
    return VEX_OK;
}

size_t kit_frame_text(const DataFrame* frame, char text[KIT_FRAME_TEXT]) {
    static const char digits[] = "0123456789ABCDEF";
    int length = snprintf(text, KIT_FRAME_TEXT, frame->extended ? "%08X#" : "%03X#", frame->id);
    char* end = text + length;
    if (frame->remote) {
        *end++ = 'R';
        if (frame->length > 0)
            *end++ = digits[frame->length];
        *end = '\0';
        return (size_t)(end - text);
    }
    if (frame->fd) {
        *end++ = '#';
        *end++ = digits[(frame->brs ? flag_brs : 0) | (frame->esi ? flag_esi : 0)];
    }
    for (size_t i = 0; i < frame->length; ++i) {
        *end++ = digits[frame->data[i] >> 4];
        *end++ = digits[frame->data[i] & 15];
    }
    *end = '\0';
    return (size_t)(end - text);
}

/* A frame with a 0 for each open digit has the same form; so what may not be open is found by its length. */
const char* kit_frame_pattern(const char* text, size_t length, char pattern[KIT_FRAME_TEXT]) {
    char plain[KIT_FRAME_TEXT];
    DataFrame frame;
    if (length >= sizeof plain)
        return "no frame is as long as that";
    for (size_t i = 0; i < length; ++i)
        plain[i] = text[i];
    plain[length] = '\0';
    for (char* open = strchr(plain, '.'); open != NULL; open = strchr(open, '.'))
        *open = '0';
    const char* wrong = kit_frame_parse(plain, &frame);
    if (wrong != NULL)
        return wrong;
    size_t written = kit_frame_text(&frame, pattern);
    for (size_t i = 0; i < length; ++i) {
        if (text[i] != '.')
            continue;
        if (i >= written)
            return "the length of a remote frame cannot be open";
        pattern[i] = '.';
    }
    return NULL;
}

bool kit_frame_fits(const DataFrame* frame, const char* pattern) {
    char text[KIT_FRAME_TEXT];
    size_t length = kit_frame_text(frame, text);
    if (strlen(pattern) != length)
        return false;
    for (size_t i = 0; i < length; ++i)
        if (pattern[i] != '.' && pattern[i] != text[i])
            return false;
    return true;
}
