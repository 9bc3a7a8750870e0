/* One line of an event script, taken apart.
 * The bytes and texts of an event lie in the line itself, which is overwritten while it is read. */
#ifndef KIT_SCRIPT_H
#define KIT_SCRIPT_H

#include "expectation.h"
#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef enum KitEventKind {
    kit_event_none, /* an empty line or a comment */
    kit_event_start,
    kit_event_stop,
    kit_event_trigger,
    kit_event_key,
    kit_event_timer,
    kit_event_error,
    kit_event_serial,
    kit_event_msg,
    kit_event_frame,
    kit_event_expect /* not an event, but what is expected of the block */
} KitEventKind;

typedef struct KitEvent {
    KitEventKind kind;
    bool has_stamp;
    int64_t stamp;    /* microseconds */
    uint timer;       /* timer */
    uchar channel;    /* frame, error */
    uchar error_type; /* error */
    char* text;       /* msg (with a 0 at its end), key and serial; never null for these */
    size_t length;    /* of the text: 1 for a key, 1-VEX_SERIAL_LIMIT for serial */
    DataFrame frame;  /* frame */
    KitExpectation expectation;
} KitEvent;

/* Longer lines are refused, apart from comments: 1 MiB holds more than any event needs. */
#define KIT_LINE_LIMIT 1048576

/* Reads a line of the given length, with or without its line end; line[length] must be 0.
 * Returns what is wrong with it, or a null pointer. */
const char* kit_script_parse(char* line, size_t length, KitEvent* event);

#endif
