/* Reads an expectation; see expectation.h. */
#include "expectation.h"

#include "channel.h"
#include "text.h"

#include <string.h>

/* A word of the line; without one, the length is 0. */
typedef struct Word {
    const char* text;
    size_t length;
} Word;

/* Takes the next word off the text. */
static Word next_word(const char** text) {
    Word word = {*text + strspn(*text, kit_blanks), 0};
    word.length = strcspn(word.text, kit_blanks);
    *text = word.text + word.length;
    return word;
}

static bool is_word(Word word, const char* text) {
    return strlen(text) == word.length && memcmp(word.text, text, word.length) == 0;
}

static bool is_end(const char* rest) {
    return rest[strspn(rest, kit_blanks)] == '\0';
}

const char* kit_seconds_read(const char* text, int64_t* microseconds) {
    static const int64_t most = 999999999999;
    int64_t seconds = 0;
    if (*text < '0' || *text > '9')
        return NULL;
    for (; *text >= '0' && *text <= '9'; ++text) {
        seconds = seconds * 10 + (*text - '0');
        if (seconds > most)
            return NULL;
    }
    *microseconds = seconds * 1000000;
    if (*text != '.')
        return text;
    int64_t unit = 100000;
    for (++text; *text >= '0' && *text <= '9'; ++text, unit /= 10) {
        if (unit == 0)
            return NULL;
        *microseconds += unit * (*text - '0');
    }
    return unit < 100000 ? text : NULL;
}

/* Reads the word and the seconds that end an expectation; leaves the span 0 where there is nothing. */
static bool read_span(const char* rest, const char* name, KitExpectation* expectation) {
    if (is_end(rest))
        return true;
    if (!is_word(next_word(&rest), name))
        return false;
    const char* end = kit_seconds_read(rest + strspn(rest, kit_blanks), &expectation->span);
    return end != NULL && is_end(end);
}

static const char* parse_silence(const char* rest, KitExpectation* expectation) {
    static const char* const wrong = "'expect none' needs 'for SECONDS', with an interface before it or none";
    const char* start = rest;
    uchar channel = 0;
    expectation->kind = kit_expected_silence;
    Word name = next_word(&rest);
    if (is_word(name, "for") && read_span(start, "for", expectation))
        return NULL;
    if (!kit_channel_find(name.text, name.length, &channel) || is_end(rest))
        return wrong;
    expectation->channel = channel;
    return read_span(rest, "for", expectation) ? NULL : wrong;
}

/* The quote that ends the text; null when it is left open, or a backslash is before another character. */
static const char* find_quote(const char* text) {
    for (; *text != '"'; ++text) {
        if (*text == '\\' && (*++text == '\0' || strchr("\"\\nrt", *text) == NULL))
            return NULL;
        if (*text == '\0')
            return NULL;
    }
    return text;
}

static const char* parse_print(const char* rest, KitExpectation* expectation) {
    expectation->kind = kit_expected_print;
    rest += strspn(rest, kit_blanks);
    const char* quote = *rest == '"' ? find_quote(rest + 1) : NULL;
    if (quote == NULL || quote == rest + 1)
        return "'expect print' needs a text in quotes; \\\" \\\\ \\n \\r and \\t stand for one character";
    expectation->text = rest + 1;
    expectation->text_length = (size_t)(quote - expectation->text);
    return read_span(quote + 1, "within", expectation) ? NULL : "only 'within SECONDS' may follow the text";
}

static const char* parse_verdict(const char* rest, KitExpectation* expectation) {
    expectation->kind = kit_expected_verdict;
    Word verdict = next_word(&rest);
    expectation->passes = is_word(verdict, "pass");
    bool known = expectation->passes || is_word(verdict, "fail");
    return known && is_end(rest) ? NULL : "'expect verdict' needs pass or fail";
}

static const char* parse_sent(Word name, const char* rest, KitExpectation* expectation) {
    uchar channel = 0;
    expectation->kind = kit_expected_frame;
    if (!kit_channel_find(name.text, name.length, &channel))
        return "'expect' needs none, print, verdict, or an interface with a frame, as in can0 123#01";
    expectation->channel = channel;
    Word frame = next_word(&rest);
    if (frame.length == 0)
        return "'expect' needs a frame after the interface";
    const char* wrong = kit_frame_pattern(frame.text, frame.length, expectation->pattern);
    if (wrong != NULL)
        return wrong;
    return read_span(rest, "within", expectation) ? NULL : "only 'within SECONDS' may follow the frame";
}

const char* kit_expectation_parse(const char* line, const char* rest, KitExpectation* expectation) {
    expectation->line = line;
    expectation->line_length = strlen(line);
    while (strchr(kit_blanks, line[expectation->line_length - 1]) != NULL)
        --expectation->line_length;
    expectation->channel = -1;
    if (!kit_text_is_utf8(line, expectation->line_length))
        return "the line is not UTF-8";
    Word word = next_word(&rest);
    if (is_word(word, "none"))
        return parse_silence(rest, expectation);
    if (is_word(word, "print"))
        return parse_print(rest, expectation);
    return is_word(word, "verdict") ? parse_verdict(rest, expectation) : parse_sent(word, rest, expectation);
}

size_t kit_expectation_text(const KitExpectation* expectation, char* text) {
    static const char escapes[] = "n\nr\rt\t";
    size_t length = 0;
    for (size_t i = 0; i < expectation->text_length; ++i) {
        char character = expectation->text[i];
        if (character == '\\') {
            character = expectation->text[++i];
            const char* escape = strchr(escapes, character);
            character = escape != NULL ? escape[1] : character;
        }
        text[length++] = character;
    }
    return length;
}
