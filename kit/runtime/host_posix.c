/* The operating system, as POSIX has it; see host.h. */
#include "host.h"

#ifndef _WIN32

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#ifdef __linux__
#include <sys/uio.h>

/* Where the linker lets the code of the program end, and all of it. */
extern char _etext[];
extern char _end[];

/* A variable lies behind the code. What is said must not need such a call. */
void kit_host_refuse_variables(const struct kit_call* calls, size_t count) {
    static char before[] = "the global variable \"";
    static char after[] = "\" has the name of a function of the C library that the runtime needs: rename it\n";
    for (size_t i = 0; i < count; ++i) {
        uintptr_t at = (uintptr_t)calls[i].code;
        if (at < (uintptr_t)_etext || at >= (uintptr_t)_end)
            continue;
        size_t length = 0;
        while (calls[i].name[length] != '\0')
            ++length;
        const struct iovec parts[] = {
            {before, sizeof before - 1}, {(void*)calls[i].name, length}, {after, sizeof after - 1}};
        ssize_t written = writev(2, parts, 3);
        (void)written;
        _Exit(1);
    }
}
#else
void kit_host_refuse_variables(const struct kit_call* calls, size_t count) {
    (void)calls;
    (void)count;
}
#endif

/* The calls that no script can be run without and that the generated C file does not declare. A block may have others
 * as variables and never notice. */
static const struct kit_call needed[] = {
    KIT_CALL(clock_gettime), KIT_CALL(memchr),  KIT_CALL(memcmp), KIT_CALL(memcpy),  KIT_CALL(memset), KIT_CALL(strchr),
    KIT_CALL(strcmp),        KIT_CALL(strcspn), KIT_CALL(strlen), KIT_CALL(strncmp), KIT_CALL(strspn),
};

/* What a handler prints is out before it crashes, also what it prints by itself. */
void kit_host_start(void) {
    kit_host_refuse_variables(needed, sizeof needed / sizeof needed[0]);
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
