/* What failed; see verdict.h. */
#include "verdict.h"

#include "clock.h"
#include "output.h"
#include "sent.h"
#include "vexlib.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char* place_name = "<start>";
static unsigned long place_line;

static unsigned long called; /* Fail */
static unsigned long missed; /* expectations */

void kit_verdict_place(const char* script, unsigned long line) {
    place_name = script;
    place_line = line;
}

int kit_verdict_status(void) {
    return called + missed > 0 ? kit_verdict_failed : 0;
}

/* Begins a message; what was printed before comes before it in a log of both streams. */
static void begin_message(void) {
    fflush(stdout);
    if (place_line > 0)
        fprintf(stderr, "%s:%lu: failed: ", place_name, place_line);
    else
        fprintf(stderr, "%s: failed: ", place_name);
}

static void write_time(int64_t stamp) {
    fprintf(stderr, "(%010lld.%06lld)", (long long)stamp / 1000000, (long long)stamp % 1000000);
}

/* The lines of a text; those after the first are indented, so that each message begins in the first column. */
static void write_lines(const char* text, size_t length) {
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r'))
        --length;
    for (size_t i = 0; i < length; ++i) {
        putc(text[i], stderr);
        if (text[i] == '\n')
            fputs("    ", stderr);
    }
    putc('\n', stderr);
}

void kit_fail(const char* format, va_list arguments) {
    static const char unknown[] = "a text that cannot be formatted";
    size_t length = 0;
    char* text = format != NULL ? kit_output_format(format, arguments, &length) : NULL;
    ++called;
    begin_message();
    write_time(kit_clock_stamp());
    putc(' ', stderr);
    write_lines(text != NULL ? text : unknown, text != NULL ? length : strlen(unknown));
    free(text);
}

static void miss(const KitExpectation* expectation) {
    ++missed;
    begin_message();
    fprintf(stderr, "%.*s\n    expected: ", (int)expectation->line_length, expectation->line);
}

/* Ends the line that says what was expected. */
static void write_end(int64_t end, const KitExpectation* expectation) {
    if (expectation->span > 0) {
        fputs(" by ", stderr);
        write_time(end);
    }
    putc('\n', stderr);
}

static bool is_met(const void* context) {
    const KitExpectation* expectation = context;
    return kit_sent_find_frame(expectation->channel, expectation->pattern);
}

static void expect_frame(const KitExpectation* expectation) {
    int64_t end = kit_clock_stamp() + expectation->span;
    if (is_met(expectation) || kit_clock_wait(expectation->span, is_met, expectation))
        return;
    miss(expectation);
    fprintf(stderr, "can%d %s", expectation->channel, expectation->pattern);
    write_end(end, expectation);
    kit_sent_show(expectation->channel, stderr);
}

static void expect_silence(const KitExpectation* expectation) {
    kit_clock_wait(expectation->span, NULL, NULL);
    if (!kit_sent_has_frame(expectation->channel))
        return;
    miss(expectation);
    fputs("nothing", stderr);
    if (expectation->channel >= 0)
        fprintf(stderr, " on can%d", expectation->channel);
    write_end(kit_clock_stamp(), expectation);
    kit_sent_show(expectation->channel, stderr);
}

typedef struct Text {
    char* text;
    size_t length;
} Text;

static bool is_printed(const void* context) {
    const Text* text = context;
    return kit_sent_find_text(text->text, text->length);
}

static void expect_print(const KitExpectation* expectation) {
    int64_t end = kit_clock_stamp() + expectation->span;
    Text text = {malloc(expectation->text_length), 0};
    if (text.text == NULL) {
        fputs("out of memory\n", stderr);
        exit(EXIT_FAILURE);
    }
    text.length = kit_expectation_text(expectation, text.text);
    if (!is_printed(&text) && !kit_clock_wait(expectation->span, is_printed, &text)) {
        miss(expectation);
        fprintf(stderr, "\"%.*s\"", (int)expectation->text_length, expectation->text);
        write_end(end, expectation);
        kit_sent_show(kit_sent_print, stderr);
    }
    free(text.text);
}

/* What was expected to fail is no failure any more, but an expectation that did not come true stays one. */
static void expect_verdict(const KitExpectation* expectation) {
    static const char* const verdicts[] = {"fail", "pass"};
    unsigned long failures = called + missed;
    bool passes = failures == 0;
    if (passes == expectation->passes) {
        called = 0;
        return;
    }
    miss(expectation);
    fprintf(stderr, "verdict %s\n    got: verdict %s", verdicts[!passes], verdicts[passes]);
    if (!passes)
        fprintf(stderr, ", failures: %lu", failures);
    putc('\n', stderr);
}

void kit_verdict_expect(const KitExpectation* expectation) {
    kit_sent_rewind();
    switch (expectation->kind) {
    case kit_expected_frame:
        expect_frame(expectation);
        break;
    case kit_expected_silence:
        expect_silence(expectation);
        break;
    case kit_expected_print:
        expect_print(expectation);
        break;
    case kit_expected_verdict:
        expect_verdict(expectation);
        break;
    }
}
