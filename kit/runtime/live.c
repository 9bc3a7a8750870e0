/* Running against the real thing; see live.h.
 * Time is that of the system's clock at the start, and goes on steadily; a timer fires when the handlers leave it time.
 */
#ifdef __linux__
#define _GNU_SOURCE
#endif
#include "live.h"

#ifdef __linux__

#include "calls.h"
#include "clock.h"
#include "host.h"
#include "keyboard.h"
#include "live_can.h"
#include "sent.h"
#include "text.h"
#include "tornem.h"
#include "verdict.h"

#include <errno.h>
#include <fcntl.h>
#include <net/if.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

static bool is_live;
static bool is_lost; /* a device */
static int64_t start_stamp;
static int64_t start_wall;

static const char* serial_name;
static int serial = -1;
static char* unwritten; /* bytes that the serial port has not taken yet */
static size_t unwritten_count;

static bool has_keys;

bool kit_live_is_there(void) {
    return true;
}

bool kit_live_is_over(void) {
    return is_lost || kit_keyboard_is_over();
}

void kit_live_advance(void) {
    kit_clock_advance(start_stamp + kit_host_now() - start_wall);
}

/* Says what a device does not do, and ends the run. */
static void lose(const char* name, const char* what) {
    fprintf(stderr, "%s: %s: %s\n", name, what, strerror(errno));
    is_lost = true;
}

/* A port keeps its speed; bytes pass as they are. */
static bool open_serial(const char* name) {
    struct termios settings;
    serial_name = name;
    serial = open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (serial < 0 || tcgetattr(serial, &settings) != 0) {
        lose(name, "cannot open the serial port");
        return false;
    }
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    tcsetattr(serial, TCSANOW, &settings);
    return true;
}

static void write_serial(void) {
    while (unwritten_count > 0 && !is_lost) {
        ssize_t count = write(serial, unwritten, unwritten_count);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN)
            return;
        if (count < 0) {
            lose(serial_name, "cannot write to the serial port");
            return;
        }
        unwritten_count -= (size_t)count;
        memmove(unwritten, unwritten + count, unwritten_count);
    }
}

void kit_live_write(const void* data, size_t count) {
    if (serial < 0)
        return;
    char* longer = realloc(unwritten, unwritten_count + count);
    if (longer == NULL) {
        lose(serial_name, "cannot write to the serial port");
        return;
    }
    unwritten = longer;
    memcpy(unwritten + unwritten_count, data, count);
    unwritten_count += count;
    write_serial();
}

void kit_live_send(const DataFrame* frame, int channel) {
    if (is_live)
        kit_can_send(frame, channel);
}

static void read_serial(void) {
    static char bytes[VEX_SERIAL_LIMIT];
    ssize_t count = read(serial, bytes, sizeof bytes);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        errno = count == 0 ? EIO : errno;
        lose(serial_name, "the serial port is gone");
        return;
    }
    kit_live_advance();
    OnSerial(bytes, (unsigned short)count);
}

/* Hands over a byte of the keyboard, once the UTF-8 character is whole. */
static void take_key(char byte) {
    static char character[4];
    static size_t count;
    if (count > 0 && ((unsigned char)byte & 0xC0U) != 0x80)
        count = 0; /* the rest of the last one did not come */
    character[count++] = byte;
    size_t length = kit_text_character((unsigned char)character[0]);
    if (count < length)
        return;
    char key = '?';
    if (kit_text_is_utf8(character, count))
        kit_text_to_ansi(character, count, &key);
    count = 0;
    kit_live_advance();
    OnKey(key);
}

static void read_keys(void) {
    char bytes[256];
    ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0)
        has_keys = false;
    for (ssize_t i = 0; i < count && !kit_live_is_over(); ++i)
        take_key(bytes[i]);
}

