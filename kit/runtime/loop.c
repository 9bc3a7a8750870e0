/* The command line of a program block, and the loop that plays a script to its handlers.
 * A line is run before the next one is read, and its output flushed: a script can be typed in. */
#include "clock.h"
#include "host.h"
#include "script.h"
#include "tornem.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { exit_failure = 1, exit_usage = 64 };

static const char* program = "program";
static const char* script_name = "<stdin>";
static FILE* script;

static void write_usage(FILE* file) {
    fprintf(file, "usage: %s [--realtime] [SCRIPT]\n", program);
}

static void write_help(void) {
    write_usage(stdout);
    puts("Plays an event script to this program block and prints what the block sends.\n"
         "SCRIPT is a file; without one, or with -, the standard input is read line by line.\n"
         "\n"
         "  --realtime  wait until the time of each event and timer has come\n"
         "  --help      show this text\n"
         "\n"
         "Events, one on each line; (SECONDS.FRACTION) in front sets the time:\n"
         "  start | stop | trigger | key CHARACTER | timer ID | error CHANNEL TYPE\n"
         "  serial HEX HEX ... | msg TEXT | can0 123#DEADBEEF (as candump -L writes it)\n"
         "Time moves, and timers fire, only when an event has a later time than the last.");
}

static void open_script(const char* name) {
    script = stdin;
    if (name == NULL || strcmp(name, "-") == 0)
        return;
    script_name = name;
    script = fopen(name, "rb");
    if (script != NULL)
        return;
    fprintf(stderr, "%s: cannot open %s: %s\n", program, name, strerror(errno));
    exit(exit_failure);
}

void initialize(int argc, char* argv[]) {
    const char* name = NULL;
    bool options = true;
    kit_host_start();
    if (argc > 0)
        program = argv[0];
    for (int i = 1; i < argc; ++i) {
        bool is_option = options && argv[i][0] == '-' && argv[i][1] != '\0';
        if (is_option && strcmp(argv[i], "--help") == 0) {
            write_help();
            exit(0);
        }
        if (is_option && strcmp(argv[i], "--realtime") == 0) {
            kit_clock_pace();
        } else if (is_option && strcmp(argv[i], "--") == 0) {
            options = false;
        } else if (is_option || name != NULL) {
            write_usage(stderr);
            exit(exit_usage);
        } else {
            name = argv[i];
        }
    }
    open_script(name);
}

static void deliver(KitEvent* event) {
    switch (event->kind) {
    case kit_event_none:
        break;
    case kit_event_start:
        OnStart(kit_clock_elapsed());
        break;
    case kit_event_stop:
        OnStop(kit_clock_elapsed());
        kit_clock_stop_timers();
        break;
    case kit_event_trigger:
        OnTrigger(kit_clock_elapsed());
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

/* A malformed line must not move time, nor set the origin: it is parsed to its end first. */
static void run_line(char* line, size_t length, unsigned long number) {
    static const char mark[] = "\xEF\xBB\xBF";
    KitEvent event;
    if (number == 1 && strncmp(line, mark, 3) == 0) {
        line += 3;
        length -= 3;
    }
    const char* wrong = kit_script_parse(line, length, &event);
    if (wrong != NULL) {
        fprintf(stderr, "%s:%lu: %s\n", script_name, number, wrong);
        return;
    }
    if (event.has_stamp)
        kit_clock_advance(event.stamp);
    deliver(&event);
}

static void fail(const char* what) {
    fprintf(stderr, "%s: %s: %s\n", program, what, strerror(errno));
    exit(exit_failure);
}

/* A line of any length, with its line end and a 0 behind it. */
typedef struct Line {
    char* text;
    size_t length;
    size_t room;
} Line;

/* Not getline, which Windows does not have. False at the end of the script, and when it cannot be read any further. */
static bool read_line(Line* line) {
    int byte = 0;
    line->length = 0;
    while (byte != '\n' && (byte = getc(script)) != EOF) {
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
    if (line->length == 0 || ferror(script))
        return false;
    line->text[line->length] = '\0';
    return true;
}

void EventLoop(void) {
    Line line = {NULL, 0, 0};
    unsigned long number = 0;
    while (read_line(&line)) {
        run_line(line.text, line.length, ++number);
        if (fflush(stdout) != 0 || ferror(stdout))
            fail("cannot write the output");
    }
    if (!feof(script)) {
        fprintf(stderr, "%s: cannot read %s: %s\n", program, script_name, strerror(errno));
        exit(exit_failure);
    }
    free(line.text);
}
