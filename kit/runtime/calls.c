/* What is said must not need a call that may be hidden; see calls.h. */
#include "calls.h"

#include "host.h"

#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

static void say(const char* text) {
    size_t length = 0;
    while (text[length] != '\0')
        ++length;
    kit_host_say(text, length);
}

void kit_calls_check(const Call* calls, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (!kit_host_is_variable(calls[i].code))
            continue;
        say("the global variable \"");
        say(calls[i].name);
        say("\" has the name of a function of the C library that the runtime needs: rename it\n");
        _Exit(1);
    }
}

void kit_calls_check_needed(void) {
    static const Call needed[] = {
#ifdef _WIN32
        KIT_CALL(signal), /* what begins a program there needs some of the others before this can look at them */
#else
        KIT_CALL(clock_gettime),
#endif
        KIT_CALL(memchr), KIT_CALL(memcmp),  KIT_CALL(memcpy), KIT_CALL(memset),  KIT_CALL(strchr),
        KIT_CALL(strcmp), KIT_CALL(strcspn), KIT_CALL(strlen), KIT_CALL(strncmp), KIT_CALL(strspn),
    };
    kit_calls_check(needed, sizeof needed / sizeof needed[0]);
}
