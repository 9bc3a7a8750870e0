/* Frames as text, in the log format of candump -L: 123#DEADBEEF, 123#R4, 123##1DEADBEEF.
 * The number of id digits tells the kind of id: 3 for 11 bits, 8 for 29. */
#ifndef KIT_FRAME_H
#define KIT_FRAME_H

#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>

/* The longest frame there is as text, with a 0 at its end. */
#define KIT_FRAME_TEXT 140

/* Reads a hex digit; -1 for any other character. */
int kit_hex_digit(char character);

/* Reads a frame that takes up the whole text. Returns what is wrong with it, or a null pointer. */
const char* kit_frame_parse(const char* text, DataFrame* frame);

/* VEX_OK for a frame that can exist, otherwise VEX_BAD_FRAME or VEX_BAD_LENGTH. */
int kit_frame_check(const DataFrame* frame);

/* Writes a frame that has passed the check, and returns the length of the text. */
size_t kit_frame_text(const DataFrame* frame, char text[KIT_FRAME_TEXT]);

/* Reads a frame in which '.' may stand for any hex digit of the id, the flags and the data. The result is a text for
 * kit_frame_fits. Returns what is wrong, or a null pointer. */
const char* kit_frame_pattern(const char* text, size_t length, char pattern[KIT_FRAME_TEXT]);

bool kit_frame_fits(const DataFrame* frame, const char* pattern);

#endif
