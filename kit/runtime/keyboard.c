/* The terminal as a keyboard; see keyboard.h.
 * Ctrl+C, Ctrl+\ and Ctrl+Z stay signals. Handlers call only what POSIX lets a signal handler call. */
#ifdef __linux__
#define _GNU_SOURCE
#include "keyboard.h"

#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <termios.h>
#include <unistd.h>

static struct termios before;
static volatile sig_atomic_t is_known; /* how the terminal was before */
static volatile sig_atomic_t is_raw;
static volatile sig_atomic_t signals;

static void make_raw(void) {
    if (!is_known || tcgetpgrp(STDIN_FILENO) != getpgrp())
        return;
    struct termios raw = before;
    raw.c_lflag &= ~(tcflag_t)(ICANON | ECHO | IEXTEN);
    raw.c_iflag &= ~(tcflag_t)(ICRNL | IXON);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    is_raw = 1;
    tcsetattr(STDIN_FILENO, TCSANOW, &raw);
}

void kit_keyboard_close(void) {
    if (is_raw)
        tcsetattr(STDIN_FILENO, TCSANOW, &before);
    is_raw = 0;
}

/* Lets the signal do what it does to any program, once it is no longer held back. */
static void do_as_usual(int number) {
    kit_keyboard_close();
    signal(number, SIG_DFL);
    raise(number);
}

static void end(int number) {
    if (signals++ > 0)
        do_as_usual(number);
}

static void suspend(int number) {
    (void)number;
    kit_keyboard_close();
    raise(SIGSTOP);
    make_raw();
}

static void take(int number, void (*handler)(int)) {
    struct sigaction action;
    memset(&action, 0, sizeof action);
    action.sa_handler = handler;
    action.sa_flags = SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, NULL);
}

/* The signals have a stack of their own: endless recursion is a way to crash, too. */
static void take_signals(void) {
    static char room[16384];
    stack_t stack = {.ss_sp = room, .ss_size = sizeof room};
    static const int ends[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    static const int breaks[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGPIPE, SIGALRM, SIGXCPU};
    sigaltstack(&stack, NULL);
    for (size_t i = 0; i < sizeof ends / sizeof *ends; ++i)
        take(ends[i], end);
    for (size_t i = 0; i < sizeof breaks / sizeof *breaks; ++i)
        take(breaks[i], do_as_usual);
    take(SIGTSTP, suspend);
    take(SIGTTOU, SIG_IGN); /* the terminal must be as before also when another program has it by then */
}

bool kit_keyboard_open(void) {
    take_signals();
    if (!isatty(STDIN_FILENO))
        return true;
    if (tcgetpgrp(STDIN_FILENO) != getpgrp() || tcgetattr(STDIN_FILENO, &before) != 0)
        return false;
    is_known = 1;
    atexit(kit_keyboard_close);
    make_raw();
    return true;
}

bool kit_keyboard_is_over(void) {
    return signals > 0;
}

#else
typedef int kit_keyboard_is_not_there;
#endif
