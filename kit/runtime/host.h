/* What the runtime needs of the operating system, once for POSIX and once for Windows.
 * Both files are compiled everywhere, and the one that does not fit is empty: the batch files take all of runtime/. */
#ifndef KIT_HOST_H
#define KIT_HOST_H

#include <stddef.h>
#include <stdint.h>

/* Makes the standard streams pass bytes on as they are, in UTF-8 where a console shows or reads them. */
void kit_host_start(void);

/* A call of the C library. */
struct kit_call {
    const char* name;
    void (*code)(void);
};
#define KIT_CALL(name)                                                                                                 \
    { #name, (void (*)(void))(name) }

/* A global variable of the block takes the place of a call of that name, and the linker does not mind. On Linux this
 * says so of the first of these calls that is one, and ends the program with 1. */
void kit_host_refuse_variables(const struct kit_call* calls, size_t count);

/* Microseconds on a clock that nobody sets. */
int64_t kit_host_now(void);

/* Waits about this many microseconds, more than 0; may return early. */
void kit_host_wait(int64_t microseconds);

#endif
