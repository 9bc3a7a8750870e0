/* What a script expects of the block, as it is in a line: expect can0 123#01..FF within 0.5
 * Only read here; verdict.h looks whether it comes true. */
#ifndef KIT_EXPECTATION_H
#define KIT_EXPECTATION_H

#include "frame.h"
#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef enum KitExpected {
    kit_expected_frame,
    kit_expected_silence,
    kit_expected_print,
    kit_expected_verdict
} KitExpected;

typedef struct KitExpectation {
    const char* line; /* the words of the expectation, from "expect" on; the length leaves spaces at its end out */
    size_t line_length;
    KitExpected kind;
    int channel;                  /* frame, silence: -1 is every channel */
    char pattern[KIT_FRAME_TEXT]; /* frame */
    const char* text;             /* print: what is between the quotes, for kit_expectation_text */
    size_t text_length;           /* print */
    bool passes;                  /* verdict */
    int64_t span;                 /* microseconds to wait at most, or to be silent; 0 for no time */
} KitExpectation;

/* Reads the words after "expect", which begins the line. They stay as they are, and the expectation points at them.
 * Returns what is wrong, or a null pointer. */
const char* kit_expectation_parse(const char* line, const char* rest, KitExpectation* expectation);

/* Writes the text of a print without its backslashes, and returns its length, which is never greater. */
size_t kit_expectation_text(const KitExpectation* expectation, char* text);

/* Reads "SECONDS" or "SECONDS.FRACTION" with at most six digits after the point, as microseconds. Returns what follows,
 * or a null pointer. */
const char* kit_seconds_read(const char* text, int64_t* microseconds);

#endif
