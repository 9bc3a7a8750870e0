/* What the block has sent and printed since the last event, for what the script expects.
 * The last 16,384 frames and pieces of text are known at least; older ones may be forgotten. */
#ifndef KIT_SENT_H
#define KIT_SENT_H

#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>
#include <stdio.h>

/* Where something was sent: a channel 0-255, or what is printed. */
enum { kit_sent_print = 256, kit_sent_streams = 257 };

/* Forgets all, and notes from now on what is sent. */
void kit_sent_begin(void);

/* Notes nothing until the next beginning. */
void kit_sent_pause(void);

void kit_sent_note_frame(int channel, const DataFrame* frame);
void kit_sent_note_text(const char* text, size_t length);

/* Looks for a frame that fits the pattern, or for a text, after all that was found on that stream before. It is then
 * found, and all in front of it. What was looked through in vain is not looked at again before kit_sent_rewind. */
bool kit_sent_find_frame(int channel, const char* pattern);
bool kit_sent_find_text(const char* text, size_t length);
void kit_sent_rewind(void);

/* Whether there is a frame that was not found, on a channel or with -1 on any. */
bool kit_sent_has_frame(int channel);

/* Shows what of a stream was not found, one "got" a line; -1 is all channels. */
void kit_sent_show(int stream, FILE* file);

#endif
