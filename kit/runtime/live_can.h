/* CAN interfaces of Linux, for live.c. */
#ifndef KIT_LIVE_CAN_H
#define KIT_LIVE_CAN_H

#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>

enum { kit_can_limit = 256 };

/* Opens the interfaces that were given channels; when there are none, all that are called can and a number.
 * False when one cannot be opened, which has been said then. */
bool kit_can_open(void);

/* The files to wait for, and how many there are. */
size_t kit_can_files(int files[kit_can_limit]);

/* Takes what has arrived from a file and hands it to the block. False when the interface is gone. */
bool kit_can_read(size_t file);

void kit_can_send(const DataFrame* frame, int channel);

#endif
