// Calls of the system and of the C library that fail when they are told to. Linked into a test program, or loaded in
// front of a finished one (LD_PRELOAD), which is told by its environment:
//   FAILING_CALL   the name, as below
//   FAILING_AT     which of its calls fails, counted from 1; 0 for none
//   FAILING_EVER   whether all later ones fail, too, when it is set
//   FAILING_COUNT  a file that gets the number of calls when the program ends
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

struct FailingCalls {
    const char* name; // null for none
    long at;
    int forEver; // 0: once; 1: and every later one; 2: and the next one
    long count;  // the calls of that name so far
};

extern struct FailingCalls failingCalls;

// What can fail. Some names stand for several calls that do the same; a short write writes half of what it should.
//   open read write short-write close fsync ftruncate rename chmod chown stat readlink mkdir pipe spawn fork poll
//   waitpid ioctl flock malloc (loaded in front only)

#ifdef __cplusplus
}
#endif
