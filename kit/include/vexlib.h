/* The types and calls of a program block, as the compile kit offers them.
 * A call returns VEX_OK (0) or a negative code and has then done nothing at all, but for the kit's own; none waits. */
#ifndef VEXLIB_H
#define VEXLIB_H

#include <stdarg.h>
#include <sys/types.h>

typedef unsigned char uchar;

/* glibc names this type too, unless a strict -std= hides it. Where it does, a second typedef would be a warning in
 * the older dialects, so ours is only for where there is none. */
#ifndef __USE_MISC
typedef unsigned int uint;
#endif

/* Has a compiler that can do it compare the arguments of Print with its format. MinGW's own name for the format says
 * which of Windows' two printf the program is built with. */
#if defined(__MINGW32__) && defined(__GNUC__)
#include <stdio.h>
#define VEX_PRINTF __attribute__((__format__(__MINGW_PRINTF_FORMAT, 1, 2)))
#elif defined(__GNUC__)
#define VEX_PRINTF __attribute__((__format__(__printf__, 1, 2)))
#else
#define VEX_PRINTF
#endif

/* A call that is the kit's own, and not a target's. There is no such name in the runtime: a block may have it itself.
 * The compiler then points at a file of the name that #line gives, and the batch file leaves the kit's call out. */
#define VEX_OWN static __inline

/* A number of 64 bits. */
#ifdef __GNUC__
__extension__
#endif
    typedef long long VexInt64;

/* What the calls return. */
#define VEX_OK 0             /* done */
#define VEX_BAD_CHANNEL (-1) /* the channel is not 0-255 */
#define VEX_BAD_FRAME (-2)   /* no frame, its ID is too large, or it is a remote frame and an FD frame at once */
#define VEX_BAD_LENGTH (-3)  /* a length that no such frame, or no serial packet, has */
#define VEX_BAD_PERIOD (-4)  /* a period that is not 1-2147483647 ms */
#define VEX_BAD_DATA (-5)    /* a null pointer where bytes or a text are needed */
#define VEX_BAD_TEXT (-6)    /* a text that cannot be formatted */
#define VEX_NO_TIMER (-7)    /* no timer of that ID is running */
#define VEX_TIMERS_FULL (-8) /* VEX_TIMER_LIMIT timers are running already */

/* How many timers may run at once. */
#define VEX_TIMER_LIMIT 4096

/* How many bytes SerialWrite takes, and OnSerial is given, at most. */
#define VEX_SERIAL_LIMIT 65535

/* One frame on a channel. The flags are 0 or 1; any other value counts as 1.
 * Start with DataFrame frame = {0}: a flag that you forget would otherwise have a random value. */
typedef struct DataFrame {
    uint id;        /* 0-0x7FF, or 0-0x1FFFFFFF when extended is set */
    uchar extended; /* the ID has 29 bits instead of 11 */
    uchar remote;   /* asks for data and carries none; length is the length asked for */
    uchar fd;       /* an FD frame: up to 64 bytes, and never remote */
    uchar brs;      /* FD: the data was sent at the higher bit rate; without fd it is ignored */
    uchar esi;      /* FD: the sender is error passive; without fd it is ignored */
    uchar length;   /* 0-8; for an FD frame 0-8, 12, 16, 20, 24, 32, 48 or 64 */
    uchar data[64]; /* the first length bytes count; 0 beyond them in a frame that OnFrame gets */
} DataFrame;

/* Sends a copy of the frame on a channel, 0-255. It is not heard by this block's own OnFrame.
 * Errors: VEX_BAD_CHANNEL, VEX_BAD_FRAME, VEX_BAD_LENGTH. */
int SendFrame(const DataFrame* frame, int channel);

/* Calls OnTimer(timerid) every period milliseconds, 1-2147483647, from now on, until StopTimer or the stop event.
 * Every value is an ID. A timer that is running already is started anew with the new period.
 * Errors: VEX_BAD_PERIOD, VEX_TIMERS_FULL. */
int StartTimer(uint timerid, long period);

/* As StartTimer, but calls OnTimer(timerid) a single time, after delay milliseconds.
 * The timer no longer runs when OnTimer is called, which may start it again. */
int StartTimerOnce(uint timerid, long delay);

/* Stops a timer of either kind. The result is VEX_NO_TIMER when it is not running, which a block may ignore. */
int StopTimer(uint timerid);

/* Writes datacount bytes, 0-VEX_SERIAL_LIMIT, to the serial port; with 0 bytes it does nothing, and data may be null.
 * Errors: VEX_BAD_LENGTH, VEX_BAD_DATA. */
int SerialWrite(const void* data, long datacount);

/* Prints a text, formatted as printf does it; no line end is added. The text is in Windows-1252, like the block's
 * source; one that is valid UTF-8 as a whole is printed as it is.
 * Errors: VEX_BAD_DATA, VEX_BAD_TEXT. */
VEX_PRINTF int Print(const char* format, ...);

/* The kit's own calls, which a target does not have, are made of these. */
long kit_now(void);
VexInt64 kit_now_microseconds(void);
void kit_fail(const char* format, va_list arguments);

/* Returns the milliseconds since the origin of time, as OnStart gets them. Time stands still in a handler. */
#ifndef Now
#line 1 "Now in vexlib.h"
VEX_OWN long Now(void) {
    return kit_now();
}
#endif

/* The same in microseconds; %lld prints it. */
#ifndef NowMicroseconds
#line 1 "NowMicroseconds in vexlib.h"
VEX_OWN VexInt64 NowMicroseconds(void) {
    return kit_now_microseconds();
}
#endif

/* The test has failed. Counts that, and prints the text, formatted as Print does it, with the place in
 * the script and the time on the standard error stream. The block goes on; the program's exit status will be 3. */
#ifndef Fail
#line 1 "Fail in vexlib.h"
VEX_PRINTF VEX_OWN void Fail(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    kit_fail(format, arguments);
    va_end(arguments);
}
#endif

#endif
