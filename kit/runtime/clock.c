/* The time of a script and its timers; see clock.h.
 * All times are kept relative to the origin, so timers started before the first stamp are not late when it comes. */
#include "clock.h"

#include "host.h"
#include "tornem.h"
#include "vexlib.h"

#include <stddef.h>
#include <stdio.h>

typedef struct Timer {
    int64_t due;
    int64_t period; /* 0: fires a single time */
    uint64_t order; /* timers due at the same moment fire in the order they were started in */
    uint id;
} Timer;

/* A binary heap: timers[0] is the next one to fire. */
static Timer timers[VEX_TIMER_LIMIT];
static size_t timer_count;
static uint64_t timers_started;

static int64_t now;
static int64_t origin;
static bool has_origin;
static bool paced;
static int64_t wall_origin;

static bool fires_before(const Timer* one, const Timer* other) {
    return one->due != other->due ? one->due < other->due : one->order < other->order;
}

static void swap_timers(size_t one, size_t other) {
    Timer timer = timers[one];
    timers[one] = timers[other];
    timers[other] = timer;
}

/* Puts a timer whose key has changed to its place in the heap. */
static void settle(size_t at) {
    while (at > 0 && fires_before(&timers[at], &timers[(at - 1) / 2])) {
        swap_timers(at, (at - 1) / 2);
        at = (at - 1) / 2;
    }
    for (size_t child = 2 * at + 1; child < timer_count; child = 2 * at + 1) {
        if (child + 1 < timer_count && fires_before(&timers[child + 1], &timers[child]))
            ++child;
        if (!fires_before(&timers[child], &timers[at]))
            return;
        swap_timers(at, child);
        at = child;
    }
}

static size_t find_timer(uint id) {
    size_t at = 0;
    while (at < timer_count && timers[at].id != id)
        ++at;
    return at;
}

static void remove_timer(size_t at) {
    timers[at] = timers[--timer_count];
    if (at < timer_count)
        settle(at);
}

static int start_timer(uint id, long milliseconds, bool repeating) {
    if (milliseconds < 1 || milliseconds > INT32_MAX)
        return VEX_BAD_PERIOD;
    size_t at = find_timer(id);
    if (at == VEX_TIMER_LIMIT)
        return VEX_TIMERS_FULL;
    if (at == timer_count)
        ++timer_count;
    int64_t period = (int64_t)milliseconds * 1000;
    timers[at] = (Timer){now + period, repeating ? period : 0, timers_started++, id};
    settle(at);
    return VEX_OK;
}

int StartTimer(uint timerid, long period) {
    return start_timer(timerid, period, true);
}

int StartTimerOnce(uint timerid, long delay) {
    return start_timer(timerid, delay, false);
}

int StopTimer(uint timerid) {
    size_t at = find_timer(timerid);
    if (at == timer_count)
        return VEX_NO_TIMER;
    remove_timer(at);
    return VEX_OK;
}

void kit_clock_stop_timers(void) {
    timer_count = 0;
}

/* Sets the time, and waits for the wall to reach it when there is a pace to keep. */
static void move_to(int64_t moment) {
    now = moment;
    if (!paced)
        return;
    fflush(stdout);
    for (int64_t left = wall_origin + now - kit_host_now(); left > 0; left = wall_origin + now - kit_host_now())
        kit_host_wait(left);
}

/* The timer is taken care of before the handler is called, which may stop it or start it anew. */
static void fire_next(void) {
    uint id = timers[0].id;
    move_to(timers[0].due);
    if (timers[0].period > 0) {
        timers[0].due += timers[0].period;
        settle(0);
    } else {
        remove_timer(0);
    }
    OnTimer(id);
}

void kit_clock_pace(void) {
    paced = true;
    wall_origin = kit_host_now();
}

void kit_clock_advance(int64_t stamp) {
    if (!has_origin) {
        has_origin = true;
        origin = stamp - now;
        wall_origin = kit_host_now() - now;
    }
    kit_clock_wait(stamp - origin - now, NULL, NULL);
}

bool kit_clock_wait(int64_t span, bool (*is_enough)(const void* context), const void* context) {
    int64_t moment = now + span;
    while (timer_count > 0 && timers[0].due <= moment) {
        fire_next();
        if (is_enough != NULL && is_enough(context))
            return true;
    }
    if (moment > now)
        move_to(moment);
    return false;
}

int64_t kit_clock_left(int64_t stamp) {
    if (timer_count == 0)
        return -1;
    int64_t left = origin + timers[0].due - stamp;
    return left > 0 ? left : 0;
}

int64_t kit_clock_stamp(void) {
    return origin + now;
}

long kit_now(void) {
    return (long)(now / 1000);
}

VexInt64 kit_now_microseconds(void) {
    return now;
}
