/* What the block has sent since the last event; see sent.h.
 * Each frame is an item, and each 64 bytes of text; items are numbered on and on, and marks tell what was found. */
#include "sent.h"

#include "clock.h"
#include "frame.h"

#include <string.h>

enum { kept = 16384, piece = 64, shown = 8 };

typedef struct Item {
    int64_t stamp;
    int stream;
    DataFrame frame; /* of a text only length and data */
} Item;

/* A byte of an item; the offset is 0 in all but texts. */
typedef struct Place {
    uint64_t number;
    size_t offset;
} Place;

static Item items[2 * kept];
static size_t item_count;
static uint64_t base; /* the number of items[0] */
static bool noting = true;
static Place found[kit_sent_streams]; /* after what was found; a place before the base counts as the base */
static uint64_t looked;               /* the items in front of it do not hold what is looked for */

void kit_sent_begin(void) {
    base += item_count;
    item_count = 0;
    noting = true;
}

void kit_sent_pause(void) {
    noting = false;
}

void kit_sent_rewind(void) {
    looked = 0;
}

static uint64_t end_number(void) {
    return base + item_count;
}

static Item* item_at(uint64_t number) {
    return &items[number - base];
}

static Place first_place(int stream) {
    Place place = found[stream];
    if (place.number < base)
        place = (Place){base, 0};
    if (place.number < looked)
        place = (Place){looked, 0};
    return place;
}

static Item* add_item(int stream) {
    if (item_count == 2 * (size_t)kept) {
        memcpy(items, items + kept, kept * sizeof *items);
        item_count = kept;
        base += kept;
    }
    Item* item = &items[item_count++];
    item->stamp = kit_clock_stamp();
    item->stream = stream;
    return item;
}

void kit_sent_note_frame(int channel, const DataFrame* frame) {
    if (noting)
        add_item(channel)->frame = *frame;
}

void kit_sent_note_text(const char* text, size_t length) {
    while (noting && length > 0) {
        size_t part = length < piece ? length : piece;
        while (part < length && part > 1 && ((uchar)text[part] & 0xC0U) == 0x80)
            --part; /* whole characters, for kit_sent_show */
        DataFrame* frame = &add_item(kit_sent_print)->frame;
        memcpy(frame->data, text, part);
        frame->length = (uchar)part;
        text += part;
        length -= part;
    }
}

bool kit_sent_find_frame(int channel, const char* pattern) {
    for (uint64_t at = first_place(channel).number; at < end_number(); ++at) {
        if (item_at(at)->stream != channel || !kit_frame_fits(&item_at(at)->frame, pattern))
            continue;
        found[channel] = (Place){at + 1, 0};
        return true;
    }
    looked = end_number();
    return false;
}

/* Whether the text is what was printed from a place on, across its pieces. Moves the place after it. */
static bool is_text_at(Place* place, const char* text, size_t length) {
    for (; length > 0 && place->number < end_number(); *place = (Place){place->number + 1, 0}) {
        const Item* item = item_at(place->number);
        if (item->stream != kit_sent_print)
            continue;
        size_t left = item->frame.length - place->offset;
        size_t part = left < length ? left : length;
        if (memcmp(item->frame.data + place->offset, text, part) != 0)
            return false;
        text += part;
        length -= part;
        if (length == 0) {
            place->offset += part;
            return true;
        }
    }
    return false;
}

/* The last item that a text could begin in of which nothing but the last byte is still to come. */
static uint64_t last_beginning(size_t length) {
    uint64_t at = end_number();
    for (size_t printed = 1; at > base && printed < length; --at)
        if (item_at(at - 1)->stream == kit_sent_print)
            printed += item_at(at - 1)->frame.length;
    return at;
}

bool kit_sent_find_text(const char* text, size_t length) {
    for (Place at = first_place(kit_sent_print); at.number < end_number(); at = (Place){at.number + 1, 0}) {
        const Item* item = item_at(at.number);
        for (; item->stream == kit_sent_print && at.offset < item->frame.length; ++at.offset) {
            Place end = at;
            if (!is_text_at(&end, text, length))
                continue;
            found[kit_sent_print] = end;
            return true;
        }
    }
    looked = last_beginning(length);
    return false;
}

/* Whether an item was sent there and not found. */
static bool is_left(uint64_t number, int stream) {
    const Item* item = item_at(number);
    bool is_there = stream < 0 ? item->stream != kit_sent_print : item->stream == stream;
    const Place* place = &found[item->stream];
    bool is_found = number < place->number;
    bool is_used_up = number == place->number && place->offset > 0 && place->offset >= item->frame.length;
    return is_there && !is_found && !is_used_up;
}

bool kit_sent_has_frame(int channel) {
    for (uint64_t at = base; at < end_number(); ++at)
        if (is_left(at, channel))
            return true;
    return false;
}

/* A text in quotes as an expectation has it; other control characters are dots. */
static void show_text(uint64_t number, FILE* file) {
    const Item* item = item_at(number);
    const Place* place = &found[kit_sent_print];
    putc('"', file);
    for (size_t i = number == place->number ? place->offset : 0; i < item->frame.length; ++i) {
        static const char escapes[] = "\nn\rr\tt\"\"\\\\";
        char character = (char)item->frame.data[i];
        const char* escape = character != '\0' ? strchr(escapes, character) : NULL;
        if (escape != NULL && (escape - escapes) % 2 == 0)
            fprintf(file, "\\%c", escape[1]);
        else
            putc((unsigned char)character < ' ' || character == 0x7F ? '.' : character, file);
    }
    putc('"', file);
}

static void show_item(uint64_t number, FILE* file) {
    const Item* item = item_at(number);
    char text[KIT_FRAME_TEXT];
    fprintf(file, "    got: (%010lld.%06lld) ", (long long)item->stamp / 1000000, (long long)item->stamp % 1000000);
    if (item->stream == kit_sent_print) {
        show_text(number, file);
    } else {
        kit_frame_text(&item->frame, text);
        fprintf(file, "can%d %s", item->stream, text);
    }
    putc('\n', file);
}

void kit_sent_show(int stream, FILE* file) {
    size_t left = 0;
    for (uint64_t at = base; at < end_number(); ++at)
        if (is_left(at, stream) && ++left <= shown)
            show_item(at, file);
    if (left == 0)
        fputs("    got: nothing\n", file);
    else if (left > shown)
        fprintf(file, "    got: %lu more\n", (unsigned long)(left - shown));
}
