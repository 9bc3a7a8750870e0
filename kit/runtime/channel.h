/* Which channel an interface of a script is: the number at the end of its name, as in can0, unless it was given one. */
#ifndef KIT_CHANNEL_H
#define KIT_CHANNEL_H

#include "vexlib.h"

#include <stdbool.h>
#include <stddef.h>

/* How many names can be given. */
#define KIT_CHANNEL_LIMIT 256

typedef struct KitChannelName {
    const char* name; /* lies in the argument that gave it, and ends at the length */
    size_t length;
    uchar channel;
} KitChannelName;

/* Gives a channel a name: "NAME=NUMBER", or "NUMBER=NAME". The text must stay. Returns what is wrong, or a null
 * pointer. */
const char* kit_channel_name(const char* argument);

/* The names given so far, in their order. */
size_t kit_channel_names(const KitChannelName** names);

/* Finds the channel of an interface. False for one with neither a given name nor a number of 0-255 at its end. */
bool kit_channel_find(const char* name, size_t length, uchar* channel);

#endif
