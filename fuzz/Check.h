// What every target ends with when something does not hold.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program, and with it the run, unless `condition` holds.
#define CHECK(condition)                                                                                               \
    if (!(condition)) {                                                                                                \
        std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);                            \
        std::abort();                                                                                                  \
    }
