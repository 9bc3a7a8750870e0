/* The time of a script and the timers that run in it.
 * Time stands still unless kit_clock_advance moves it: how long a handler takes is never seen.
 * How long it is since the origin, kit_now and kit_now_microseconds of vexlib.h tell. */
#ifndef KIT_CLOCK_H
#define KIT_CLOCK_H

#include <stdbool.h>
#include <stdint.h>

/* From now on time passes no faster than on the wall. */
void kit_clock_pace(void);

/* Moves time on to a stamp in microseconds, calling OnTimer for each timer that is due up to then. The first stamp of
 * all is the origin: it takes no time to get there. A stamp that has passed already counts as now. */
void kit_clock_advance(int64_t stamp);

/* Lets so many microseconds pass, calling OnTimer likewise, but no longer than until is_enough says so, which is asked
 * after each timer. Returns whether it did. */
bool kit_clock_wait(int64_t span, bool (*is_enough)(const void* context), const void* context);

/* Microseconds from a stamp to the next timer: 0 when it is due by then, -1 when none is running. */
int64_t kit_clock_left(int64_t stamp);

/* Now, in microseconds, on the scale of the stamps; 0 before there was one. */
int64_t kit_clock_stamp(void);

void kit_clock_stop_timers(void);

#endif
