/* The time of a script and the timers that run in it.
 * Time stands still unless kit_clock_advance moves it: how long a handler takes is never seen. */
#ifndef KIT_CLOCK_H
#define KIT_CLOCK_H

#include <stdint.h>

/* From now on time passes no faster than on the wall. */
void kit_clock_pace(void);

/* Moves time on to a stamp in microseconds, calling OnTimer for each timer that is due up to then. The first stamp of
 * all is the origin: it takes no time to get there. A stamp that has passed already counts as now. */
void kit_clock_advance(int64_t stamp);

/* Now, in microseconds, on the scale of the stamps; 0 before there was one. */
int64_t kit_clock_stamp(void);

/* Milliseconds since the origin. */
long kit_clock_elapsed(void);

void kit_clock_stop_timers(void);

#endif
