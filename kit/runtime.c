/* The runtime as one file: compiled one by one, its files take four times as long.
 * So what is static in them has names that differ. */
#ifdef __linux__
#define _GNU_SOURCE
#endif
#include "runtime/calls.c"
#include "runtime/channel.c"
#include "runtime/clock.c"
#include "runtime/expectation.c"
#include "runtime/frame.c"
#include "runtime/host_posix.c"
#include "runtime/host_windows.c"
#include "runtime/keyboard.c"
#include "runtime/live.c"
#include "runtime/live_can.c"
#include "runtime/loop.c"
#include "runtime/output.c"
#include "runtime/script.c"
#include "runtime/sent.c"
#include "runtime/text.c"
#include "runtime/verdict.c"
