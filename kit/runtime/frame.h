/* Frames as text, in the log format of candump -L: 123#DEADBEEF, 123#R4, 123##1DEADBEEF.
 * The number of id digits tells the kind of id: 3 for 11 bits, 8 for 29. */
#ifndef KIT_FRAME_H
#define KIT_FRAME_H

#include "vexlib.h"

#include <stdio.h>

/* Reads a hex digit; -1 for any other character. */
int kit_hex_digit(char character);

/* Reads a frame that takes up the whole text. Returns what is wrong with it, or a null pointer. */
const char* kit_frame_parse(const char* text, DataFrame* frame);

/* VEX_OK for a frame that can exist, otherwise VEX_BAD_FRAME or VEX_BAD_LENGTH. */
int kit_frame_check(const DataFrame* frame);

/* Writes a frame that has passed the check. */
void kit_frame_write(const DataFrame* frame, FILE* file);

#endif
