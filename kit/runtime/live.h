/* Running against the real thing: CAN interfaces, a serial port, the keyboard, and the system's clock. Linux only.
 * Where it is not there, the functions exist and do nothing. */
#ifndef KIT_LIVE_H
#define KIT_LIVE_H

#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>

bool kit_live_is_there(void);

/* Runs the block from OnStart to OnStop, with the serial port of that name or none with a null pointer. Returns the
 * exit status: 1 when a device cannot be opened or is lost, else that of the verdict. */
int kit_live_run(const char* serial);

/* Sends a frame that has passed the check where the channel is an interface, and bytes where there is a serial port. */
void kit_live_send(const DataFrame* frame, int channel);
void kit_live_write(const void* data, size_t count);

/* For the devices: makes it now, with all timers that are due; and whether the run is to end. Linux alone has these. */
void kit_live_advance(void);
bool kit_live_is_over(void);

#endif
