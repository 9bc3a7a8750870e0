/* What the runtime needs of the operating system, once for POSIX and once for Windows.
 * Both files are compiled everywhere, and the one that does not fit is empty: the batch files take all of runtime/. */
#ifndef KIT_HOST_H
#define KIT_HOST_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* Makes the standard streams pass bytes on as they are, in UTF-8 where a console shows or reads them. */
void kit_host_start(void);

/* Whether a variable of the program lies there, not code. False where the system does not tell. */
bool kit_host_is_variable(void (*code)(void));

/* Writes to the standard error without the C library. */
void kit_host_say(const char* text, size_t length);

/* Microseconds on a clock that nobody sets. */
int64_t kit_host_now(void);

/* Waits about this many microseconds, more than 0; may return early. */
void kit_host_wait(int64_t microseconds);

#endif
