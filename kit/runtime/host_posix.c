/* The operating system, as POSIX has it; see host.h. */
#include "host.h"

#ifndef _WIN32

#include <stdio.h>
#include <sys/uio.h>
#include <time.h>

#ifdef __linux__
/* Where the linker lets the code of the program end, and all of it. A variable lies between them. */
extern char _etext[];
extern char _end[];

bool kit_host_is_variable(void (*code)(void)) {
    return (uintptr_t)code >= (uintptr_t)_etext && (uintptr_t)code < (uintptr_t)_end;
}
#else
bool kit_host_is_variable(void (*code)(void)) {
    (void)code;
    return false;
}
#endif

/* A block is less likely to have a variable of this name than one called write. */
void kit_host_say(const char* text, size_t length) {
    const struct iovec all = {(void*)text, length};
    ssize_t written = writev(2, &all, 1);
    (void)written;
}

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
