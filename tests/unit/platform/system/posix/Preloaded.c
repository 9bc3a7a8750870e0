// What comes on top when the failing calls are loaded in front of a finished program: the environment, and malloc.
#define _GNU_SOURCE
#include "FailingCalls.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

int FailingCallIsDue(const char* name);

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);

static const char* countFile;

// The first allocations come before any constructor of this library.
static void ReadEnvironment(void) {
    static int done;
    if (done || environ == NULL) {
        return;
    }
    done = 1;
    failingCalls.name = getenv("FAILING_CALL");
    failingCalls.at = getenv("FAILING_AT") != NULL ? atol(getenv("FAILING_AT")) : 0;
    failingCalls.forEver = getenv("FAILING_EVER") != NULL;
    countFile = getenv("FAILING_COUNT");
    unsetenv("LD_PRELOAD"); // what the program starts is none of our business
}

__attribute__((constructor)) static void Begin(void) {
    ReadEnvironment();
}

__attribute__((destructor)) static void End(void) {
    const long count = failingCalls.count;
    failingCalls.name = NULL;
    FILE* const file = countFile != NULL ? fopen(countFile, "w") : NULL;
    if (file != NULL) {
        fprintf(file, "%ld\n", count);
        fclose(file);
    }
}

static int AllocationFails(void) {
    ReadEnvironment();
    if (FailingCallIsDue("malloc")) {
        errno = ENOMEM;
        return 1;
    }
    return 0;
}

void* malloc(size_t size) {
    return AllocationFails() ? NULL : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
    return AllocationFails() ? NULL : __libc_calloc(count, size);
}

void* realloc(void* memory, size_t size) {
    return AllocationFails() ? NULL : __libc_realloc(memory, size);
}
