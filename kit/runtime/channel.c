/* The names of channels; see channel.h. */
#include "channel.h"

#include <string.h>

static KitChannelName table[KIT_CHANNEL_LIMIT];
static size_t table_count;

/* Reads a number that is the whole text. */
static bool read_channel(const char* text, size_t length, uchar* channel) {
    unsigned number = 0;
    for (size_t i = 0; i < length && number <= 255; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return false;
        number = number * 10 + (unsigned)(text[i] - '0');
    }
    *channel = (uchar)number;
    return length > 0 && number <= 255;
}

const char* kit_channel_name(const char* argument) {
    const char* equals = strrchr(argument, '=');
    if (equals == NULL || equals == argument || equals[1] == '\0')
        return "a channel is NAME=NUMBER";
    KitChannelName name = {argument, (size_t)(equals - argument), 0};
    const char* number = equals + 1;
    if (!read_channel(number, strlen(number), &name.channel)) {
        if (!read_channel(argument, name.length, &name.channel))
            return "a channel is a number, 0-255";
        name.name = number;
        name.length = strlen(number);
    }
    if (table_count == KIT_CHANNEL_LIMIT)
        return "there are too many names of channels";
    table[table_count++] = name;
    return NULL;
}

size_t kit_channel_names(const KitChannelName** names) {
    *names = table;
    return table_count;
}

bool kit_channel_find(const char* name, size_t length, uchar* channel) {
    for (size_t i = 0; i < table_count; ++i) {
        if (table[i].length != length || memcmp(table[i].name, name, length) != 0)
            continue;
        *channel = table[i].channel;
        return true;
    }
    size_t stem = length;
    while (stem > 0 && name[stem - 1] >= '0' && name[stem - 1] <= '9')
        --stem;
    return stem > 0 && read_channel(name + stem, length - stem, channel);
}
