/* What a program block sends, writes and prints: one line of the standard output each, Print as it comes.
 * Each call is written at once, so that it is there when the program crashes; and so nothing overtakes it. */
#include "output.h"

#include "clock.h"
#include "frame.h"
#include "live.h"
#include "sent.h"
#include "text.h"
#include "vexlib.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void write_out(const char* text, size_t length) {
    fwrite(text, 1, length, stdout);
    fflush(stdout);
}

/* Writes the time and what follows it, and returns the length. */
static int write_stamp(char* text, size_t room) {
    long long stamp = kit_clock_stamp();
    return snprintf(text, room, "(%010lld.%06lld) ", stamp / 1000000, stamp % 1000000);
}

int SendFrame(const DataFrame* frame, int channel) {
    char line[64 + KIT_FRAME_TEXT];
    if (channel < 0 || channel > 255)
        return VEX_BAD_CHANNEL;
    int result = frame != NULL ? kit_frame_check(frame) : VEX_BAD_FRAME;
    if (result != VEX_OK)
        return result;
    size_t length = (size_t)write_stamp(line, 64);
    length += (size_t)snprintf(line + length, 8, "can%d ", channel);
    length += kit_frame_text(frame, line + length);
    line[length++] = '\n';
    kit_sent_note_frame(channel, frame);
    kit_live_send(frame, channel);
    write_out(line, length);
    return VEX_OK;
}

int SerialWrite(const void* data, long datacount) {
    static const char digits[] = "0123456789abcdef";
    static char line[64 + 3 * VEX_SERIAL_LIMIT];
    if (datacount < 0 || datacount > VEX_SERIAL_LIMIT)
        return VEX_BAD_LENGTH;
    if (datacount == 0)
        return VEX_OK;
    if (data == NULL)
        return VEX_BAD_DATA;
    char* end = line + write_stamp(line, 32);
    memcpy(end, "serial", 6);
    end += 6;
    for (long i = 0; i < datacount; ++i) {
        *end++ = ' ';
        *end++ = digits[((const uchar*)data)[i] >> 4];
        *end++ = digits[((const uchar*)data)[i] & 15];
    }
    *end++ = '\n';
    kit_live_write(data, (size_t)datacount);
    write_out(line, (size_t)(end - line));
    return VEX_OK;
}

char* kit_output_format(const char* format, va_list arguments, size_t* length) {
    va_list again;
    va_copy(again, arguments);
    int count = vsnprintf(NULL, 0, format, again);
    va_end(again);
    char* text = count >= 0 ? malloc((size_t)count + 1) : NULL;
    if (text == NULL)
        return NULL;
    vsnprintf(text, (size_t)count + 1, format, arguments);
    *length = (size_t)count;
    if (kit_text_is_utf8(text, *length))
        return text;
    char* converted = malloc(3 * *length + 1);
    if (converted != NULL)
        *length = kit_text_to_utf8(text, *length, converted);
    free(text);
    return converted;
}

int Print(const char* format, ...) {
    if (format == NULL)
        return VEX_BAD_DATA;
    size_t length = 0;
    va_list arguments;
    va_start(arguments, format);
    char* text = kit_output_format(format, arguments, &length);
    va_end(arguments);
    if (text == NULL)
        return VEX_BAD_TEXT;
    kit_sent_note_text(text, length);
    write_out(text, length);
    free(text);
    return VEX_OK;
}
