/* Takes a line of an event script apart; see script.h.
 * A line without NUL bytes is an ordinary C string from then on, so every scan ends at its end at the latest. */
#include "script.h"

#include "channel.h"
#include "frame.h"
#include "text.h"

#include <string.h>

static char* skip_blanks(char* text) {
    return text + strspn(text, kit_blanks);
}

/* Ends the word at the text's beginning with a 0 and returns what follows it. */
static char* cut_word(char* text) {
    char* end = text + strcspn(text, kit_blanks);
    if (*end == '\0')
        return end;
    *end = '\0';
    return skip_blanks(end + 1);
}

/* Reads decimal digits up to a limit, which must be far below UINT64_MAX; returns what follows, or null. */
static char* read_number(char* text, uint64_t limit, uint64_t* number) {
    if (*text < '0' || *text > '9')
        return NULL;
    for (*number = 0; *text >= '0' && *text <= '9'; ++text) {
        *number = *number * 10 + (uint64_t)(*text - '0');
        if (*number > limit)
            return NULL;
    }
    return text;
}

/* Reads "(SECONDS)" or "(SECONDS.FRACTION)" and returns what follows, or null. */
static char* read_stamp(char* text, KitEvent* event) {
    const char* end = kit_seconds_read(text + 1, &event->stamp);
    event->has_stamp = true;
    return end != NULL && *end == ')' ? text + (end - text) + 1 : NULL;
}

static const char* parse_nothing(char* rest, KitEvent* event) {
    (void)event;
    return *skip_blanks(rest) == '\0' ? NULL : "nothing may follow this event";
}

static const char* parse_timer(char* rest, KitEvent* event) {
    uint64_t number = 0;
    char* end = read_number(skip_blanks(rest), UINT32_MAX, &number);
    if (end == NULL || *skip_blanks(end) != '\0')
        return "'timer' needs an id, 0-4294967295";
    event->timer = (uint)number;
    return NULL;
}

static const char* parse_error(char* rest, KitEvent* event) {
    static const char* const wrong = "'error' needs a channel and an error type, 0-255 each";
    uint64_t channel = 0;
    uint64_t error_type = 0;
    char* end = read_number(skip_blanks(rest), 255, &channel);
    if (end == NULL || strspn(end, kit_blanks) == 0)
        return wrong;
    end = read_number(skip_blanks(end), 255, &error_type);
    if (end == NULL || *skip_blanks(end) != '\0')
        return wrong;
    event->channel = (uchar)channel;
    event->error_type = (uchar)error_type;
    return NULL;
}

/* Text and keys: all that follows one space, so that a space can be a key, too. */
static const char* parse_msg(char* rest, KitEvent* event) {
    char* text = *rest == '\0' ? rest : rest + 1;
    size_t length = strlen(text);
    if (!kit_text_is_utf8(text, length))
        return "the text is not UTF-8";
    event->text = text;
    event->length = kit_text_to_ansi(text, length, text);
    text[event->length] = '\0';
    return NULL;
}

static const char* parse_key(char* rest, KitEvent* event) {
    const char* wrong = parse_msg(rest, event);
    if (wrong != NULL)
        return wrong;
    return event->length == 1 ? NULL : "'key' needs exactly one character";
}

/* The bytes go where the text of the line has been read already. */
static const char* parse_serial(char* rest, KitEvent* event) {
    event->text = rest;
    for (rest = skip_blanks(rest); *rest != '\0'; rest = skip_blanks(rest + 2)) {
        int high = kit_hex_digit(rest[0]);
        int low = high < 0 ? -1 : kit_hex_digit(rest[1]);
        if (low < 0 || strcspn(rest, kit_blanks) != 2)
            return "'serial' needs bytes of two hex digits each, with spaces between them";
        if (event->length == VEX_SERIAL_LIMIT)
            return "'serial' takes at most 65535 bytes";
        event->text[event->length++] = (char)(high << 4 | low);
    }
    return event->length > 0 ? NULL : "'serial' needs at least one byte";
}

static const char* parse_frame(char* name, KitEvent* event) {
    char* frame = cut_word(name);
    char* direction = cut_word(frame);
    char* rest = cut_word(direction);
    event->kind = kit_event_frame;
    if (!kit_channel_find(name, strlen(name), &event->channel))
        return "an interface is a name and a channel, 0-255, as in can0";
    const char* wrong = kit_frame_parse(frame, &event->frame);
    if (wrong != NULL)
        return wrong;
    bool known = *direction == '\0' || strcmp(direction, "R") == 0 || strcmp(direction, "T") == 0;
    return known && *rest == '\0' ? NULL : "only R or T may follow a frame";
}

static const char* parse_event(char* text, KitEvent* event) {
    static const struct {
        const char* word;
        KitEventKind kind;
        const char* (*parse)(char* rest, KitEvent* event);
    } events[] = {
        {"start", kit_event_start, parse_nothing},     {"stop", kit_event_stop, parse_nothing},
        {"trigger", kit_event_trigger, parse_nothing}, {"key", kit_event_key, parse_key},
        {"timer", kit_event_timer, parse_timer},       {"error", kit_event_error, parse_error},
        {"serial", kit_event_serial, parse_serial},    {"msg", kit_event_msg, parse_msg},
    };
    static const char expect[] = "expect";
    size_t length = strcspn(text, kit_blanks);
    if (length == 0)
        return "there is no event after the time";
    if (length == strlen(expect) && memcmp(text, expect, length) == 0) {
        event->kind = kit_event_expect;
        return kit_expectation_parse(text, text + length, &event->expectation);
    }
    for (size_t i = 0; i < sizeof events / sizeof events[0]; ++i) {
        if (strlen(events[i].word) != length || memcmp(text, events[i].word, length) != 0)
            continue;
        event->kind = events[i].kind;
        return events[i].parse(text + length, event);
    }
    return strchr(text, '#') != NULL ? parse_frame(text, event) : "unknown event";
}

const char* kit_script_parse(char* line, size_t length, KitEvent* event) {
    memset(event, 0, sizeof *event);
    if (length > 0 && line[length - 1] == '\n')
        line[--length] = '\0';
    if (length > 0 && line[length - 1] == '\r')
        line[--length] = '\0';
    char* text = skip_blanks(line);
    if (*text == '#' || text == line + length)
        return NULL;
    if (memchr(line, '\0', length) != NULL)
        return "a NUL byte";
    if (length > KIT_LINE_LIMIT)
        return "the line is longer than 1048576 bytes";
    if (*text == '(') {
        text = read_stamp(text, event);
        if (text == NULL)
            return "a time is (SECONDS) or (SECONDS.FRACTION) with at most six digits after the point";
        text = skip_blanks(text);
    }
    return parse_event(text, event);
}
