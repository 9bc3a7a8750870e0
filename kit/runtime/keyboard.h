/* The terminal as a keyboard: each key comes at once and is not shown. POSIX only, for live.c. */
#ifndef KIT_KEYBOARD_H
#define KIT_KEYBOARD_H

#include <stdbool.h>

/* Takes the keys of the terminal at the standard input, if it is one and the program is in its foreground, and from now
 * on the signals that end, suspend or break a program: the terminal is as before whenever this one no longer runs.
 * Returns whether there are keys to read. */
bool kit_keyboard_open(void);

/* Makes the terminal as before. */
void kit_keyboard_close(void);

/* Whether a signal wants the program to end. The second one ends it at once. */
bool kit_keyboard_is_over(void);

#endif
