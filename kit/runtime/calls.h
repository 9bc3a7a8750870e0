/* Variables of a block that hide calls of the C library. The linker lets them take the call's place and does not mind.
 */
#ifndef KIT_CALLS_H
#define KIT_CALLS_H

#include <stddef.h>

typedef struct Call {
    const char* name;
    void (*code)(void);
} Call;

#define KIT_CALL(name)                                                                                                 \
    { #name, (void (*)(void))(name) }

/* Ends the program with 1 if one of these calls is a variable, and says which. */
void kit_calls_check(const Call* calls, size_t count);

/* The same for the calls that no script can be run without and that the generated C file does not declare. A block may
 * have others as variables and never notice. */
void kit_calls_check_needed(void);

#endif
