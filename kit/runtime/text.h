/* Windows-1252, which program blocks work in, from and to UTF-8, which scripts and terminals are in.
 * The five bytes without a character (81 8D 8F 90 9D) stand for the control characters of the same number. */
#ifndef KIT_TEXT_H
#define KIT_TEXT_H

#include <stdbool.h>
#include <stddef.h>

/* What parts the words of a line. */
extern const char kit_blanks[];

/* Whether the bytes are valid UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF. */
bool kit_text_is_utf8(const char* text, size_t length);

/* Turns valid UTF-8 into Windows-1252 and returns its length, which is never greater. A character without a place
 * becomes '?'. The result may lie anywhere up to the text's own beginning; no 0 is added. */
size_t kit_text_to_ansi(const char* text, size_t length, char* result);

/* Turns Windows-1252 into UTF-8 and returns its length, which is at most three times that of the text. No 0 is added.
 */
size_t kit_text_to_utf8(const char* text, size_t length, char* result);

/* How many bytes the UTF-8 character has that begins with this one; 0 when none does. */
size_t kit_text_character(unsigned char lead);

#endif
