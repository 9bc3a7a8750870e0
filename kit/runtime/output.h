/* The texts of the block, formatted and in UTF-8. */
#ifndef KIT_OUTPUT_H
#define KIT_OUTPUT_H

#include <stdarg.h>
#include <stddef.h>

/* Formats a text as printf does it, with a 0 at its end, and turns it into UTF-8 unless it is that already.
 * Returns a null pointer when it cannot be formatted; else the caller frees it. */
char* kit_output_format(const char* format, va_list arguments, size_t* length);

#endif
