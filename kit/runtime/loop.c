/* The command line of a program block, and the loop that plays a script to its handlers.
 * A line is run before the next one is read, and its output flushed: a script can be typed in. */
#include "calls.h"
#include "channel.h"
#include "clock.h"
#include "host.h"
#include "live.h"
#include "script.h"
#include "sent.h"
#include "tornem.h"
#include "verdict.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { exit_failure = 1, exit_usage = 64, exit_script = 65 };

static const char* program = "program";
static const char* script_name = "<stdin>";
static FILE* script_file;
static bool is_strict;
static bool is_paced;
static bool runs_live;
static const char* serial_port;

static void write_usage(FILE* file) {
    fprintf(file,
            "usage: %s [--realtime] [--strict] [--channel NAME=NUMBER]... [SCRIPT]\n"
            "       %s --live [--channel NUMBER=INTERFACE]... [--serial DEVICE]\n",
            program, program);
}

static void write_help(void) {
    write_usage(stdout);
    puts("Plays an event script to this program block and prints what the block sends.\n"
         "SCRIPT is a file; without one, or with -, the standard input is read line by line.\n"
         "\n"
         "  --realtime             wait until the time of each event and timer has come\n"
         "  --strict               end at the first line that is wrong\n"
         "  --channel NAME=NUMBER  the channel of an interface whose name does not end in its number\n"
         "  --live                 run against real interfaces, keys and time instead, until Ctrl+C (Linux)\n"
         "  --serial DEVICE        the serial port; its speed stays as it is\n"
         "  --help                 show this text\n"
         "\n"
         "Events, one on each line; (SECONDS.FRACTION) in front sets the time:\n"
         "  start | stop | trigger | key CHARACTER | timer ID | error CHANNEL TYPE\n"
         "  serial HEX HEX ... | msg TEXT | can0 123#DEADBEEF (as candump -L writes it)\n"
         "Time moves, and timers fire, only when a line has a later time than the last.\n"
         "\n"
         "What the block must have done since the last event:\n"
         "  expect can0 123#01..FF [within SECONDS]   a frame; . is any digit\n"
         "  expect none [can0] for SECONDS            no frame\n"
         "  expect print \"TEXT\" [within SECONDS]      a text\n"
         "  expect verdict pass | fail                nothing failed, or something did\n"
         "\n"
         "Exit status: 0 done, 1 a script or device cannot be read or written, 3 something\n"
         "failed (Fail, or an expectation), 64 wrong option, 65 wrong line with --strict.");
}

static void fail(const char* what, const char* why) {
    fprintf(stderr, "%s: %s: %s\n", program, what, why);
    exit(exit_failure);
}

static void refuse(const char* option, const char* why) {
    fprintf(stderr, "%s: %s: %s\n", program, option, why);
    exit(exit_usage);
}

static void refuse_usage(void) {
    write_usage(stderr);
    exit(exit_usage);
}

/* Takes the option at the place and what belongs to it; returns the place of the last word of these. */
static int take_option(int at, int argc, char* argv[]) {
    const char* option = argv[at];
    if (strcmp(option, "--help") == 0) {
        write_help();
        exit(0);
    }
    if (strcmp(option, "--realtime") == 0) {
        kit_clock_pace();
        is_paced = true;
    } else if (strcmp(option, "--strict") == 0) {
        is_strict = true;
    } else if (strcmp(option, "--live") == 0) {
        if (!kit_live_is_there())
            refuse(option, "there is no live mode on this system yet");
        runs_live = true;
    } else if (strcmp(option, "--serial") == 0 && at + 1 < argc) {
        serial_port = argv[++at];
    } else if (strcmp(option, "--channel") == 0 && at + 1 < argc) {
        const char* wrong = kit_channel_name(argv[++at]);
        if (wrong != NULL)
            refuse(argv[at], wrong);
    } else {
        refuse_usage();
    }
    return at;
}

static void open_script(const char* name) {
    script_file = stdin;
    if (name == NULL || strcmp(name, "-") == 0)
        return;
    script_name = name;
    script_file = fopen(name, "rb");
    if (script_file != NULL)
        return;
    fprintf(stderr, "%s: cannot open %s: %s\n", program, name, strerror(errno));
    exit(exit_failure);
}

