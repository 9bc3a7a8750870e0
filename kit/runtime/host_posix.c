/* The operating system, as POSIX has it; see host.h. */
#include "host.h"

#ifndef _WIN32

#include <stdio.h>
#include <time.h>

/* What a handler prints is out before it crashes, also what it prints by itself. */
void kit_host_start(void) {
    setvbuf(stdout, NULL, _IONBF, 0);
}

int64_t kit_host_now(void) {
    struct timespec wall = {0, 0};
    clock_gettime(CLOCK_MONOTONIC, &wall);
    return (int64_t)wall.tv_sec * 1000000 + wall.tv_nsec / 1000;
}

void kit_host_wait(int64_t microseconds) {
    struct timespec pause = {(time_t)(microseconds / 1000000), (long)(microseconds % 1000000) * 1000};
    nanosleep(&pause, NULL);
}

#endif
