/* What a program block sends, writes and prints: one line of the standard output each, Print as it comes.
 * Everything goes through stdout's own buffer, so it keeps its order with what a handler prints by itself. */
#include "clock.h"
#include "frame.h"
#include "text.h"
#include "vexlib.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

static void write_stamp(void) {
    long long stamp = kit_clock_stamp();
    printf("(%010lld.%06lld) ", stamp / 1000000, stamp % 1000000);
}

int SendFrame(const DataFrame* frame, int channel) {
    if (channel < 0 || channel > 255)
        return VEX_BAD_CHANNEL;
    int result = frame != NULL ? kit_frame_check(frame) : VEX_BAD_FRAME;
    if (result != VEX_OK)
        return result;
    write_stamp();
    printf("can%d ", channel);
    kit_frame_write(frame, stdout);
    putchar('\n');
    return VEX_OK;
}

int SerialWrite(const void* data, long datacount) {
    if (datacount < 0 || datacount > VEX_SERIAL_LIMIT)
        return VEX_BAD_LENGTH;
    if (datacount == 0)
        return VEX_OK;
    if (data == NULL)
        return VEX_BAD_DATA;
    write_stamp();
    fputs("serial", stdout);
    for (long i = 0; i < datacount; ++i)
        printf(" %02x", ((const uchar*)data)[i]);
    putchar('\n');
    return VEX_OK;
}

int Print(const char* format, ...) {
    if (format == NULL)
        return VEX_BAD_DATA;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(NULL, 0, format, arguments);
    char* text = length >= 0 ? malloc((size_t)length + 1) : NULL;
    if (text != NULL)
        vsnprintf(text, (size_t)length + 1, format, again);
    va_end(again);
    va_end(arguments);
    if (text == NULL)
        return VEX_BAD_TEXT;
    if (kit_text_is_utf8(text, (size_t)length))
        fwrite(text, 1, (size_t)length, stdout);
    else
        kit_text_write(text, (size_t)length, stdout);
    free(text);
    return VEX_OK;
}