void initialize(int argc, char* argv[]) {
    const char* name = NULL;
    bool options = true;
    kit_calls_check_needed();
    kit_host_start();
    if (argc > 0)
        program = argv[0];
    for (int i = 1; i < argc; ++i) {
        bool is_option = options && argv[i][0] == '-' && argv[i][1] != '\0';
        if (is_option && strcmp(argv[i], "--") == 0)
            options = false;
        else if (is_option)
            i = take_option(i, argc, argv);
        else if (name == NULL)
            name = argv[i];
        else
            refuse_usage();
    }
    if (runs_live ? name != NULL || is_paced || is_strict : serial_port != NULL)
        refuse_usage();
    if (!runs_live)
        open_script(name);
}

static void deliver(KitEvent* event) {
    switch (event->kind) {
    case kit_event_none:
    case kit_event_expect:
        break;
    case kit_event_start:
        OnStart(kit_now());
        break;
    case kit_event_stop:
        OnStop(kit_now());
        kit_clock_stop_timers();
        break;
    case kit_event_trigger:
        OnTrigger(kit_now());
        break;
    case kit_event_key:
        OnKey(event->text[0]);
        break;
    case kit_event_timer:
        OnTimer(event->timer);
        break;
    case kit_event_error:
        OnError(event->channel, event->error_type);
        break;
    case kit_event_serial:
        OnSerial(event->text, (unsigned short)event->length);
        break;
    case kit_event_msg:
        OnMsg(event->text);
        break;
    case kit_event_frame:
        OnFrame(&event->frame, event->channel);
        break;
    }
}

/* What timers send on the way to an event was not sent because of it, and no expectation takes it for that. */
static void run_event(KitEvent* event) {
    bool is_event = event->kind != kit_event_expect;
    if (is_event)
        kit_sent_pause();
    if (event->has_stamp)
        kit_clock_advance(event->stamp);
    if (!is_event) {
        kit_verdict_expect(&event->expectation);
        return;
    }
    kit_sent_begin();
    deliver(event);
}

/* A malformed line must not move time, nor set the origin: it is parsed to its end first. */
static void run_line(char* line, size_t length, unsigned long number) {
    static const char mark[] = "\xEF\xBB\xBF";
    KitEvent event;
    if (number == 1 && strncmp(line, mark, 3) == 0) {
        line += 3;
        length -= 3;
    }
    const char* wrong = kit_script_parse(line, length, &event);
    kit_verdict_place(script_name, number);
    if (wrong == NULL) {
        if (event.kind != kit_event_none)
            run_event(&event);
        return;
    }
    fprintf(stderr, "%s:%lu: %s\n", script_name, number, wrong);
    if (is_strict)
        exit(exit_script);
}

/* A line of any length, with its line end and a 0 at its end. */
typedef struct Line {
    char* text;
    size_t length;
    size_t room;
} Line;

/* Not getline, which Windows does not have. False at the end of the script, and when it cannot be read any further. */
static bool read_line(Line* line) {
    int byte = 0;
    line->length = 0;
    while (byte != '\n' && (byte = getc(script_file)) != EOF) {
        if (line->length + 2 > line->room) {
            size_t room = line->room > 0 ? 2 * line->room : 128;
            char* text = realloc(line->text, room);
            if (text == NULL)
                return false;
            line->text = text;
            line->room = room;
        }
        line->text[line->length++] = (char)byte;
    }
    if (line->length == 0 || ferror(script_file))
        return false;
    line->text[line->length] = '\0';
    return true;
}

void EventLoop(void) {
    Line line = {NULL, 0, 0};
    unsigned long number = 0;
    if (runs_live)
        exit(kit_live_run(serial_port));
    while (read_line(&line)) {
        run_line(line.text, line.length, ++number);
        if (fflush(stdout) != 0 || ferror(stdout))
            fail("cannot write the output", strerror(errno));
    }
    if (!feof(script_file)) {
        fprintf(stderr, "%s: cannot read %s: %s\n", program, script_name, strerror(errno));
        exit(exit_failure);
    }
    free(line.text);
    if (kit_verdict_status() != 0)
        exit(kit_verdict_status());
}
