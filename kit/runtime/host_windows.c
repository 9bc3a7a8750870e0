/* The operating system, as Windows has it; see host.h.
 * Binary streams: the output is the same as elsewhere, byte for byte, and no Ctrl+Z in a script ends it. */
#include "host.h"

#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

static UINT input_page;
static UINT output_page;

/* The console outlives the program and belongs to the shell. */
static void restore_console(void) {
    if (input_page != 0)
        SetConsoleCP(input_page);
    if (output_page != 0)
        SetConsoleOutputCP(output_page);
}

bool kit_host_is_variable(void (*code)(void)) {
    static const DWORD is_code = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    MEMORY_BASIC_INFORMATION where;
    return VirtualQuery((LPCVOID)(UINT_PTR)code, &where, sizeof where) != 0 && (where.Protect & is_code) == 0;
}

void kit_host_say(const char* text, size_t length) {
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, (DWORD)length, &written, NULL);
}

/* What a handler prints by itself waits in a buffer: without one, each character would be written alone. */
static LONG WINAPI write_all(EXCEPTION_POINTERS* crash) {
    (void)crash;
    fflush(stdout);
    return EXCEPTION_CONTINUE_SEARCH;
}

static void write_all_and_end(int number) {
    (void)number;
    fflush(stdout);
}

void kit_host_start(void) {
    SetUnhandledExceptionFilter(write_all);
    signal(SIGABRT, write_all_and_end);
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    atexit(restore_console);
    if (_isatty(_fileno(stdin))) {
        input_page = GetConsoleCP();
        SetConsoleCP(CP_UTF8);
    }
    if (_isatty(_fileno(stdout))) {
        output_page = GetConsoleOutputCP();
        SetConsoleOutputCP(CP_UTF8);
    }
}

int64_t kit_host_now(void) {
    LARGE_INTEGER ticks;
    LARGE_INTEGER in_second;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&in_second);
    return ticks.QuadPart / in_second.QuadPart * 1000000 +
           ticks.QuadPart % in_second.QuadPart * 1000000 / in_second.QuadPart;
}

void kit_host_wait(int64_t microseconds) {
    static const int64_t longest = 1000000000;
    Sleep((DWORD)((microseconds < longest ? microseconds : longest) / 1000 + 1));
}

#endif