/* Waits for files, a signal or the next timer. A signal that comes right before the wait ends it, too. */
static int wait_for(struct pollfd* files, size_t count) {
    sigset_t ends;
    sigset_t usual;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGHUP);
    sigaddset(&ends, SIGQUIT);
    sigprocmask(SIG_BLOCK, &ends, &usual);
    int64_t left = kit_clock_left(start_stamp + kit_host_now() - start_wall);
    struct timespec pause = {(time_t)(left / 1000000), (long)(left % 1000000 * 1000)};
    int ready = kit_live_is_over() ? -1 : ppoll(files, count, left < 0 ? NULL : &pause, &usual);
    sigprocmask(SIG_SETMASK, &usual, NULL);
    return ready;
}

static void run_once(void) {
    struct pollfd files[kit_can_limit + 2];
    int interfaces[kit_can_limit];
    size_t count = kit_can_files(interfaces);
    for (size_t i = 0; i < count; ++i)
        files[i] = (struct pollfd){interfaces[i], POLLIN, 0};
    files[count] = (struct pollfd){serial, (short)(POLLIN | (unwritten_count > 0 ? POLLOUT : 0)), 0};
    files[count + 1] = (struct pollfd){has_keys ? STDIN_FILENO : -1, POLLIN, 0};
    int ready = wait_for(files, count + 2);
    if (kit_live_is_over())
        return;
    kit_live_advance();
    if (ready <= 0)
        return;
    for (size_t i = 0; i < count; ++i)
        if (files[i].revents != 0 && !kit_can_read(i))
            is_lost = true;
    if ((files[count].revents & POLLOUT) != 0)
        write_serial();
    if ((files[count].revents & ~POLLOUT) != 0)
        read_serial();
    if (files[count + 1].revents != 0 && !kit_live_is_over())
        read_keys();
}

/* What OnStop has written goes out, too, if the port takes it within a second. */
static void finish_serial(void) {
    struct pollfd file = {serial, POLLOUT, 0};
    while (unwritten_count > 0 && !is_lost && poll(&file, 1, 1000) > 0)
        write_serial();
}

/* What a run needs with a terminal and devices, and no other one. */
static const Call needed_live[] = {
    KIT_CALL(bind),         KIT_CALL(cfmakeraw),      KIT_CALL(close),
    KIT_CALL(getpgrp),      KIT_CALL(isatty),         KIT_CALL(memmove),
    KIT_CALL(open),         KIT_CALL(poll),           KIT_CALL(ppoll),
    KIT_CALL(raise),        KIT_CALL(read),           KIT_CALL(setsockopt),
    KIT_CALL(sigaction),    KIT_CALL(sigaddset),      KIT_CALL(sigaltstack),
    KIT_CALL(sigemptyset),  KIT_CALL(signal),         KIT_CALL(sigprocmask),
    KIT_CALL(socket),       KIT_CALL(strerror),       KIT_CALL(tcgetattr),
    KIT_CALL(tcgetpgrp),    KIT_CALL(tcsetattr),      KIT_CALL(write),
    KIT_CALL(if_nameindex), KIT_CALL(if_nametoindex), KIT_CALL(if_freenameindex),
};

int kit_live_run(const char* serial_port) {
    kit_calls_check(needed_live, sizeof needed_live / sizeof needed_live[0]);
    struct timespec wall = {0, 0};
    kit_verdict_place("<live>", 0);
    kit_sent_pause();
    if (!kit_can_open() || (serial_port != NULL && !open_serial(serial_port)))
        return EXIT_FAILURE;
    is_live = true;
    has_keys = kit_keyboard_open();
    clock_gettime(CLOCK_REALTIME, &wall);
    start_stamp = (int64_t)wall.tv_sec * 1000000 + wall.tv_nsec / 1000;
    start_wall = kit_host_now();
    kit_live_advance();
    OnStart(kit_now());
    while (!kit_live_is_over())
        run_once();
    kit_live_advance();
    OnStop(kit_now());
    kit_clock_stop_timers();
    finish_serial();
    kit_keyboard_close();
    return is_lost ? EXIT_FAILURE : kit_verdict_status();
}

#else

bool kit_live_is_there(void) {
    return false;
}

int kit_live_run(const char* serial_port) {
    (void)serial_port;
    return 1;
}

void kit_live_send(const DataFrame* frame, int channel) {
    (void)frame;
    (void)channel;
}

void kit_live_write(const void* data, size_t count) {
    (void)data;
    (void)count;
}

#endif
