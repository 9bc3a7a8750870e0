/* What failed: Fail of the block, and expectations of the script that did not come true.
 * Each is told on the standard error stream, where the script was and what the time was. */
#ifndef KIT_VERDICT_H
#define KIT_VERDICT_H

#include "expectation.h"

/* What the program ends with when something failed. */
enum { kit_verdict_failed = 3 };

/* Where the script is. The name must stay. */
void kit_verdict_place(const char* script, unsigned long line);

/* Sees whether an expectation comes true, letting time pass where it says so. */
void kit_verdict_expect(const KitExpectation* expectation);

/* 0, or kit_verdict_failed. */
int kit_verdict_status(void);

#endif
